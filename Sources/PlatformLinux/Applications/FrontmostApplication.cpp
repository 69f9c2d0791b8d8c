#include "PlatformLinux/Applications/FrontmostApplication.h"

#include "PlatformLinux/Applications/WindowProgram.h"

#include <QCoreApplication>

#include <chrono>
#include <cstring>

namespace orvane {

namespace {

/// The property is None for a moment while the focus goes from one window to the next.
constexpr std::chrono::milliseconds longestPassage(50);

} // namespace

FrontmostApplication::FrontmostApplication(DesktopEntries& entries) : m_entries(entries)
{
    m_noneForLong.setSingleShot(true);
    m_noneForLong.setInterval(longestPassage);
    connect(&m_noneForLong, &QTimer::timeout, this, [this] {
        m_window = activeWindow();
        settle(programOf(m_window));
    });
}

FrontmostApplication::~FrontmostApplication()
{
    if (m_x && qApp)
        qApp->removeNativeEventFilter(this);
}

void FrontmostApplication::start()
{
    if (m_x)
        return;
    m_x = X11Connection::ofApplication();
    if (!m_x)
        return;
    m_activeWindowAtom = m_x->atom("_NET_ACTIVE_WINDOW");
    m_x->addEventMask(m_x->root(), XCB_EVENT_MASK_PROPERTY_CHANGE);
    qApp->installNativeEventFilter(this);
    readActiveWindow();
}

bool FrontmostApplication::activate(std::int64_t process)
{
    start();
    const auto window = m_x ? windowToActivate(*m_x, process, m_recent.of(process)) : std::nullopt;
    if (window)
        requestActivation(*m_x, *window);
    return window.has_value();
}

bool FrontmostApplication::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    if ((event->response_type & 0x7f) != XCB_PROPERTY_NOTIFY)
        return false;
    const auto* told = reinterpret_cast<const xcb_property_notify_event_t*>(event);
    if (told->window == m_x->root() && told->atom == m_activeWindowAtom)
        readActiveWindow();
    return false;
}

xcb_window_t FrontmostApplication::activeWindow() const
{
    const QByteArray bytes = m_x->property(m_x->root(), m_activeWindowAtom, XCB_ATOM_WINDOW);
    xcb_window_t window = XCB_WINDOW_NONE;
    if (bytes.size() >= static_cast<qsizetype>(sizeof window))
        std::memcpy(&window, bytes.constData(), sizeof window);
    return window;
}

std::optional<RunningApplication> FrontmostApplication::programOf(xcb_window_t window)
{
    auto application = window ? programOfWindow(*m_x, window, m_entries) : std::nullopt;
    if (application && application->processIdentifier != 0)
        m_recent.add(application->processIdentifier, window);
    return application;
}

void FrontmostApplication::readActiveWindow()
{
    const xcb_window_t window = activeWindow();
    if (window == m_window)
        return;
    m_window = window;
    auto application = programOf(window);
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
