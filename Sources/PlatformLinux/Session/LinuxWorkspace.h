// The desktop session: logind tells of waking up and the window manager of the program at the front; programs
// are started as independent processes.
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

    /// Begins to listen to logind and to the window manager at the first call.
    NotificationCenter& notificationCenter() override;
    /// Begins to listen to the window manager at the first call.
    std::optional<RunningApplication> frontmostApplication() override;
    QList<InstalledApplication> installedApplications() override;
    void openApplication(const QString& path, OpenConfiguration configuration,
                         OpenCompletion completion) override;
    bool activateApplication(const RunningApplication& application) override;
    bool openURL(const QString& url) override;

    /// Returns the keys of the frontmost application, known after the first of the calls above. Any thread,
    /// without waiting.
    [[nodiscard]] CommandKeys commandKeys() const { return m_frontmost.commandKeys(); }

private Q_SLOTS:
    void prepareForSleep(bool goingToSleep);

private:
    void listenForWake();
    void postActivation();
    bool openSettings(const QString& url);
    /// Returns nothing, or the reason why the program couldn't be started.
    std::optional<QString>
    start(const QString& program, const QStringList& arguments,
          const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment());
    /// Does the same for a process that waits for this one's end.
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
