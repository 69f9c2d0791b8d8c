#include "Support/PrivateHome.h"

#include <QDir>
#include <QFile>

namespace orvane::tests {

namespace {

struct BaseDirectory {
    const char* variable;
    QLatin1String place;
};

constexpr BaseDirectory baseDirectories[] = {
    {"XDG_CONFIG_HOME", QLatin1String("/.config")},
    {"XDG_DATA_HOME", QLatin1String("/.local/share")},
    {"XDG_STATE_HOME", QLatin1String("/.local/state")},
    {"XDG_CACHE_HOME", QLatin1String("/.cache")},
};

} // namespace

PrivateHome::PrivateHome()
{
    for (const BaseDirectory& directory : baseDirectories) {
        if (!QDir().mkpath(path() + directory.place))
            qFatal("No private home can be made under %s", qPrintable(QDir::tempPath()));
    }
}

QString PrivateHome::path() const
{
    return m_directory.path();
}

QString PrivateHome::configDirectory() const
{
    return path() + QLatin1String("/.config");
}

QString PrivateHome::dataDirectory() const
{
    return path() + QLatin1String("/.local/share");
}

void PrivateHome::applyTo(QProcessEnvironment& environment) const
{
    environment.insert(QStringLiteral("HOME"), path());
    for (const BaseDirectory& directory : baseDirectories)
        environment.insert(QString::fromLatin1(directory.variable), path() + directory.place);
}

void PrivateHome::applyToThisProcess() const
{
    qputenv("HOME", QFile::encodeName(path()));
    for (const BaseDirectory& directory : baseDirectories)
        qputenv(directory.variable, QFile::encodeName(path() + directory.place));

    const QString runtime = path() + QLatin1String("/runtime");
    QDir().mkpath(runtime);
    QFile::setPermissions(runtime, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime));
}

} // namespace orvane::tests
