#include "Desktop/Support/Windows.h"

#include <cstdlib>
#include <cstring>
#include <stdexcept>

#include <xcb/xcb.h>

namespace orvane::tests {

namespace {

// A window may go between two questions about it; the reply is null then, which does no harm.
template <typename Reply>
std::unique_ptr<Reply, decltype(&std::free)> own(Reply* reply)
{
    return {reply, &std::free};
}

/// Returns the space that a panel or a dock reserves, from the twelve numbers of its window.
QRect reservedBy(const QList<std::uint32_t>& strut, QSize root)
{
    enum {
        left,
        right,
        top,
        bottom,
        leftStart,
        leftEnd,
        rightStart,
        rightEnd,
        topStart,
        topEnd,
        bottomStart
    };
    constexpr qsizetype count = 12;
    if (strut.size() < count)
        return {};
    const auto at = [&](int index) { return static_cast<int>(strut.at(index)); };
    const auto length = [&](int start) { return at(start + 1) - at(start) + 1; };
    if (at(left) > 0)
        return {0, at(leftStart), at(left), length(leftStart)};
    if (at(right) > 0)
        return {root.width() - at(right), at(rightStart), at(right), length(rightStart)};
    if (at(top) > 0)
        return {at(topStart), 0, length(topStart), at(top)};
    if (at(bottom) > 0)
        return {at(bottomStart), root.height() - at(bottom), length(bottomStart), at(bottom)};
    return {};
}

/// Returns a monitor's area without a part that lies along one of its edges.
QRect without(QRect area, QRect reserved, QRect monitor)
{
    const QRect lost = area.intersected(reserved);
    if (lost.isEmpty())
        return area;
    if (reserved.top() <= monitor.top() && reserved.bottom() < monitor.center().y())
        area.setTop(lost.bottom() + 1);
    else if (reserved.bottom() >= monitor.bottom() && reserved.top() > monitor.center().y())
        area.setBottom(lost.top() - 1);
    else if (reserved.left() <= monitor.left())
        area.setLeft(lost.right() + 1);
    else
        area.setRight(lost.left() - 1);
    return area;
}

} // namespace

void Windows::Closer::operator()(xcb_connection_t* connection) const
{
    xcb_disconnect(connection);
}

Windows::Windows() : m_connection(xcb_connect(nullptr, nullptr))
{
    if (xcb_connection_has_error(m_connection.get()))
        throw std::runtime_error("There is no X display to open");
    m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection.get())).data->root;
}

std::optional<WindowId> Windows::find(const QString& title) const
{
    for (const WindowId window : numbers(m_root, "_NET_CLIENT_LIST")) {
        QByteArray name = text(window, "_NET_WM_NAME");
        if (name.isEmpty())
            name = text(window, "WM_NAME");
        if (QString::fromUtf8(name) == title)
            return window;
    }
    return std::nullopt;
}

WindowId Windows::active() const
{
    return numbers(m_root, "_NET_ACTIVE_WINDOW").value(0);
}

QRect Windows::frame(WindowId window) const
{
    const QRect own = geometry(window);
    return own.isEmpty() ? own : own.marginsAdded(decorations(window)).marginsRemoved(ownMargins(window));
}

QList<QRect> Windows::frames() const
{
    QList<QRect> frames;
    for (const WindowId window : numbers(m_root, "_NET_CLIENT_LIST"))
        frames.append(frame(window));
    return frames;
}

void Windows::iconify(WindowId window) const
{
    constexpr std::uint32_t iconic = 3;
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = atom("WM_CHANGE_STATE");
    event.data.data32[0] = iconic;
    xcb_send_event(m_connection.get(), 0, m_root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&event));
    xcb_flush(m_connection.get());
}

QRect Windows::geometry(WindowId window) const
{
    xcb_connection_t* connection = m_connection.get();
    const auto geometryCookie = xcb_get_geometry(connection, window);
    const auto placeCookie = xcb_translate_coordinates(connection, window, m_root, 0, 0);
    const auto size = own(xcb_get_geometry_reply(connection, geometryCookie, nullptr));
    const auto place = own(xcb_translate_coordinates_reply(connection, placeCookie, nullptr));
    return size && place ? QRect(place->dst_x, place->dst_y, size->width, size->height) : QRect();
}

QRect Windows::outermost(WindowId window) const
{
    for (WindowId each = window;;) {
        const auto cookie = xcb_query_tree(m_connection.get(), each);
        const auto tree = own(xcb_query_tree_reply(m_connection.get(), cookie, nullptr));
        if (!tree)
            return {};
        if (tree->parent == m_root)
            return geometry(each);
        each = tree->parent;
    }
}

QMargins Windows::decorations(WindowId window) const
{
    return margins(window, "_NET_FRAME_EXTENTS");
}

QMargins Windows::ownMargins(WindowId window) const
{
    return margins(window, "_GTK_FRAME_EXTENTS");
}

QSize Windows::sizeIncrements(WindowId window) const
{
    constexpr std::uint32_t givesIncrements = 1 << 6;
    const QList<std::uint32_t> hints = numbers(window, "WM_NORMAL_HINTS");
    if (hints.size() < 11 || !(hints.at(0) & givesIncrements))
        return {1, 1};
    return {static_cast<int>(hints.at(9)), static_cast<int>(hints.at(10))};
}

bool Windows::hasState(WindowId window, const char* state) const
{
    return numbers(window, "_NET_WM_STATE").contains(atom(state));
}

bool Windows::isCompositing() const
{
    const auto cookie = xcb_get_selection_owner(m_connection.get(), atom("_NET_WM_CM_S0"));
    const auto reply = own(xcb_get_selection_owner_reply(m_connection.get(), cookie, nullptr));
    return reply && reply->owner != 0;
}

QRect Windows::workArea(QRect monitor) const
{
    const QSize root = geometry(m_root).size();
    QRect area = monitor;
    for (const WindowId window : numbers(m_root, "_NET_CLIENT_LIST"))
        area = without(area, reservedBy(numbers(window, "_NET_WM_STRUT_PARTIAL"), root), monitor);
    return area;
}

std::uint32_t Windows::atom(const char* name) const
{
    const auto cookie =
        xcb_intern_atom(m_connection.get(), 0, static_cast<std::uint16_t>(std::strlen(name)), name);
    const auto reply = own(xcb_intern_atom_reply(m_connection.get(), cookie, nullptr));
    return reply ? reply->atom : 0;
}

QByteArray Windows::text(WindowId window, const char* property) const
{
    constexpr std::uint32_t limit = 4096;
    const auto cookie =
        xcb_get_property(m_connection.get(), 0, window, atom(property), XCB_ATOM_ANY, 0, limit);
    const auto reply = own(xcb_get_property_reply(m_connection.get(), cookie, nullptr));
    if (!reply)
        return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            xcb_get_property_value_length(reply.get())};
}

QList<std::uint32_t> Windows::numbers(WindowId window, const char* property) const
{
    const QByteArray bytes = text(window, property);
    QList<std::uint32_t> found(bytes.size() / qsizetype(sizeof(std::uint32_t)));
    if (!found.isEmpty())
        std::memcpy(found.data(), bytes.constData(),
                    static_cast<std::size_t>(found.size()) * sizeof(std::uint32_t));
    return found;
}

QMargins Windows::margins(WindowId window, const char* property) const
{
    const QList<std::uint32_t> sides = numbers(window, property); // left, right, top, bottom
    if (sides.size() < 4)
        return {};
    return {static_cast<int>(sides.at(0)), static_cast<int>(sides.at(2)), static_cast<int>(sides.at(1)),
            static_cast<int>(sides.at(3))};
}

} // namespace orvane::tests
