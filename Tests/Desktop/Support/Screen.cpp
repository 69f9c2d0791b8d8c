#include "Desktop/Support/Screen.h"

#include <cstdlib>
#include <cstring>
#include <stdexcept>

#include <xcb/xcb.h>

namespace orvane::tests {

namespace {

template <typename Reply>
using Owned = std::unique_ptr<Reply, decltype(&std::free)>;

// A window may go between two questions about it; the reply is null then, which does no harm.
template <typename Reply>
Owned<Reply> own(Reply* reply)
{
    return {reply, &std::free};
}

std::uint32_t internAtom(xcb_connection_t* connection, const char* name)
{
    const auto cookie = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
    const auto reply = own(xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : 0;
}

QByteArray property(xcb_connection_t* connection, std::uint32_t window, std::uint32_t name,
                    std::uint32_t type)
{
    const auto cookie = xcb_get_property(connection, 0, window, name, type, 0, 1024);
    const auto reply = own(xcb_get_property_reply(connection, cookie, nullptr));
    if (!reply)
        return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            xcb_get_property_value_length(reply.get())};
}

/// Returns the first of the 32-bit numbers in a property; 0 when there is none.
std::uint32_t number(const QByteArray& property)
{
    std::uint32_t value = 0;
    if (property.size() >= qsizetype(sizeof value))
        std::memcpy(&value, property.constData(), sizeof value);
    return value;
}

} // namespace

void Screen::Closer::operator()(xcb_connection_t* connection) const
{
    xcb_disconnect(connection);
}

Screen::Screen() : m_connection(xcb_connect(nullptr, nullptr))
{
    xcb_connection_t* connection = m_connection.get();
    if (xcb_connection_has_error(connection))
        throw std::runtime_error("There is no X display to open");
    m_root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    m_pidAtom = internAtom(connection, "_NET_WM_PID");
    m_nameAtom = internAtom(connection, "_NET_WM_NAME");
    m_utf8Atom = internAtom(connection, "UTF8_STRING");
    m_typeAtom = internAtom(connection, "_NET_WM_WINDOW_TYPE");
    m_popupMenuAtom = internAtom(connection, "_NET_WM_WINDOW_TYPE_POPUP_MENU");
    m_dropdownMenuAtom = internAtom(connection, "_NET_WM_WINDOW_TYPE_DROPDOWN_MENU");
    m_dockAtom = internAtom(connection, "_NET_WM_WINDOW_TYPE_DOCK");
    m_normalAtom = internAtom(connection, "_NET_WM_WINDOW_TYPE_NORMAL");
}

QPoint Screen::pointer() const
{
    const auto cookie = xcb_query_pointer(m_connection.get(), m_root);
    const auto reply = own(xcb_query_pointer_reply(m_connection.get(), cookie, nullptr));
    return reply ? QPoint(reply->root_x, reply->root_y) : QPoint();
}

QList<ScreenWindow> Screen::windows() const
{
    QList<ScreenWindow> found;
    collect(m_root, found);
    return found;
}

QList<ScreenWindow> Screen::windowsOf(qint64 pid) const
{
    QList<ScreenWindow> found = windows();
    found.removeIf([pid](const ScreenWindow& window) { return window.pid != pid; });
    return found;
}

std::optional<ScreenWindow> Screen::window(qint64 pid, const QString& title) const
{
    for (const ScreenWindow& window : windowsOf(pid)) {
        if (window.title == title)
            return window;
    }
    return std::nullopt;
}

QList<ScreenWindow> Screen::openMenus() const
{
    QList<ScreenWindow> found = windows();
    found.removeIf([](const ScreenWindow& window) { return window.type != WindowType::menu; });
    return found;
}

void Screen::collect(std::uint32_t parent, QList<ScreenWindow>& found) const
{
    const auto cookie = xcb_query_tree(m_connection.get(), parent);
    const auto reply = own(xcb_query_tree_reply(m_connection.get(), cookie, nullptr));
    if (!reply)
        return;
    const xcb_window_t* children = xcb_query_tree_children(reply.get());
    for (int i = 0; i < xcb_query_tree_children_length(reply.get()); ++i) {
        if (const auto window = describe(children[i], parent))
            found.append(*window);
        collect(children[i], found);
    }
}

std::optional<ScreenWindow> Screen::describe(std::uint32_t id, std::uint32_t parent) const
{
    xcb_connection_t* connection = m_connection.get();
    ScreenWindow window;
    window.id = id;
    window.parent = parent;
    window.pid = number(property(connection, id, m_pidAtom, XCB_ATOM_CARDINAL));
    if (window.pid == 0)
        return std::nullopt;

    const auto attributesCookie = xcb_get_window_attributes(connection, id);
    const auto geometryCookie = xcb_get_geometry(connection, id);
    const auto placeCookie = xcb_translate_coordinates(connection, id, m_root, 0, 0);
    const auto attributes = own(xcb_get_window_attributes_reply(connection, attributesCookie, nullptr));
    const auto geometry = own(xcb_get_geometry_reply(connection, geometryCookie, nullptr));
    const auto place = own(xcb_translate_coordinates_reply(connection, placeCookie, nullptr));
    if (!attributes || !geometry || !place || attributes->map_state != XCB_MAP_STATE_VIEWABLE ||
        attributes->_class == XCB_WINDOW_CLASS_INPUT_ONLY)
        return std::nullopt;

    window.geometry = {place->dst_x, place->dst_y, geometry->width, geometry->height};
    window.title = QString::fromUtf8(property(connection, id, m_nameAtom, m_utf8Atom));
    if (window.title.isEmpty())
        window.title = QString::fromLatin1(property(connection, id, XCB_ATOM_WM_NAME, XCB_ATOM_STRING));
    const std::uint32_t type = number(property(connection, id, m_typeAtom, XCB_ATOM_ATOM));
    if (type == m_popupMenuAtom || type == m_dropdownMenuAtom)
        window.type = WindowType::menu;
    else if (type == m_dockAtom)
        window.type = WindowType::dock;
    else if (type != 0 && type != m_normalAtom)
        window.type = WindowType::other;
    return window;
}

QImage Screen::picture(QRect part) const
{
    if (part.isEmpty()) {
        const auto cookie = xcb_get_geometry(m_connection.get(), m_root);
        const auto whole = own(xcb_get_geometry_reply(m_connection.get(), cookie, nullptr));
        if (!whole)
            return {};
        part = {0, 0, whole->width, whole->height};
    }
    const auto cookie = xcb_get_image(
        m_connection.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, m_root, static_cast<std::int16_t>(part.x()),
        static_cast<std::int16_t>(part.y()), static_cast<std::uint16_t>(part.width()),
        static_cast<std::uint16_t>(part.height()), ~0u);
    const auto reply = own(xcb_get_image_reply(m_connection.get(), cookie, nullptr));
    // The private desktop has 24 bits of colour in 32, in this machine's byte order.
    if (!reply || reply->depth != 24 ||
        xcb_get_image_data_length(reply.get()) != part.width() * part.height() * 4)
        return {};
    return QImage(xcb_get_image_data(reply.get()), part.width(), part.height(), QImage::Format_RGB32).copy();
}

bool Screen::wallpaperIsAt(QPoint place) const
{
    const QImage pixel = picture(QRect(place, QSize(1, 1)));
    return !pixel.isNull() && (pixel.pixel(0, 0) & RGB_MASK) != 0;
}

} // namespace orvane::tests
