#include "PlatformLinux/Session/LinuxWorkspace.h"

#include "Platform/LogSink.h"
#include "PlatformLinux/Applications/ApplicationIdentity.h"
#include "PlatformLinux/Applications/KnownPrograms.h"
#include "PlatformLinux/Session/SettingsPages.h"
#include "PlatformLinux/Session/SingleInstance.h"
#include "PlatformLinux/Session/Succession.h"

#include <QDBusConnection>
#include <QDesktopServices>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

namespace orvane {

LinuxWorkspace::LinuxWorkspace(LogSink& log, SingleInstance& singleInstance)
    : m_log(log), m_singleInstance(singleInstance)
{
    connect(&m_frontmost, &FrontmostApplication::changed, this, &LinuxWorkspace::postActivation);
}

NotificationCenter& LinuxWorkspace::notificationCenter()
{
    if (!m_listens) {
        m_listens = true;
        listenForWake();
        m_frontmost.start();
    }
    return m_center;
}

std::optional<RunningApplication> LinuxWorkspace::frontmostApplication()
{
    m_frontmost.start();
    return m_frontmost.application();
}

void LinuxWorkspace::postActivation()
{
    QVariantMap userInfo;
    if (const auto& application = m_frontmost.application())
        userInfo.insert(applicationKey(), QVariant::fromValue(*application));
    m_center.post(didActivateApplicationNotification(), userInfo);
}

QList<InstalledApplication> LinuxWorkspace::installedApplications()
{
    QList<InstalledApplication> list;
    for (const DesktopEntries::Entry& entry : m_entries.entriesForMenus()) {
        const auto identifier = bundleIdentifier(
            {.windowClass = entry.startupWMClass, .executable = {}, .desktopEntryID = entry.id});
        if (entry.isPartOfDesktop || identifier == systemProgram::dock)
            continue;
        list.append(
            {.bundleIdentifier = identifier, .localizedName = entry.name, .iconName = entry.iconName});
    }
    return list;
}

void LinuxWorkspace::listenForWake()
{
    const bool connected = QDBusConnection::systemBus().connect(
        QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
        QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("PrepareForSleep"), this,
        SLOT(prepareForSleep(bool)));
    if (!connected)
        note(QStringLiteral("There is no system bus, so waking from sleep goes unnoticed"));
}

void LinuxWorkspace::prepareForSleep(bool goingToSleep)
{
    if (!goingToSleep)
        m_center.post(didWakeNotification());
}

void LinuxWorkspace::openApplication(const QString& path, OpenConfiguration configuration,
                                     OpenCompletion completion)
{
    const std::optional<QString> error =
        configuration.createsNewApplicationInstance ? startSuccessor(path) : start(path, {});
    QMetaObject::invokeMethod(
        this, [completion = std::move(completion), error] { completion(error); }, Qt::QueuedConnection);
}

std::optional<QString> LinuxWorkspace::startSuccessor(const QString& path)
{
    auto bequest = Succession::Bequest::make();
    if (!bequest)
        return QStringLiteral("%1 could not be started: %2").arg(path, qt_error_string());
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    bequest->applyTo(environment);
    if (auto error = start(path, {}, environment))
        return error;
    std::move(*bequest).keep();
    // A start of the program from here on has to find the new process, or become the one instance itself.
    m_singleInstance.release();
    return std::nullopt;
}

bool LinuxWorkspace::activateApplication(const RunningApplication& application)
{
    return m_frontmost.activate(application.processIdentifier);
}

bool LinuxWorkspace::openURL(const QString& url)
{
    if (isSettingsURL(url))
        return openSettings(url);
    const QUrl parsed(url, QUrl::StrictMode);
    // Without a scheme the opener would look for a file of that name.
    return parsed.isValid() && !parsed.scheme().isEmpty() && QDesktopServices::openUrl(parsed);
}

bool LinuxWorkspace::openSettings(const QString& url)
{
    const QStringList desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':', Qt::SkipEmptyParts);
    const QList<SettingsCommand> commands = settingsCommands(url, desktops);
    if (commands.isEmpty()) {
        note(QStringLiteral("No settings program is known to show %1").arg(url));
        return false;
    }
    QStringList reasons;
    for (const SettingsCommand& command : commands) {
        const QString program = QStandardPaths::findExecutable(command.program);
        if (program.isEmpty())
            continue;
        const auto error = start(program, command.arguments);
        if (!error)
            return true;
        reasons.append(*error);
    }
    if (reasons.isEmpty())
        reasons.append(QStringLiteral("%1 is not installed, nor is any other settings program that is known")
                           .arg(commands.constFirst().program));
    note(QStringLiteral("The settings can't be shown: %1").arg(reasons.join(QLatin1StringView("; "))));
    return false;
}

std::optional<QString> LinuxWorkspace::start(const QString& program, const QStringList& arguments,
                                             const QProcessEnvironment& environment)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProgram(program);
    process.setArguments(arguments);
    process.setStandardInputFile(QProcess::nullDevice());
    if (process.startDetached())
        return std::nullopt;
    return QStringLiteral("%1 could not be started: %2").arg(program, process.errorString());
}

void LinuxWorkspace::note(const QString& message)
{
    m_log.write(LogLevel::notice, QStringLiteral("net.lindenrow.orvane"), QStringLiteral("Workspace"),
                message);
}

} // namespace orvane
