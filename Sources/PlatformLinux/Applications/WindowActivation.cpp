#include "PlatformLinux/Applications/WindowActivation.h"

#include "PlatformLinux/Applications/WindowProgram.h"

#include <algorithm>
#include <array>

namespace orvane {

namespace {

constexpr std::size_t longestMemory = 64;

std::vector<std::uint32_t> values(XExchange& exchange, xcb_window_t window, xcb_atom_t name, xcb_atom_t type)
{
    return exchange.numbers(exchange.askProperty(window, name, type));
}

/// Returns the windows from the lowest to the topmost.
std::vector<xcb_window_t> managedWindows(XExchange& exchange)
{
    const xcb_window_t root = exchange.link().root();
    auto windows = values(exchange, root, exchange.atoms().clientListStacking, XCB_ATOM_WINDOW);
    return windows.empty() ? values(exchange, root, exchange.atoms().clientList, XCB_ATOM_WINDOW) : windows;
}

bool isPartOfDesktop(XExchange& exchange, xcb_window_t window)
{
    const XAtoms& atoms = exchange.atoms();
    const auto types = values(exchange, window, atoms.windowType, XCB_ATOM_ATOM);
    return std::ranges::any_of(types, [&](xcb_atom_t type) {
        return type == atoms.windowTypeDock || type == atoms.windowTypeDesktop;
    });
}

void send(ApplicationLink& x, xcb_window_t window, xcb_atom_t type, const std::array<std::uint32_t, 5>& data)
{
    sendToWindowManager(x.xcb(), x.root(), window, type, data);
}

void requestDesktopOf(ApplicationLink& x, xcb_window_t window, xcb_timestamp_t time)
{
    constexpr std::uint32_t onEveryDesktop = 0xFFFFFFFF;
    XExchange exchange = x.exchange();
    const auto desktop = values(exchange, window, x.atoms().desktop, XCB_ATOM_CARDINAL);
    const auto current = values(exchange, x.root(), x.atoms().currentDesktop, XCB_ATOM_CARDINAL);
    if (desktop.empty() || desktop.front() == onEveryDesktop || desktop == current)
        return;
    send(x, x.root(), x.atoms().currentDesktop, {desktop.front(), time, 0, 0, 0});
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

std::optional<xcb_window_t> windowToActivate(XExchange& exchange, std::int64_t process,
                                             const std::vector<xcb_window_t>& recent)
{
    if (process == 0)
        return std::nullopt; // of another machine; it may be anybody's
    const std::vector<xcb_window_t> managed = managedWindows(exchange);
    // The server gives the numbers of windows that are gone to others.
    for (const xcb_window_t window : recent) {
        if (std::ranges::find(managed, window) != managed.end() &&
            processOfWindow(exchange, window) == process)
            return window;
    }
    const auto uppermost = std::find_if(managed.rbegin(), managed.rend(), [&](xcb_window_t window) {
        return processOfWindow(exchange, window) == process && !isPartOfDesktop(exchange, window);
    });
    return uppermost == managed.rend() ? std::nullopt : std::optional(*uppermost);
}

void requestActivation(ApplicationLink& x, xcb_window_t window)
{
    const xcb_timestamp_t time = x.serverTime();
    requestDesktopOf(x, window, time);
    XExchange exchange = x.exchange();
    const auto state = values(exchange, window, x.atoms().state, XCB_ATOM_ATOM);
    if (std::ranges::find(state, x.atoms().stateHidden) != state.end())
        xcb_map_window(x.xcb(), window);
    constexpr std::uint32_t fromTheUser = 2;
    send(x, window, x.atoms().activeWindow, {fromTheUser, time, XCB_NONE, 0, 0});
    x.link().flush();
}

} // namespace orvane
