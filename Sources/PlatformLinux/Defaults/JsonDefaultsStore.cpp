#include "PlatformLinux/Defaults/JsonDefaultsStore.h"

#include "PlatformLinux/Common/XdgDirectories.h"
#include "PlatformLinux/Defaults/DefaultsCoding.h"

#include <algorithm>
#include <system_error>

namespace orvane {

namespace {

using namespace std::chrono_literals;
using Outcome = DefaultsFile::Outcome;

// A turn takes a few milliseconds of disk time.
constexpr auto pauseForAnothersTurn = 5ms;

} // namespace

QString JsonDefaultsStore::standardPath()
{
    const auto config = XdgDirectories::ofThisProcess().config;
    return config ? QString(*config + QLatin1String("/orvane/defaults.json")) : QString();
}

JsonDefaultsStore::JsonDefaultsStore(const QString& path, LogSink& log, const Pace& pace)
    : m_log(log), m_pace(pace), m_file(path), m_pause(pace.firstRetry)
{
    if (path.isEmpty()) {
        logError(QStringLiteral("There is no home folder to keep the settings in: changes stay in memory. "
                                "Set HOME or XDG_CONFIG_HOME."));
        return;
    }
    const auto reading = m_file.read();
    const Lock lock(m_mutex);
    if (reading.content == DefaultsFile::Content::valid)
        adopt(reading.values);
    else if (reading.content != DefaultsFile::Content::missing)
        writeWithin(0ms); // the writer sets the file aside, or tries to read it until it can
}

JsonDefaultsStore::~JsonDefaultsStore()
{
    finish();
}

void JsonDefaultsStore::finish()
{
    {
        const Lock lock(m_mutex);
        m_isEnding = true;
        m_wake.notify_one();
    }
    if (m_writer.joinable())
        m_writer.join();
    if (m_due != Clock::time_point::max()) // no thread could be started
        runWriter();
}

void JsonDefaultsStore::registerDefaults(const QVariantMap& defaults)
{
    const Lock lock(m_mutex);
    m_registered.insert(defaults);
}

QVariant JsonDefaultsStore::object(const QString& key) const
{
    const Lock lock(m_mutex);
    const auto stored = m_stored.constFind(key);
    return stored != m_stored.cend() ? stored.value() : m_registered.value(key);
}

QVariantMap JsonDefaultsStore::dictionaryRepresentation() const
{
    const Lock lock(m_mutex);
    QVariantMap all = m_registered;
    all.insert(m_stored);
    return all;
}

void JsonDefaultsStore::set(const QString& key, const QVariant& value)
{
    const auto json = value.isValid() ? defaultscoding::toJson(value) : QJsonValue(QJsonValue::Undefined);
    if (!json) {
        logError(QStringLiteral("The value for \"%1\" isn't stored: it is of a type (%2), not finite, or "
                                "nested deeper than a defaults file can keep.")
                     .arg(key, QLatin1String(value.typeName())));
        return;
    }
    const Lock lock(m_mutex);
    if (value.isValid())
        m_stored.insert(key, value);
    else
        m_stored.remove(key);
    if (m_file.path().isEmpty())
        return;
    m_unsaved.insert(key, *json);
    writeWithin(m_pace.gathering);
}

/// To be called with the lock held.
void JsonDefaultsStore::writeWithin(std::chrono::milliseconds delay)
{
    const auto due = Clock::now() + delay;
    if (m_writerRuns && due >= m_due)
        return;
    m_due = std::min(m_due, due);
    if (m_writerRuns)
        m_wake.notify_one();
    else
        startWriter();
}

void JsonDefaultsStore::startWriter()
{
    if (m_writer.joinable())
        m_writer.join(); // the thread has nothing left to do but to end
    try {
        m_writerRuns = true;
        m_writer = std::thread([this] { runWriter(); });
    } catch (const std::system_error& error) {
        m_writerRuns = false;
        if (!std::exchange(m_failureIsLogged, true))
            logError(QStringLiteral("No thread can be started to write the settings: %1. They are written "
                                    "with the next change or when the program ends.")
                         .arg(QString::fromLocal8Bit(error.what())));
    }
}

void JsonDefaultsStore::runWriter()
{
    Lock lock(m_mutex);
    while (awaitWork(lock))
        planNext(writeOnce(lock), lock);
    m_writerRuns = false;
}

/// Returns true when it is time to write, false when the thread isn't needed any more.
bool JsonDefaultsStore::awaitWork(Lock& lock)
{
    const auto hasWork = [this] { return m_due != Clock::time_point::max(); };
    if (!m_wake.wait_for(lock, m_pace.lingering, [&] { return hasWork() || m_isEnding; }))
        return false;
    while (hasWork() && !m_isEnding && Clock::now() < m_due) {
        const auto due = m_due; // the time may change during the wait
        m_wake.wait_until(lock, due);
    }
    return hasWork();
}

/// Releases the lock while it uses the disk.
Outcome JsonDefaultsStore::writeOnce(Lock& lock)
{
    m_due = Clock::time_point::max();
    const DefaultsFile::Changes changes = m_unsaved;
    lock.unlock();
    const auto now = Clock::now();
    const bool isStuck = m_busySince < now - m_pace.patience;
    const auto turn = isStuck ? DefaultsFile::Turn::take : DefaultsFile::Turn::wait;
    const DefaultsFile::Result result = m_file.merge(changes, m_known, turn);
    report(result);
    m_busySince = result.outcome == Outcome::busy ? std::min(m_busySince, now) : Clock::time_point::max();
    lock.lock();
    if (result.outcome != Outcome::done)
        return result.outcome;
    adopt(result.values);
    for (auto it = changes.begin(); it != changes.end(); ++it) {
        const auto unsaved = m_unsaved.constFind(it.key());
        if (unsaved.value() == it.value())
            m_unsaved.erase(unsaved);
    }
    return result.outcome;
}

void JsonDefaultsStore::planNext(Outcome outcome, Lock& lock)
{
    switch (outcome) {
    case Outcome::done:
        m_pause = m_pace.firstRetry;
        return;
    case Outcome::busy:
        m_wake.wait_for(lock, pauseForAnothersTurn);
        m_due = Clock::now();
        return;
    case Outcome::failed:
        m_pause = std::min(m_pause, m_pace.rareRetry);
        break;
    case Outcome::refused:
        m_pause = m_pace.rareRetry;
        break;
    }
    if (m_isEnding) {
        m_due = Clock::time_point::max();
        return;
    }
    // A change that came meanwhile isn't delayed.
    m_due = std::min(m_due, Clock::now() + m_pause);
    m_pause *= 2;
}

/// Takes over the changes of other processes in the file. Values that were set here keep their types.
void JsonDefaultsStore::adopt(const QJsonObject& values)
{
    for (auto it = values.begin(); it != values.end(); ++it) {
        if (m_unsaved.contains(it.key()) || (m_known.contains(it.key()) && m_known[it.key()] == it.value()))
            continue;
        if (const QVariant value = defaultscoding::fromJson(it.value()); value.isValid())
            m_stored.insert(it.key(), value);
        else
            m_stored.remove(it.key());
    }
    for (auto it = m_known.constBegin(); it != m_known.constEnd(); ++it) {
        if (!values.contains(it.key()) && !m_unsaved.contains(it.key()))
            m_stored.remove(it.key());
    }
    m_known = values;
}

/// Writes one line to the log for all failures until a write succeeds.
void JsonDefaultsStore::report(const DefaultsFile::Result& result)
{
    const QString path = m_file.path();
    if (!result.setAsideAs.isEmpty())
        logError(QStringLiteral("%1 was not usable: %2. What was there is now %3. The settings in memory are "
                                "in force.")
                     .arg(path, result.problem, result.setAsideAs));
    if (result.outcome == Outcome::done)
        m_failureIsLogged = false;
    else if (result.outcome != Outcome::busy && !std::exchange(m_failureIsLogged, true))
        logError(QStringLiteral("The settings can't be kept in %1: %2. Changes stay in memory, and writing "
                                "is tried again. What can't be written until the program ends is lost.")
                     .arg(path, result.problem));
}

void JsonDefaultsStore::logError(const QString& message)
{
    m_log.write(LogLevel::error, QStringLiteral("net.lindenrow.orvane"), QStringLiteral("Defaults"), message);
}

} // namespace orvane
