#include "PlatformLinux/X11/WindowManagement.h"

#include "PlatformLinux/X11/PropertyNumbers.h"
#include "PlatformLinux/X11/X11Connection.h"

#include <algorithm>
#include <array>
#include <vector>

namespace orvane {

namespace {

struct StateAtoms {
    explicit StateAtoms(const X11Connection& x11)
        : state(x11.atom("_NET_WM_STATE")),
          skipTaskBar(x11.atom("_NET_WM_STATE_SKIP_TASKBAR")),
          skipPager(x11.atom("_NET_WM_STATE_SKIP_PAGER"))
    {
    }

    xcb_atom_t state;
    xcb_atom_t skipTaskBar;
    xcb_atom_t skipPager;
};

std::vector<xcb_atom_t> atomsOf(const QByteArray& property)
{
    return propertyNumbers(property.constData(), static_cast<std::size_t>(property.size()));
}

} // namespace

void setInitialTaskBarEntry(const QWindow& window, TaskBarEntry entry)
{
    const auto x11 = X11Connection::ofApplication();
    if (!x11 || !window.handle())
        return;
    const StateAtoms names(*x11);
    const auto id = static_cast<xcb_window_t>(window.winId());
    // What Qt has put there stays; it keeps ours in its turn.
    std::vector<xcb_atom_t> atoms = atomsOf(x11->property(id, names.state, XCB_ATOM_ATOM));
    std::erase_if(atoms,
                  [&](xcb_atom_t atom) { return atom == names.skipTaskBar || atom == names.skipPager; });
    if (entry == TaskBarEntry::hidden)
        atoms.insert(atoms.end(), {names.skipTaskBar, names.skipPager});
    xcb_change_property(x11->xcb(), XCB_PROP_MODE_REPLACE, id, names.state, XCB_ATOM_ATOM, 32,
                        static_cast<std::uint32_t>(atoms.size()), atoms.data());
}

namespace {

/// A request to the window manager about a window of ours.
void send(const X11Connection& x11, const QWindow& window, xcb_atom_t type,
          const std::array<std::uint32_t, 4>& data)
{
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = static_cast<xcb_window_t>(window.winId());
    message.type = type;
    std::copy(data.begin(), data.end(), message.data.data32);
    xcb_send_event(x11.xcb(), 0, x11.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(x11.xcb());
}

} // namespace

void requestTaskBarEntry(const QWindow& window, TaskBarEntry entry)
{
    const auto x11 = X11Connection::ofApplication();
    if (!x11 || !window.handle())
        return;
    const StateAtoms names(*x11);
    constexpr std::uint32_t remove = 0;
    constexpr std::uint32_t add = 1;
    constexpr std::uint32_t fromAnApplication = 1;
    send(
        *x11, window, names.state,
        {entry == TaskBarEntry::shown ? remove : add, names.skipTaskBar, names.skipPager, fromAnApplication});
}

void requestActivation(const QWindow& window)
{
    const auto x11 = X11Connection::ofApplication();
    if (!x11 || !window.handle())
        return;
    constexpr std::uint32_t fromTheUser = 2;
    send(*x11, window, x11->atom("_NET_ACTIVE_WINDOW"), {fromTheUser, XCB_CURRENT_TIME, XCB_NONE, 0});
}

} // namespace orvane
