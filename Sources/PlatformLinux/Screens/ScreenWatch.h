// Keeps the list of the displays. A burst of changes from the X server and the toolkit is handled once, in a
// later turn of the run loop; between changes nothing wakes it. Main thread.
#pragma once

#include "Platform/Screens.h"
#include "PlatformLinux/Screens/DockStruts.h"
#include "PlatformLinux/Screens/Monitors.h"
#include "PlatformLinux/Screens/ScreenSpace.h"

#include <QObject>

class QScreen;

namespace orvane {

class ScreenWatch : public QObject {
    Q_OBJECT
public:
    ScreenWatch();
    ~ScreenWatch() override;

    [[nodiscard]] const QList<Screen>& screens() const { return m_screens; }
    /// Returns a space whose displays are in the order of screens().
    [[nodiscard]] const ScreenSpace& space() const { return m_space; }
    /// Returns the index in screens() of the display under the middle of the active window. With one display
    /// it asks nobody; with more, a round trip asks where the window is, and another one which it is when
    /// that has changed.
    [[nodiscard]] qsizetype activeIndex();

Q_SIGNALS:
    /// Emitted after some value of the list has changed.
    void changed();

private:
    void handle(const xcb_generic_event_t& event);
    void readProperty(const xcb_property_notify_event_t& event);
    void follow(QScreen* screen);
    void monitorsMayHaveChanged();
    void scheduleRefresh();
    void refresh();
    void selectDisplays();
    void readDisplays(XExchange& exchange);
    void rebuild();
    [[nodiscard]] xcb_window_t activeWindow(XExchange& exchange);
    [[nodiscard]] std::optional<Point> middleOfActiveWindow();

    std::shared_ptr<ApplicationLink> m_x;
    std::unique_ptr<ApplicationLink::Listener> m_listener;
    std::optional<DockStruts> m_struts;
    /// Absent when it may have changed.
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
