#include "PlatformLinux/Files/ProgramBundle.h"

#include <QByteArray>
#include <QFile>

#include <climits>

#include <sys/stat.h>
#include <unistd.h>

namespace orvane {

ProgramBundle::ProgramBundle() : m_path(executablePath(QStringLiteral("/proc/self/exe"))) {}

std::optional<QString> ProgramBundle::identifier() const
{
    return QStringLiteral("net.lindenrow.orvane");
}

QVariant ProgramBundle::infoValue(const QString& key) const
{
    if (key == QLatin1String("CFBundleShortVersionString"))
        return QStringLiteral(ORVANE_VERSION);
    if (key == QLatin1String("CFBundleIdentifier"))
        return QStringLiteral("net.lindenrow.orvane");
    return {};
}

QString ProgramBundle::path() const
{
    return m_path;
}

QString ProgramBundle::executablePath(const QString& link)
{
    char buffer[PATH_MAX];
    const ssize_t length = ::readlink(QFile::encodeName(link).constData(), buffer, sizeof buffer);
    if (length <= 0)
        return {};
    QByteArray path(buffer, static_cast<qsizetype>(length));
    // The kernel appends this to the name of a file that was deleted; a file may have such a name too.
    constexpr QByteArrayView deletedMark(" (deleted)");
    struct stat status = {};
    if (path.endsWith(deletedMark) && ::lstat(path.constData(), &status) != 0)
        path.chop(deletedMark.size());
    return QFile::decodeName(path);
}

} // namespace orvane
