#include "PlatformLinux/Applications/WindowActivation.h"

#include "PlatformLinux/Applications/WindowProgram.h"
#include "PlatformLinux/X11/PropertyNumbers.h"
#include "PlatformLinux/X11/ServerTime.h"

#include <algorithm>
#include <array>

namespace orvane {

namespace {

constexpr std::size_t longestMemory = 64;

std::vector<std::uint32_t> values(const X11Connection& x, xcb_window_t window, const char* name,
                                  xcb_atom_t type)
{
    const QByteArray bytes = x.property(window, x.atom(name), type);
    return propertyNumbers(bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

/// Returns the windows from the lowest to the topmost.
std::vector<xcb_window_t> managedWindows(const X11Connection& x)
{
    auto windows = values(x, x.root(), "_NET_CLIENT_LIST_STACKING", XCB_ATOM_WINDOW);
    return windows.empty() ? values(x, x.root(), "_NET_CLIENT_LIST", XCB_ATOM_WINDOW) : windows;
}

bool isPartOfDesktop(const X11Connection& x, xcb_window_t window)
{
    const auto types = values(x, window, "_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM);
    return std::ranges::any_of(types, [&](xcb_atom_t type) {
        return type == x.atom("_NET_WM_WINDOW_TYPE_DOCK") || type == x.atom("_NET_WM_WINDOW_TYPE_DESKTOP");
    });
}

void send(const X11Connection& x, xcb_window_t window, const char* type,
          const std::array<std::uint32_t, 5>& data)
{
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = x.atom(type);
    std::ranges::copy(data, message.data.data32);
    xcb_send_event(x.xcb(), 0, x.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
}

void requestDesktopOf(const X11Connection& x, xcb_window_t window, xcb_timestamp_t time)
{
    constexpr std::uint32_t onEveryDesktop = 0xFFFFFFFF;
    const auto desktop = values(x, window, "_NET_WM_DESKTOP", XCB_ATOM_CARDINAL);
    const auto current = values(x, x.root(), "_NET_CURRENT_DESKTOP", XCB_ATOM_CARDINAL);
    if (desktop.empty() || desktop.front() == onEveryDesktop || desktop == current)
        return;
    send(x, x.root(), "_NET_CURRENT_DESKTOP", {desktop.front(), time, 0, 0, 0});
}

} // namespace

void RecentWindows::add(std::int64_t process, xcb_window_t window)
{
    std::erase_if(m_entries, [window](const Entry& entry) { return entry.window == window; });
    m_entries.insert(m_entries.begin(), {process, window});
    if (m_entries.size() > longestMemory)
        m_entries.pop_back();
}

std::vector<xcb_window_t> RecentWindows::of(std::int64_t process) const
{
    std::vector<xcb_window_t> windows;
    for (const Entry& entry : m_entries) {
        if (entry.process == process)
            windows.push_back(entry.window);
    }
    return windows;
}

std::optional<xcb_window_t> windowToActivate(const X11Connection& x, std::int64_t process,
                                             const std::vector<xcb_window_t>& recent)
{
    if (process == 0)
        return std::nullopt; // the process is on another machine, so its number says nothing here
    const std::vector<xcb_window_t> managed = managedWindows(x);
    // The server reuses the numbers of windows that are gone.
    for (const xcb_window_t window : recent) {
        if (std::ranges::find(managed, window) != managed.end() && processOfWindow(x, window) == process)
            return window;
    }
    const auto uppermost = std::find_if(managed.rbegin(), managed.rend(), [&](xcb_window_t window) {
        return processOfWindow(x, window) == process && !isPartOfDesktop(x, window);
    });
    return uppermost == managed.rend() ? std::nullopt : std::optional(*uppermost);
}

void requestActivation(const X11Connection& x, xcb_window_t window)
{
    const xcb_timestamp_t time = serverTime();
    requestDesktopOf(x, window, time);
    const auto state = values(x, window, "_NET_WM_STATE", XCB_ATOM_ATOM);
    if (std::ranges::find(state, x.atom("_NET_WM_STATE_HIDDEN")) != state.end())
        x.ignoreErrors(xcb_map_window_checked(x.xcb(), window));
    constexpr std::uint32_t fromTheUser = 2;
    send(x, window, "_NET_ACTIVE_WINDOW", {fromTheUser, time, XCB_NONE, 0, 0});
    xcb_flush(x.xcb());
}

} // namespace orvane
