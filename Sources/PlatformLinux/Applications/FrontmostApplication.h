// The program whose window is the active one, as the window manager reports it. Main thread, except for
// commandKeys(). Listens from start() on and wakes only when another window becomes the active one. Without
// an X server, or with a window manager that doesn't report it, there is never such a program.
#pragma once

#include "Platform/RunningApplication.h"
#include "PlatformLinux/Applications/CommandConvention.h"
#include "PlatformLinux/Applications/WindowActivation.h"
#include "PlatformLinux/X11/ApplicationLink.h"

#include <QObject>
#include <QTimer>

#include <atomic>
#include <memory>
#include <optional>

namespace orvane {

class DesktopEntries;

class FrontmostApplication : public QObject {
    Q_OBJECT
public:
    explicit FrontmostApplication(DesktopEntries& entries);
    ~FrontmostApplication() override;

    /// A second call changes nothing.
    void start();
    [[nodiscard]] const std::optional<RunningApplication>& application() const { return m_application; }
    /// Brings the process's last active window to the front, as far as that was seen. False when it has none.
    bool activate(std::int64_t process);
    /// Returns the command keys of that program. Any thread, without waiting.
    [[nodiscard]] CommandKeys commandKeys() const { return m_commandKeys.load(std::memory_order_relaxed); }

Q_SIGNALS:
    /// Emitted when another program has come to the front, or none is there any more.
    void changed();

private:
    void handle(const xcb_generic_event_t& event);
    void readActiveWindow();
    std::optional<RunningApplication> programOf(XExchange& exchange, xcb_window_t window);
    void settle(std::optional<RunningApplication> application);

    DesktopEntries& m_entries;
    std::shared_ptr<ApplicationLink> m_x;
    XSelection m_selection;
    std::unique_ptr<ApplicationLink::Listener> m_listener;
    xcb_window_t m_window = XCB_WINDOW_NONE;
    RecentWindows m_recent;
    QTimer m_noneForLong;
    std::optional<RunningApplication> m_application;
    std::atomic<CommandKeys> m_commandKeys = CommandKeys::control;
};

} // namespace orvane
