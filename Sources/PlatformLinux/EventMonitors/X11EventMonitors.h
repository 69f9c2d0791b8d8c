// Event monitors on X11: the events of this process's windows as the server sends them, and while the desktop
// has a menu of ours open, the keyboards themselves, by an event tap. Without monitors there is no filter,
// and without an open menu no tap. Main thread.
#pragma once

#include "Platform/EventMonitors.h"
#include "Platform/EventTaps.h"
#include "PlatformLinux/EventMonitors/MonitorList.h"
#include "PlatformLinux/EventMonitors/XcbEventReader.h"

#include <QAbstractNativeEventFilter>
#include <QObject>

#include <memory>

namespace orvane {

class MenuTracking;

class X11EventMonitors : public QObject, public EventMonitors, private QAbstractNativeEventFilter {
    Q_OBJECT
public:
    /// Both outlive this object.
    X11EventMonitors(EventTaps& taps, const MenuTracking& menus);
    ~X11EventMonitors() override;

    [[nodiscard]] std::unique_ptr<EventMonitor> addLocalMonitor(EventMask mask, Handler handler) override;
    [[nodiscard]] std::unique_ptr<EventMonitor> addMenuTrackingMonitor(EventMask mask,
                                                                       Handler handler) override;

    [[nodiscard]] bool isListening() const { return m_isListening; }
    [[nodiscard]] bool isTapping() const { return m_tap != nullptr; }

private:
    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;
    void update();
    void listen(bool listens);
    void tap(bool taps);
    Disposition offer(const MonitoredEvent& event);
    static Event* tapCallback(EventType type, Event* event, void* userInfo);

    EventTaps& m_taps;
    const MenuTracking& m_menus;
    MonitorList m_local;
    MonitorList m_menuTracking;
    XcbEventReader m_reader;
    std::unique_ptr<EventTap> m_tap;
    bool m_isListening = false;
    bool m_isTapRefused = false;
};

} // namespace orvane
