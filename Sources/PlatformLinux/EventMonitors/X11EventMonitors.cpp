#include "PlatformLinux/EventMonitors/X11EventMonitors.h"

#include "PlatformLinux/EventTap/XInputEventTaps.h"
#include "PlatformLinux/Keys/KeyFlags.h"
#include "PlatformLinux/Menus/MenuTracking.h"
#include "PlatformLinux/Screens/X11Screens.h"

#include <QCoreApplication>
#include <QCursor>
#include <QScopedValueRollback>

#include <chrono>

namespace orvane {

namespace {

using namespace std::chrono_literals;

constexpr auto tapWatchdogInterval = 1s;
constexpr EventMask keyEvents =
    eventMaskBit(EventType::keyDown) | eventMaskBit(EventType::keyUp) | eventMaskBit(EventType::flagsChanged);
constexpr EventMask menuEvents = eventMaskBit(EventType::keyDown) | eventMaskBit(EventType::keyUp);

QPointF toolkitPoint(const ScreenSpace& space, const PointerState& pointer)
{
    const Point point = space.toolkitFromNative({double(pointer.x), double(pointer.y)});
    return {point.x, point.y};
}

} // namespace

X11EventMonitors::X11EventMonitors(XInputEventTaps& taps, const MenuTracking& menus,
                                   const X11Screens& screens)
    : m_taps(taps),
      m_menus(menus),
      m_screens(screens),
      m_global([this] { m_pointer.want(m_global.mask()); }),
      m_local([this] { update(); }),
      m_menuTracking([this] { update(); }),
      m_reader([this](const MonitoredEvent& event) { return offer(event); }),
      m_pointer([this](EventType type, const PointerState& pointer) { tellOfOthers(type, pointer); })
{
    connect(&menus, &MenuTracking::placeChanged, this, &X11EventMonitors::update);
    m_tapWatchdog.setInterval(tapWatchdogInterval);
    connect(&m_tapWatchdog, &QTimer::timeout, this, [this] {
        if (!m_tap->isEnabled())
            m_tap->enable(true);
    });
}

X11EventMonitors::~X11EventMonitors()
{
    listen(false);
}

std::unique_ptr<EventMonitor> X11EventMonitors::addLocalMonitor(EventMask mask, Handler handler)
{
    return m_local.add(mask, std::move(handler));
}

std::unique_ptr<EventMonitor> X11EventMonitors::addMenuTrackingMonitor(EventMask mask, Handler handler)
{
    return m_menuTracking.add(mask & menuEvents, std::move(handler));
}

std::unique_ptr<EventMonitor> X11EventMonitors::addGlobalMonitor(EventMask mask, Observer observer)
{
    return m_global.add(mask, [observe = std::move(observer)](const MonitoredEvent& event) {
        observe(event);
        return Disposition::pass;
    });
}

Point X11EventMonitors::mouseLocation() const
{
    const QPointF location = m_current ? m_current->location : pointerLocation();
    return m_screens.space().cocoaOfPointer({location.x(), location.y()});
}

/// Returns the last known place when the server doesn't answer.
QPointF X11EventMonitors::pointerLocation() const
{
    const auto x = ApplicationLink::get();
    if (!x)
        return QCursor::pos();
    if (const auto pointer = x->pointer())
        m_lastLocation = toolkitPoint(m_screens.space(), *pointer);
    return m_lastLocation;
}

EventFlags X11EventMonitors::modifierFlags() const
{
    if (m_current)
        return m_current->event.flags & ~(eventFlag::numericPad | eventFlag::secondaryFn);
    const auto x = ApplicationLink::get();
    const auto pointer = x ? x->pointer() : std::nullopt;
    return pointer ? eventFlagsOfXState(pointer->mask) : EventFlags{0};
}

void X11EventMonitors::update()
{
    const MenuTracking::Place place = m_menus.place();
    const bool menuIsMonitored = !m_menuTracking.isEmpty();
    const bool menuIsRead = menuIsMonitored && place == MenuTracking::Place::program;
    listen(!m_local.isEmpty() || menuIsRead);
    if (m_isListening)
        m_reader.readKeys(((m_local.mask() | (menuIsRead ? m_menuTracking.mask() : 0)) & keyEvents) != 0);
    tap(menuIsMonitored && place == MenuTracking::Place::desktop);
}

void X11EventMonitors::listen(bool listens)
{
    if (listens == m_isListening)
        return;
    m_isListening = listens;
    QCoreApplication* application = QCoreApplication::instance();
    if (!listens) {
        application->removeNativeEventFilter(this);
        m_reader.stop();
        return;
    }
    auto x = ApplicationLink::get();
    if (!x)
        return;
    m_reader.start(std::move(x));
    application->installNativeEventFilter(this);
}

void X11EventMonitors::tap(bool taps)
{
    if (!taps) {
        m_tapWatchdog.stop();
        m_tap.reset();
        m_isTapRefused = false;
        return;
    }
    if (m_tap || m_isTapRefused)
        return;
    // The tap comes after those that change keys: the menu gets the changed ones.
    m_tap = m_taps.tapCreate(EventTaps::Location::session, EventTaps::Placement::tailAppend,
                             EventTaps::Options::defaultTap, menuEvents, &tapCallback, this);
    m_isTapRefused = !m_tap;
    if (!m_tap)
        return;
    m_tap->addToMainRunLoop();
    m_tap->enable(true);
    m_tapWatchdog.start();
}

bool X11EventMonitors::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    return m_reader.read(*static_cast<xcb_generic_event_t*>(message)) == Disposition::swallow;
}

void X11EventMonitors::tellOfOthers(EventType type, const PointerState& pointer)
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    MonitoredEvent event;
    event.event.type = type;
    event.event.flags = eventFlagsOfXState(pointer.mask);
    event.event.timestamp = static_cast<std::uint64_t>(std::chrono::nanoseconds(now).count());
    event.location = toolkitPoint(m_screens.space(), pointer);
    const QScopedValueRollback current(m_current, &std::as_const(event));
    (void)m_global.offer(event);
}

EventMonitors::Disposition X11EventMonitors::offer(const MonitoredEvent& event)
{
    const QScopedValueRollback current(m_current, &event);
    if (m_menus.place() == MenuTracking::Place::program &&
        m_menuTracking.offer(event) == Disposition::swallow)
        return Disposition::swallow;
    return m_local.offer(event);
}

EventTapDecision X11EventMonitors::tapCallback(EventType type, Event& event, void* userInfo)
{
    auto* self = static_cast<X11EventMonitors*>(userInfo);
    if (type == EventType::tapDisabledByTimeout || type == EventType::tapDisabledByUserInput) {
        if (self->m_tap)
            self->m_tap->enable(true);
        return EventTapDecision::pass;
    }
    // A hot key is what the applications would get, and a posted key is none.
    const auto delivered = self->m_taps.deliveredFlags(event);
    if (!delivered)
        return EventTapDecision::pass;
    MonitoredEvent monitored{event, self->pointerLocation()};
    monitored.event.flags = (event.flags & ~chordFlags) | *delivered | flagsOfKeyItself(event.keycode);
    return self->m_menuTracking.offer(monitored) == Disposition::swallow ? EventTapDecision::consume
                                                                         : EventTapDecision::pass;
}

} // namespace orvane
