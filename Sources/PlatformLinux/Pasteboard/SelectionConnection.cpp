#include "PlatformLinux/Pasteboard/SelectionConnection.h"

#include <xcb/xfixes.h>

#include <vector>

namespace orvane {

std::unique_ptr<SelectionConnection> SelectionConnection::open()
{
    std::unique_ptr<SelectionConnection> connection(new SelectionConnection);
    int screenNumber = 0;
    connection->m_xcb.reset(xcb_connect(nullptr, &screenNumber));
    if (connection->isLost() || !connection->begin(screenNumber))
        return nullptr;
    return connection;
}

bool SelectionConnection::begin(int screenNumber)
{
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(xcb()));
    for (int i = 0; i < screenNumber && screens.rem > 1; ++i)
        xcb_screen_next(&screens);
    m_root = screens.data->root;
    const auto* xfixes = xcb_get_extension_data(xcb(), &xcb_xfixes_id);
    if (!xfixes || !xfixes->present)
        return false;
    const XcbReply<xcb_xfixes_query_version_reply_t> version(
        xcb_xfixes_query_version_reply(xcb(), xcb_xfixes_query_version(xcb(), 1, 0), nullptr));
    if (!version)
        return false;
    m_selectionEvent = static_cast<std::uint8_t>(xfixes->first_event + XCB_XFIXES_SELECTION_NOTIFY);
    m_clipboard = atom(QByteArrayLiteral("CLIPBOARD"));
    m_window = createWindow();
    xcb_xfixes_select_selection_input(xcb(), m_window, m_clipboard,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    return m_clipboard != XCB_ATOM_NONE && !isLost();
}

xcb_window_t SelectionConnection::createWindow()
{
    const xcb_window_t window = xcb_generate_id(xcb());
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(xcb(), 0, window, m_root, -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
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
    const XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(xcb(), cookie, nullptr));
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
    for (const auto& [atom, cookie] : unknown) {
        xcb_generic_error_t* error = nullptr;
        const XcbReply<xcb_get_atom_name_reply_t> reply(xcb_get_atom_name_reply(xcb(), cookie, &error));
        const XcbReply<xcb_generic_error_t> ownedError(error);
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

std::optional<SelectionConnection::Property>
SelectionConnection::takeProperty(xcb_window_t window, xcb_atom_t name, qsizetype limit)
{
    // The server deletes what it has told whole.
    const auto longs = static_cast<std::uint32_t>(limit / 4 + 1);
    const auto cookie = xcb_get_property(xcb(), 1, window, name, XCB_GET_PROPERTY_TYPE_ANY, 0, longs);
    xcb_generic_error_t* error = nullptr;
    const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(xcb(), cookie, &error));
    const XcbReply<xcb_generic_error_t> ownedError(error);
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
    const XcbReply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(xcb(), xcb_get_selection_owner(xcb(), m_clipboard), nullptr));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

} // namespace orvane
