// The desktop session as a whole: its notifications, and opening of things. Main thread.
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
    /// Called on the main thread, later and exactly once; carries an error's text, or nothing.
    using OpenCompletion = std::function<void(std::optional<QString> error)>;

    virtual ~Workspace() = default;

    virtual NotificationCenter& notificationCenter() = 0;
    /// The program whose window is the active one, from what the platform keeps: asks nobody.
    virtual std::optional<RunningApplication> frontmostApplication() = 0;
    /// Brings the program's window to the front that was active last. False when the program has ended or has
    /// no window; it comes to the front a moment after the return.
    virtual bool activateApplication(const RunningApplication& application) = 0;
    /// Programs that a person may choose from, by name; reads their entries from the disk.
    virtual QList<InstalledApplication> installedApplications() = 0;
    /// Starts the program at an absolute path. A new instance of the running program itself waits for this
    /// process to end before it takes anything that two can't have; once it is started, further starts don't
    /// reach this process any more.
    virtual void openApplication(const QString& path, OpenConfiguration configuration,
                                 OpenCompletion completion) = 0;
    /// Opens a URL with whatever the desktop has for it. False when nothing can.
    virtual bool openURL(const QString& url) = 0;
};

} // namespace orvane
