// Event monitors on X11: the events of this process's windows as the server sends them; the keyboards
// themselves, by an event tap, while the desktop has a menu of ours open; and the mouse on other programs'
// windows, by raw events. Other programs' keys aren't reported. Without monitors there is no filter and
// nothing is selected, and without an open menu no tap. Main thread.
#pragma once

#include "Platform/EventMonitors.h"
#include "Platform/EventTaps.h"
#include "PlatformLinux/EventMonitors/MonitorList.h"
#include "PlatformLinux/EventMonitors/PointerWatch.h"
#include "PlatformLinux/EventMonitors/XcbEventReader.h"

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QPointF>
#include <QTimer>

#include <memory>

namespace orvane {

class MenuTracking;
class X11Screens;
class XInputEventTaps;

class X11EventMonitors : public QObject, public EventMonitors, private QAbstractNativeEventFilter {
    Q_OBJECT
public:
    /// All outlive this object.
    X11EventMonitors(XInputEventTaps& taps, const MenuTracking& menus, const X11Screens& screens);
    ~X11EventMonitors() override;

    [[nodiscard]] std::unique_ptr<EventMonitor> addLocalMonitor(EventMask mask, Handler handler) override;
    [[nodiscard]] std::unique_ptr<EventMonitor> addMenuTrackingMonitor(EventMask mask,
                                                                       Handler handler) override;

    [[nodiscard]] std::unique_ptr<EventMonitor> addGlobalMonitor(EventMask mask, Observer observer) override;
    [[nodiscard]] Point mouseLocation() const override;
    [[nodiscard]] EventFlags modifierFlags() const override;

    [[nodiscard]] bool isListening() const { return m_isListening; }
    [[nodiscard]] bool isTapping() const { return m_tap != nullptr; }
    /// Returns how many events of the mouse on other programs' windows the server has sent.
    [[nodiscard]] std::uint64_t pointerEventsRead() const { return m_pointer.eventsRead(); }
    /// Returns the server's time of the last press of the left button that global monitors were told of, or
    /// that was on a window of ours; 0 when there was none.
    [[nodiscard]] std::uint32_t lastLeftPress() const { return m_pointer.lastLeftPress(); }

private:
    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;
    [[nodiscard]] QPointF pointerLocation() const;
    void update();
    void listen(bool listens);
    void tap(bool taps);
    Disposition offer(const MonitoredEvent& event);
    void tellOfOthers(EventType type, const PointerState& pointer);
    static EventTapDecision tapCallback(EventType type, Event& event, void* userInfo);

    XInputEventTaps& m_taps;
    const MenuTracking& m_menus;
    const X11Screens& m_screens;
    MonitorList m_global;
    MonitorList m_local;
    MonitorList m_menuTracking;
    XcbEventReader m_reader;
    PointerWatch m_pointer;
    /// The event for which monitors are being called.
    const MonitoredEvent* m_current = nullptr;
    std::unique_ptr<EventTap> m_tap;
    /// Looks for a tap that is off while the menu is open: the server was late, or its thread has ended.
    QTimer m_tapWatchdog;
    mutable QPointF m_lastLocation;
    bool m_isListening = false;
    bool m_isTapRefused = false;
};

} // namespace orvane
