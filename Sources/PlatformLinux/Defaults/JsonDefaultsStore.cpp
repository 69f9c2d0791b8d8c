#include "PlatformLinux/Defaults/JsonDefaultsStore.h"

#include "PlatformLinux/Common/AtomicFile.h"
#include "PlatformLinux/Common/FileLock.h"
#include "PlatformLinux/Common/XdgDirectories.h"
#include "PlatformLinux/Defaults/DefaultsCodec.h"

#include <QFileInfo>

#include <algorithm>
#include <mutex>
#include <system_error>

namespace orvane {

namespace {

using namespace std::chrono_literals;

// A turn takes a few milliseconds of disk time. Who holds the lock for longer is stuck, and is waited for
// by the timer only.
constexpr auto patienceOfSet = 20ms;
constexpr auto patienceOfStart = 200ms;
constexpr auto firstRetryInterval = 50ms;
constexpr auto longestRetryInterval = 10s;

void apply(const QVariantMap& changes, QVariantMap& values)
{
    for (auto it = changes.begin(); it != changes.end(); ++it) {
        if (it.value().isValid())
            values.insert(it.key(), it.value());
        else
            values.remove(it.key());
    }
}

} // namespace

JsonDefaultsStore::JsonDefaultsStore(const QString& path, LogSink& log, RunLoop& runLoop)
    : m_log(log), m_runLoop(runLoop), m_file(path), m_journal(path), m_retryInterval(firstRetryInterval)
{
    if (!path.isEmpty()) {
        load();
        return;
    }
    m_place = Place::memoryOnly;
    this->log(LogLevel::error,
              QStringLiteral("There is no home folder to keep the settings in: changes stay in "
                             "memory. Set HOME or XDG_CONFIG_HOME."));
}

QString JsonDefaultsStore::standardPath()
{
    const auto config = XdgDirectories::ofThisProcess().config;
    return config ? QString(*config + QLatin1String("/orvane/defaults.json")) : QString();
}

JsonDefaultsStore::~JsonDefaultsStore()
{
    m_retry.reset();
    writePending();
}

void JsonDefaultsStore::load()
{
    auto reading = m_file.read();
    if (reading.content == DefaultsFile::Content::unreadable) {
        // Another process may be setting it aside just now: what counts is what is there under the lock.
        const QString consequence = QStringLiteral("Starting with the default settings.");
        try {
            if (const auto lock = takeLock(patienceOfStart)) {
                reading = m_file.read();
                if (reading.content == DefaultsFile::Content::unreadable)
                    setAside(reading.problem, consequence);
            } else {
                log(LogLevel::error,
                    QStringLiteral(
                        "%1 is not usable: %2. It stays there until another process that holds its lock "
                        "lets go. %3")
                        .arg(m_file.path(), reading.problem, consequence));
            }
        } catch (const std::system_error&) {
            setAside(reading.problem,
                     consequence); // no lock file can be made, so no name can be changed either
        }
    }
    m_onDisk = reading.values;
    try {
        AtomicFile::removeLeftovers(m_file.path());
        const QString target = AtomicFile::resolved(m_file.path());
        if (target != m_file.path())
            AtomicFile::removeLeftovers(target);
    } catch (const std::system_error&) {
        // A loop of links, which was set aside.
    }
    if (m_place == Place::file)
        m_pending = m_journal.adopt();
    publish();
    writePending();
}

void JsonDefaultsStore::registerDefaults(const QVariantMap& defaults)
{
    const std::unique_lock guard(m_mutex);
    for (auto it = defaults.begin(); it != defaults.end(); ++it)
        m_registered.insert(it.key(), defaultscodec::storable(it.value()).value_or(it.value()));
}

QVariant JsonDefaultsStore::object(const QString& key) const
{
    const std::shared_lock guard(m_mutex);
    const auto stored = m_stored.constFind(key);
    return stored != m_stored.cend() ? stored.value() : m_registered.value(key);
}

QVariantMap JsonDefaultsStore::dictionaryRepresentation() const
{
    const std::shared_lock guard(m_mutex);
    QVariantMap all = m_registered;
    all.insert(m_stored);
    return all;
}

void JsonDefaultsStore::set(const QString& key, const QVariant& value)
{
    const auto kept = defaultscodec::storable(value);
    if (!kept) {
        log(LogLevel::error,
            QStringLiteral("The value for \"%1\" isn't stored: it is of a type (%2), or nested deeper, "
                           "than a defaults file can keep.")
                .arg(key, QLatin1String(value.typeName())));
        return;
    }
    // Another process's value is what this one is compared with.
    bool isSettled = m_place == Place::file && !m_pending.contains(key);
    if (isSettled && m_file.hasChanged()) {
        const auto reading = m_file.read();
        isSettled = reading.content == DefaultsFile::Content::readable;
        if (isSettled) {
            m_onDisk = reading.values;
            publish();
        }
    }
    if (isSettled && defaultscodec::identical(*kept, m_onDisk.value(key)))
        return writePending(); // what else waits
    m_pending.insert(key, *kept);
    publish();
    writePending();
}

/// Makes what is in force visible to the readers.
void JsonDefaultsStore::publish()
{
    QVariantMap values = m_onDisk;
    apply(m_pending, values);
    const std::unique_lock guard(m_mutex);
    m_stored.swap(values);
}

void JsonDefaultsStore::writePending()
{
    if (m_pending.isEmpty() || m_place == Place::memoryOnly)
        return;
    try {
        const auto lock = takeLock(m_lockIsStuck ? 0ms : patienceOfSet);
        if (lock) {
            m_lockIsStuck = false;
            writePendingLocked();
        } else {
            m_lockIsStuck = true;
            keepPending(QStringLiteral("another process holds its lock"));
            retryLater();
        }
    } catch (const std::system_error& error) {
        keepPending(QString::fromLocal8Bit(error.what()));
    }
}

std::optional<FileLock> JsonDefaultsStore::takeLock(std::chrono::milliseconds patience) const
{
    makeDirectory(QFileInfo(m_file.path()).path());
    return FileLock::acquire(m_file.path() + QStringLiteral(".lock"), patience);
}

void JsonDefaultsStore::writePendingLocked()
{
    if (m_file.hasChanged() && mergeChanges() == FileState::unusable)
        return;
    QVariantMap merged = m_onDisk;
    apply(m_pending, merged);
    m_file.write(merged);
    m_onDisk = std::move(merged);
    pendingIsWritten();
}

/// Takes over what others wrote. A file that vanished is written anew with all that was in it: a removed
/// setting is a removed key, not a removed file.
JsonDefaultsStore::FileState JsonDefaultsStore::mergeChanges()
{
    const auto reading = m_file.read();
    switch (reading.content) {
    case DefaultsFile::Content::missing:
        return FileState::usable;
    case DefaultsFile::Content::readable:
        m_onDisk = reading.values;
        publish();
        return FileState::usable;
    case DefaultsFile::Content::unreadable:
        break;
    }
    return setAside(reading.problem, QStringLiteral("Going on with the settings that were read before."));
}

JsonDefaultsStore::FileState JsonDefaultsStore::setAside(const QString& problem, const QString& consequence)
{
    const QString wrong = QStringLiteral("%1 is not usable: %2. ").arg(m_file.path(), problem);
    if (const auto place = m_file.setAside()) {
        log(LogLevel::error,
            QString(wrong + QStringLiteral("What was there is now %1. ").arg(*place) + consequence));
        return FileState::usable;
    }
    // Writing would destroy what can't be moved out of the way.
    m_place = Place::memoryOnly;
    log(LogLevel::error,
        QString(wrong +
                QStringLiteral("It can't be renamed either, so it stays as it is, and changes "
                               "are kept in memory only until it is repaired or moved "
                               "and the program is started again. ") +
                consequence));
    return FileState::unusable;
}

/// One line in the log for all failures until a write succeeds.
void JsonDefaultsStore::keepPending(const QString& reason)
{
    QString where = QStringLiteral("beside it in a file whose name has \".pending-\"");
    try {
        m_journal.save(m_pending);
    } catch (const std::system_error&) {
        where = QStringLiteral("in memory");
    }
    if (!std::exchange(m_failureIsLogged, true))
        log(LogLevel::error,
            QStringLiteral("%1 can't be written: %2. Changes are kept %3 and are written with the "
                           "next one that succeeds.")
                .arg(m_file.path(), reason, where));
}

void JsonDefaultsStore::pendingIsWritten()
{
    m_pending.clear();
    m_journal.clear();
    m_failureIsLogged = false;
    m_retry.reset();
    m_retryInterval = firstRetryInterval;
}

void JsonDefaultsStore::retryLater()
{
    if (m_retry)
        return;
    m_retry = m_runLoop.scheduleTimer(m_retryInterval, RunLoop::Repeats::no, [this] {
        JsonDefaultsStore& self = *this; // the capture may go with the timer
        self.m_retry.reset();
        self.writePending();
    });
    m_retryInterval = std::min<std::chrono::milliseconds>(m_retryInterval * 2, longestRetryInterval);
}

void JsonDefaultsStore::log(LogLevel level, const QString& message)
{
    m_log.write(level, QStringLiteral("net.lindenrow.orvane"), QStringLiteral("Defaults"), message);
}

} // namespace orvane
