#include "PlatformLinux/Applications/FrontmostApplication.h"

#include "PlatformLinux/Applications/WindowProgram.h"

#include <chrono>

namespace orvane {

namespace {

/// The property is None for a moment while the focus goes from one window to the next.
constexpr std::chrono::milliseconds longestPassage(50);

xcb_window_t activeWindow(XExchange& exchange)
{
    const auto windows = exchange.numbers(
        exchange.askProperty(exchange.link().root(), exchange.atoms().activeWindow, XCB_ATOM_WINDOW));
    return windows.empty() ? xcb_window_t{XCB_WINDOW_NONE} : windows[0];
}

} // namespace

FrontmostApplication::FrontmostApplication(DesktopEntries& entries) : m_entries(entries)
{
    m_noneForLong.setSingleShot(true);
    m_noneForLong.setInterval(longestPassage);
    connect(&m_noneForLong, &QTimer::timeout, this, [this] {
        XExchange exchange = m_x->exchange();
        const xcb_window_t window = activeWindow(exchange);
        auto application = programOf(exchange, window);
        if (exchange.isLate())
            return; // it is looked at again when the server is back
        m_window = window;
        settle(std::move(application));
    });
}

FrontmostApplication::~FrontmostApplication() = default;

void FrontmostApplication::start()
{
    if (m_x)
        return;
    m_x = ApplicationLink::get();
    if (!m_x)
        return;
    m_selection = m_x->link().select(m_x->root(), XCB_EVENT_MASK_PROPERTY_CHANGE);
    m_listener = m_x->listen([this](const xcb_generic_event_t& event) { handle(event); });
    connect(m_x.get(), &ApplicationLink::serverIsBack, this, &FrontmostApplication::readActiveWindow);
    readActiveWindow();
}

bool FrontmostApplication::activate(std::int64_t process)
{
    start();
    if (!m_x)
        return false;
    XExchange exchange = m_x->exchange();
    const auto window = windowToActivate(exchange, process, m_recent.of(process));
    if (window)
        requestActivation(*m_x, *window);
    return window.has_value();
}

void FrontmostApplication::handle(const xcb_generic_event_t& event)
{
    const auto& told = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if ((event.response_type & 0x7F) == XCB_PROPERTY_NOTIFY && told.window == m_x->root() &&
        told.atom == m_x->atoms().activeWindow)
        readActiveWindow();
}

std::optional<RunningApplication> FrontmostApplication::programOf(XExchange& exchange, xcb_window_t window)
{
    auto application = window ? programOfWindow(exchange, window, m_entries) : std::nullopt;
    if (application && application->processIdentifier != 0)
        m_recent.add(application->processIdentifier, window);
    return application;
}

void FrontmostApplication::readActiveWindow()
{
    XExchange exchange = m_x->exchange();
    const xcb_window_t window = activeWindow(exchange);
    if (window == m_window)
        return;
    auto application = programOf(exchange, window);
    if (exchange.isLate())
        return; // it is looked at again when the server is back
    m_window = window;
    // A window that is gone already is followed by the next one, as None is.
    if (application)
        settle(std::move(application));
    else if (!m_noneForLong.isActive())
        m_noneForLong.start();
}

void FrontmostApplication::settle(std::optional<RunningApplication> application)
{
    m_noneForLong.stop();
    if (application == m_application)
        return;
    m_application = std::move(application);
    m_commandKeys.store(orvane::commandKeys(m_application ? m_application->bundleIdentifier : std::nullopt),
                        std::memory_order_relaxed);
    Q_EMIT changed();
}

} // namespace orvane
