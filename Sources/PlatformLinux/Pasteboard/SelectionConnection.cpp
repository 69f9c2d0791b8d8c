#include "PlatformLinux/Pasteboard/SelectionConnection.h"

#include <xcb/xfixes.h>

#include <array>
#include <chrono>
#include <vector>

namespace orvane {

namespace {

/// This thread may wait until another client releases the server. The main thread doesn't wait for this one.
constexpr std::chrono::minutes patience(1);

} // namespace

std::unique_ptr<SelectionConnection> SelectionConnection::open(int cancellation)
{
    static const std::array extensions{&xcb_xfixes_id};
    auto opened = XLink::open({.extensions = extensions, .cancellation = cancellation}, within(patience));
    if (!opened.link)
        return nullptr;
    std::unique_ptr<SelectionConnection> connection(new SelectionConnection(std::move(opened.link)));
    return connection->begin() ? std::move(connection) : nullptr;
}

XExchange SelectionConnection::exchange() const
{
    return {*m_link, within(patience)};
}

bool SelectionConnection::begin()
{
    const auto* xfixes = m_link->extension(xcb_xfixes_id);
    if (!xfixes)
        return false;
    const auto version =
        exchange().reply<xcb_xfixes_query_version_reply_t>(xcb_xfixes_query_version(xcb(), 1, 0));
    if (!version)
        return false;
    m_selectionEvent = static_cast<std::uint8_t>(xfixes->first_event + XCB_XFIXES_SELECTION_NOTIFY);
    m_window = createWindow();
    xcb_xfixes_select_selection_input(xcb(), m_window, clipboard(),
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    flush();
    return !isLost();
}

xcb_window_t SelectionConnection::createWindow()
{
    const xcb_window_t window = xcb_generate_id(xcb());
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(xcb(), 0, window, m_link->root(), -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
    return window;
}

void SelectionConnection::destroyWindow(xcb_window_t window)
{
    xcb_destroy_window(xcb(), window);
}

xcb_atom_t SelectionConnection::atom(const QByteArray& name)
{
    const auto known = m_atoms.constFind(name);
    if (known != m_atoms.constEnd())
        return *known;
    const auto cookie = xcb_intern_atom(xcb(), 0, static_cast<std::uint16_t>(name.size()), name.constData());
    const auto reply = exchange().reply<xcb_intern_atom_reply_t>(cookie);
    if (!reply)
        return XCB_ATOM_NONE;
    m_atoms.insert(name, reply->atom);
    m_names.insert(reply->atom, name);
    return reply->atom;
}

QList<QByteArray> SelectionConnection::names(const xcb_atom_t* atoms, std::size_t count)
{
    std::vector<std::pair<xcb_atom_t, xcb_get_atom_name_cookie_t>> unknown;
    for (std::size_t i = 0; i < count; ++i) {
        if (!m_names.contains(atoms[i]))
            unknown.emplace_back(atoms[i], xcb_get_atom_name(xcb(), atoms[i]));
    }
    XExchange answers = exchange();
    for (const auto& [atom, cookie] : unknown) {
        const auto reply = answers.reply<xcb_get_atom_name_reply_t>(cookie);
        if (!reply)
            continue;
        const QByteArray name(xcb_get_atom_name_name(reply.get()),
                              xcb_get_atom_name_name_length(reply.get()));
        m_names.insert(atom, name);
        m_atoms.insert(name, atom);
    }
    QList<QByteArray> names;
    for (std::size_t i = 0; i < count; ++i) {
        const auto known = m_names.constFind(atoms[i]);
        if (known != m_names.constEnd())
            names.append(*known);
    }
    return names;
}

void SelectionConnection::convert(xcb_window_t window, xcb_atom_t target, xcb_atom_t property)
{
    xcb_convert_selection(xcb(), window, clipboard(), target, property, XCB_CURRENT_TIME);
}

std::optional<SelectionConnection::Property>
SelectionConnection::takeProperty(xcb_window_t window, xcb_atom_t name, qsizetype limit)
{
    // The server deletes a property that it has sent completely.
    const auto longs = static_cast<std::uint32_t>(limit / 4 + 1);
    const auto cookie = xcb_get_property(xcb(), 1, window, name, XCB_GET_PROPERTY_TYPE_ANY, 0, longs);
    const auto reply = exchange().reply<xcb_get_property_reply_t>(cookie);
    if (!reply)
        return Property{};
    const int length = xcb_get_property_value_length(reply.get());
    if (reply->bytes_after > 0 || length > limit)
        return std::nullopt;
    return Property{reply->type, reply->format,
                    QByteArray(static_cast<const char*>(xcb_get_property_value(reply.get())), length)};
}

bool SelectionConnection::clipboardHasOwner() const
{
    const auto reply =
        exchange().reply<xcb_get_selection_owner_reply_t>(xcb_get_selection_owner(xcb(), clipboard()));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

} // namespace orvane
