#include "Desktop/Support/WaylandDesktop.h"

#include "Support/Eventually.h"

#include <QFile>
#include <QStringList>

#include <stdexcept>

#include <pwd.h>
#include <unistd.h>

namespace orvane::tests {

namespace {

/// sway refuses to run as root, so a test that runs as root lends it another user.
const char* const swaysUser = "nobody";

void writeConfiguration(const QString& path, const QString& namesFile)
{
    QFile file(path);
    if (!file.open(QFile::WriteOnly))
        throw std::runtime_error("sway's configuration can't be written");
    // The file of names appears whole, once the X server lets this user in.
    file.write(QStringLiteral("xwayland force\n"
                              "exec xhost +si:localuser:$(id -un %1) && "
                              "echo \"$WAYLAND_DISPLAY $DISPLAY\" >%2.new && mv %2.new %2\n")
                   .arg(::getuid())
                   .arg(namesFile)
                   .toUtf8());
}

} // namespace

WaylandDesktop::WaylandDesktop()
{
    const QString configuration = m_directory.filePath(QStringLiteral("sway"));
    writeConfiguration(configuration, namesFile());
    QStringList command{QStringLiteral("sway"), QStringLiteral("-c"), configuration};
    if (::getuid() == 0) {
        const passwd* user = ::getpwnam(swaysUser);
        if (!user ||
            ::chown(QFile::encodeName(m_directory.path()).constData(), user->pw_uid, user->pw_gid) != 0)
            throw std::runtime_error("There is no user that sway can run as");
        command =
            QStringList{QStringLiteral("setpriv"), QStringLiteral("--reuid=%1").arg(user->pw_uid),
                        QStringLiteral("--regid=%1").arg(user->pw_gid), QStringLiteral("--clear-groups")} +
            command;
    }
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "XAUTHORITY", "DBUS_SESSION_BUS_ADDRESS"})
        environment.remove(QString::fromLatin1(name));
    environment.insert(QStringLiteral("HOME"), m_directory.path());
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_directory.path());
    environment.insert(QStringLiteral("WLR_BACKENDS"), QStringLiteral("headless"));
    environment.insert(QStringLiteral("WLR_LIBINPUT_NO_DEVICES"), QStringLiteral("1"));
    environment.insert(QStringLiteral("WLR_RENDERER"), QStringLiteral("pixman"));
    m_sway.setProcessEnvironment(environment);
    m_sway.setStandardErrorFile(QProcess::nullDevice());
    m_sway.start(command.takeFirst(), command);
}

WaylandDesktop::~WaylandDesktop()
{
    m_sway.terminate();
    if (!m_sway.waitForFinished(10'000)) {
        m_sway.kill();
        m_sway.waitForFinished();
    }
}

bool WaylandDesktop::isReady()
{
    if (!eventually(30s, [this] { return QFile::exists(namesFile()); }))
        return false;
    QFile file(namesFile());
    if (!file.open(QFile::ReadOnly))
        return false;
    const QStringList names = QString::fromUtf8(file.readAll()).simplified().split(u' ');
    if (names.size() != 2)
        return false;
    m_waylandDisplay = names[0];
    m_display = names[1];
    return true;
}

QMap<QString, QString> WaylandDesktop::environment() const
{
    return {{QStringLiteral("DISPLAY"), m_display},
            {QStringLiteral("WAYLAND_DISPLAY"), m_directory.filePath(m_waylandDisplay)},
            {QStringLiteral("XAUTHORITY"), QString()},
            {QStringLiteral("XDG_CURRENT_DESKTOP"), QStringLiteral("sway")},
            {QStringLiteral("XDG_SESSION_TYPE"), QStringLiteral("wayland")}};
}

} // namespace orvane::tests
