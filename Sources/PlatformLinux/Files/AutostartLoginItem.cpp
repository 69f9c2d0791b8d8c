#include "PlatformLinux/Files/AutostartLoginItem.h"

#include "Platform/PlatformError.h"
#include "PlatformLinux/Common/AtomicFile.h"
#include "PlatformLinux/Files/DesktopEntry.h"
#include "PlatformLinux/Files/ProgramBundle.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <mutex>
#include <system_error>

namespace orvane {

namespace {

/// Held while the entry is changed: one that is just renewed must not come back after it was removed.
std::mutex changes;

constexpr qint64 largestEntry = qint64{1024} * 1024; // in bytes, of an entry that another program wrote

bool canRun(const QString& program)
{
    if (QDir::isAbsolutePath(program)) {
        const QFileInfo info(program);
        return info.isFile() && info.isExecutable();
    }
    return !program.isEmpty() && !QStandardPaths::findExecutable(program).isEmpty();
}

/// True if the entry is switched off, for everyone or for this desktop.
bool isSwitchedOff(const DesktopEntry& entry, const QStringList& desktops)
{
    const auto names = [&](const QStringList& list) {
        return std::any_of(desktops.begin(), desktops.end(),
                           [&](const QString& name) { return list.contains(name); });
    };
    if (entry.boolean(QStringLiteral("Hidden")).value_or(false) ||
        !entry.boolean(QStringLiteral("X-GNOME-Autostart-enabled")).value_or(true))
        return true;
    if (desktops.isEmpty())
        return false;
    const QStringList only = entry.list(QStringLiteral("OnlyShowIn"));
    return (!only.isEmpty() && !names(only)) || names(entry.list(QStringLiteral("NotShowIn")));
}

PlatformError failure(const QString& what, const std::error_code& code)
{
    const bool refused = code.value() == EACCES || code.value() == EPERM || code.value() == EROFS;
    return PlatformError(
        refused ? PlatformError::Kind::notPermitted : PlatformError::Kind::failed,
        QStringLiteral("%1 (%2).").arg(what, QString::fromLocal8Bit(::strerror(code.value()))));
}

} // namespace

AutostartLoginItem::AutostartLoginItem()
    : AutostartLoginItem(XdgDirectories::ofThisProcess(), ProgramBundle().path(), currentDesktops())
{
}

AutostartLoginItem::AutostartLoginItem(const XdgDirectories& directories, QString executable,
                                       QStringList desktops)
    : m_path(directories.config
                 ? *directories.config + QLatin1String("/autostart/net.lindenrow.orvane.desktop")
                 : QString()),
      m_executable(std::move(executable)),
      m_desktops(std::move(desktops))
{
}

QStringList AutostartLoginItem::currentDesktops()
{
    return qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':', Qt::SkipEmptyParts);
}

LoginItem::Status AutostartLoginItem::status() const
{
    const QFileInfo info(m_path);
    if (m_path.isEmpty() || (!info.exists() && !info.isSymLink()))
        return Status::notRegistered;
    QFile file(m_path);
    // Reading a pipe in its place would wait for a writer.
    if (!info.isFile() || !file.open(QIODevice::ReadOnly))
        return Status::notFound;
    const auto entry = DesktopEntry::parse(file.read(largestEntry));
    if (isSwitchedOff(entry, m_desktops))
        return Status::requiresApproval;
    const auto tryExec = entry.string(QStringLiteral("TryExec"));
    const auto exec = entry.string(QStringLiteral("Exec"));
    const bool starts = exec && canRun(DesktopEntry::programOf(*exec)) &&
                        (!tryExec || tryExec->isEmpty() || canRun(*tryExec));
    return starts ? Status::enabled : Status::notFound;
}

QByteArray AutostartLoginItem::entry(const QString& arguments) const
{
    const QString exec = DesktopEntry::escaped(DesktopEntry::quotedWord(m_executable)) + arguments;
    const QString text = QStringLiteral("[Desktop Entry]\n"
                                        "Type=Application\n"
                                        "Version=1.1\n"
                                        "Name=Orvane\n"
                                        "Comment=Small desktop utilities in the system tray\n"
                                        "Icon=net.lindenrow.orvane\n"
                                        "Exec=%1\n"
                                        "Terminal=false\n"
                                        "StartupNotify=false\n"
                                        "X-GNOME-Autostart-enabled=true\n")
                             .arg(exec);
    return text.toUtf8();
}

void AutostartLoginItem::throwIfHomeless() const
{
    if (m_path.isEmpty())
        throw PlatformError(
            PlatformError::Kind::unsupported,
            QStringLiteral("There is no home folder in which Orvane could be set to start at login. "
                           "Set HOME or XDG_CONFIG_HOME."));
}

void AutostartLoginItem::registerItem()
{
    throwIfHomeless();
    const std::scoped_lock lock(changes);
    write();
}

void AutostartLoginItem::write()
{
    const QString folder = QFileInfo(m_path).path();
    try {
        makeDirectory(folder);
        AtomicFile::removeLeftovers(m_path);
        AtomicFile::replace(m_path, entry(u' ' + startArgument()), AtomicFile::Readers::everyone);
    } catch (const std::system_error& error) {
        throw failure(
            QStringLiteral("Orvane can't be set to start at login: %1 can't be written").arg(m_path),
            error.code());
    }
}

void AutostartLoginItem::renew()
{
    const std::scoped_lock lock(changes);
    QFile file(m_path);
    if (!QFileInfo(m_path).isFile() || !file.open(QIODevice::ReadOnly))
        return;
    const QByteArray ofEarlierVersion = entry({});
    if (file.read(largestEntry) != ofEarlierVersion)
        return;
    try {
        write();
    } catch (const PlatformError&) {
        // The entry that is there starts the program too.
    }
}

void AutostartLoginItem::unregisterItem()
{
    throwIfHomeless();
    const std::scoped_lock lock(changes);
    if (::unlink(QFile::encodeName(m_path).constData()) == 0)
        synchronizeDirectoryOf(m_path);
    else if (errno != ENOENT)
        throw failure(QStringLiteral("Orvane will still start at login: %1 can't be removed").arg(m_path),
                      std::error_code(errno, std::generic_category()));
}

} // namespace orvane
