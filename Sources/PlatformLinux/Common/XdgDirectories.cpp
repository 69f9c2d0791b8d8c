#include "PlatformLinux/Common/XdgDirectories.h"

#include <QDir>
#include <QFile>

#include <vector>

#include <pwd.h>
#include <unistd.h>

namespace orvane {

namespace {

std::optional<QString> absolutePath(const QString& path)
{
    if (!QDir::isAbsolutePath(path) || path.startsWith(u':'))
        return std::nullopt;
    return QDir::cleanPath(path);
}

QString homeOfAccount()
{
    constexpr std::size_t bufferSize = 16384;
    std::vector<char> buffer(bufferSize);
    passwd entry = {};
    passwd* found = nullptr;
    if (::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || !found)
        return {};
    return QFile::decodeName(entry.pw_dir);
}

} // namespace

XdgDirectories XdgDirectories::from(const QProcessEnvironment& environment, const QString& accountHome)
{
    auto home = absolutePath(environment.value(QStringLiteral("HOME")));
    if (!home)
        home = absolutePath(accountHome);
    const auto directory = [&](const QString& variable, QLatin1String below) -> std::optional<QString> {
        if (auto named = absolutePath(environment.value(variable)))
            return named;
        if (!home)
            return std::nullopt;
        return QDir::cleanPath(QString(*home + u'/' + below));
    };
    return {directory(QStringLiteral("XDG_CONFIG_HOME"), QLatin1String(".config")),
            directory(QStringLiteral("XDG_DATA_HOME"), QLatin1String(".local/share")),
            directory(QStringLiteral("XDG_CACHE_HOME"), QLatin1String(".cache"))};
}

XdgDirectories XdgDirectories::ofThisProcess()
{
    const QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    // The user database may be on the network, so it is asked only when the environment names no home.
    const bool hasHome = absolutePath(environment.value(QStringLiteral("HOME"))).has_value();
    return from(environment, hasHome ? QString() : homeOfAccount());
}

} // namespace orvane
