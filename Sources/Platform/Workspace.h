// The desktop session as a whole: its notifications, and the opening of programs and URLs. Main thread.
#pragma once

#include "Platform/NotificationCenter.h"
#include "Platform/RunningApplication.h"

#include <functional>
#include <optional>

namespace orvane {

class Workspace {
public:
    /// Posted on `notificationCenter()` after the machine has woken from sleep.
    static QString didWakeNotification() { return QStringLiteral("NSWorkspaceDidWakeNotification"); }

    /// Posted there when another program has come to the front; its user info holds a RunningApplication
    /// under `applicationKey()`, where the program is known.
    static QString didActivateApplicationNotification()
    {
        return QStringLiteral("NSWorkspaceDidActivateApplicationNotification");
    }
    static QString applicationKey() { return QStringLiteral("NSWorkspaceApplicationKey"); }

    struct OpenConfiguration {
        /// Starts a second process even when the program runs already.
        bool createsNewApplicationInstance = false;
    };
    /// Called on the main thread, later and exactly once, with an error's text or nothing.
    using OpenCompletion = std::function<void(std::optional<QString> error)>;

    virtual ~Workspace() = default;

    virtual NotificationCenter& notificationCenter() = 0;
    /// Returns the program whose window is the active one. The answer is a kept one; nobody is asked.
    virtual std::optional<RunningApplication> frontmostApplication() = 0;
    /// Brings the program's last active window to the front. False when the program has ended or has no
    /// window; the window comes to the front a moment after the return.
    virtual bool activateApplication(const RunningApplication& application) = 0;
    /// Returns the programs that a person may choose from, by name. Reads their entries from the disk.
    virtual QList<InstalledApplication> installedApplications() = 0;
    /// Starts the program at an absolute path. A new instance of the running program itself waits for this
    /// process to end before it takes anything that two processes can't have at once; once it is started,
    /// further starts don't reach this process any more.
    virtual void openApplication(const QString& path, OpenConfiguration configuration,
                                 OpenCompletion completion) = 0;
    /// Opens a URL with the program that the desktop has for it. False when there is none.
    virtual bool openURL(const QString& url) = 0;
};

} // namespace orvane
