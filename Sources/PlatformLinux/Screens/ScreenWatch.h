// Keeps the list of the displays. What the X server and the toolkit tell in a burst is looked at once, in a
// later turn of the run loop; between changes nothing wakes it. Main thread.
#pragma once

#include "Platform/Screens.h"
#include "PlatformLinux/Screens/DockStruts.h"
#include "PlatformLinux/Screens/Monitors.h"
#include "PlatformLinux/Screens/ScreenSpace.h"

#include <QAbstractNativeEventFilter>
#include <QObject>

class QScreen;

namespace orvane {

class ScreenWatch : public QObject, private QAbstractNativeEventFilter {
    Q_OBJECT
public:
    ScreenWatch();
    ~ScreenWatch() override;

    [[nodiscard]] const QList<Screen>& screens() const { return m_screens; }
    /// Its displays are in the order of screens().
    [[nodiscard]] const ScreenSpace& space() const { return m_space; }
    /// Of screens(), the one under the middle of the active window. With one display it asks nobody; with
    /// more, a round trip tells where the window is, and another one which it is when that has changed.
    [[nodiscard]] qsizetype activeIndex();

Q_SIGNALS:
    /// Some value of the list is another one, and is so already.
    void changed();

private:
    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;
    void readProperty(const xcb_property_notify_event_t& event);
    void follow(QScreen* screen);
    void monitorsMayHaveChanged();
    void scheduleRefresh();
    void refresh();
    void readRoot();
    void rebuild();
    [[nodiscard]] xcb_window_t activeWindow();
    [[nodiscard]] std::optional<Point> middleOf(xcb_window_t window) const;

    std::optional<X11Connection> m_x;
    std::optional<DockStruts> m_struts;
    xcb_atom_t m_activeWindowAtom = XCB_ATOM_NONE;
    /// Absent when it may be another one by now.
    std::optional<xcb_window_t> m_activeWindow;
    std::uint8_t m_randrEvent = 0;
    bool m_isRefreshScheduled = false;
    bool m_areMonitorsStale = true;
    Size m_root;
    std::vector<Monitor> m_monitors;
    ScreenSpace m_space;
    QList<Screen> m_screens;
};

} // namespace orvane
