// The desktop session: waking up is told by logind, the program at the front by the window manager, programs
// are started as children of nobody.
#pragma once

#include "Platform/Workspace.h"
#include "PlatformLinux/Applications/DesktopEntries.h"
#include "PlatformLinux/Applications/FrontmostApplication.h"

#include <QObject>
#include <QProcessEnvironment>

namespace orvane {

class LogSink;
class SingleInstance;

class LinuxWorkspace : public QObject, public Workspace {
    Q_OBJECT

public:
    LinuxWorkspace(LogSink& log, SingleInstance& singleInstance);

    /// Listens to logind and to the window manager from the first call on.
    NotificationCenter& notificationCenter() override;
    /// Listens to the window manager from the first call on.
    std::optional<RunningApplication> frontmostApplication() override;
    QList<InstalledApplication> installedApplications() override;
    void openApplication(const QString& path, OpenConfiguration configuration,
                         OpenCompletion completion) override;
    bool activateApplication(const RunningApplication& application) override;
    bool openURL(const QString& url) override;

    /// Of the frontmost application, as far as one of the calls above made us listen. Any thread, without
    /// waiting.
    [[nodiscard]] CommandKeys commandKeys() const { return m_frontmost.commandKeys(); }

private Q_SLOTS:
    void prepareForSleep(bool goingToSleep);

private:
    void listenForWake();
    void postActivation();
    bool openSettings(const QString& url);
    /// Nothing, or why the program couldn't be started.
    std::optional<QString>
    start(const QString& program, const QStringList& arguments,
          const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment());
    /// The same for a process that waits for this one's end.
    std::optional<QString> startSuccessor(const QString& path);
    void note(const QString& message);

    LogSink& m_log;
    SingleInstance& m_singleInstance;
    NotificationCenter m_center;
    DesktopEntries m_entries;
    FrontmostApplication m_frontmost{m_entries};
    bool m_listens = false;
};

} // namespace orvane
