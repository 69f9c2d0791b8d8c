// Brings a window back above those that come up while it is shown. A child of the window. Main thread.
#pragma once

#include "PlatformLinux/X11/ApplicationLink.h"
#include "PlatformLinux/X11/XSelection.h"

#include <QObject>

class QWindow;

namespace orvane {

class StayOnTop : public QObject {
public:
    explicit StayOnTop(QWindow& window);

private:
    void follow(bool isVisible);
    void handle(const xcb_generic_event_t& event);
    void raise();

    QWindow& m_window;
    std::shared_ptr<ApplicationLink> m_x;
    /// Both exist while the window is visible.
    std::unique_ptr<ApplicationLink::Listener> m_listener;
    XSelection m_selection;
    int m_raisesLeft = 0;
};

} // namespace orvane
