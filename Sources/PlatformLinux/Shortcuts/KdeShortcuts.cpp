#include "PlatformLinux/Shortcuts/KdeShortcuts.h"

#include <QFile>
#include <QStandardPaths>

#include <chrono>

namespace orvane {

namespace {

using namespace std::chrono_literals;

/// The daemon writes a new file and puts it in the old one's place.
constexpr auto changesGatheringTime = 200ms;

} // namespace

KdeShortcuts::KdeShortcuts(QString path) : m_path(std::move(path))
{
    m_changesEnd.setSingleShot(true);
    m_changesEnd.setInterval(changesGatheringTime);
    connect(&m_changesEnd, &QTimer::timeout, this, &KdeShortcuts::read);
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, &m_changesEnd, qOverload<>(&QTimer::start));
}

QString KdeShortcuts::standardPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QLatin1String("/kglobalshortcutsrc");
}

void KdeShortcuts::start(QDBusConnection*)
{
    read();
}

/// The file is local and some ten kilobytes long, so it is read here.
void KdeShortcuts::read()
{
    m_watcher.addPath(m_path); // a replaced file is no longer watched
    QFile file(m_path);
    if (file.open(QIODevice::ReadOnly))
        set(parseKdeShortcutsFile(QString::fromUtf8(file.readAll())));
}

} // namespace orvane
