// The defaults store in one JSON file that several processes may share.
//
// A set is on the disk when it returns: in the file, or, when a stuck process holds the lock or the file may
// not be written, in a journal beside it (DefaultsJournal) that is merged as soon as that is possible again,
// by this process or the next one. Only if that fails too is the change in memory alone.
#pragma once

#include "Platform/DefaultsStore.h"
#include "Platform/LogSink.h"
#include "Platform/RunLoop.h"
#include "PlatformLinux/Defaults/DefaultsFile.h"
#include "PlatformLinux/Defaults/DefaultsJournal.h"

#include <chrono>
#include <memory>
#include <optional>
#include <shared_mutex>

namespace orvane {

class FileLock;

class JsonDefaultsStore : public DefaultsStore {
public:
    /// Reads the file; a missing one is a first start and nothing is made until the first set. An unreadable
    /// one is renamed and logged; with an empty path all stays in memory. `runLoop` is used for a timer while
    /// another process keeps the lock.
    JsonDefaultsStore(const QString& path, LogSink& log, RunLoop& runLoop);
    /// Tries once more to write what is pending.
    ~JsonDefaultsStore() override;
    JsonDefaultsStore(const JsonDefaultsStore&) = delete;
    JsonDefaultsStore& operator=(const JsonDefaultsStore&) = delete;

    /// "orvane/defaults.json" in the user's config home; empty when the user has no home.
    static QString standardPath();

    void registerDefaults(const QVariantMap& defaults) override;
    QVariant object(const QString& key) const override;
    /// A value of a type that the file can't keep is logged and not stored. Waits for another process's
    /// turn to end, but never longer than 20 ms.
    void set(const QString& key, const QVariant& value) override;
    QVariantMap dictionaryRepresentation() const override;

private:
    enum class Place { file, memoryOnly };
    enum class FileState { usable, unusable };

    void load();
    void writePending();
    void writePendingLocked();
    FileState mergeChanges();
    FileState setAside(const QString& problem, const QString& consequence);
    void keepPending(const QString& reason);
    void pendingIsWritten();
    void retryLater();
    void publish();
    std::optional<FileLock> takeLock(std::chrono::milliseconds patience) const;
    void log(LogLevel level, const QString& message);

    LogSink& m_log;
    RunLoop& m_runLoop;
    DefaultsFile m_file;
    DefaultsJournal m_journal;
    Place m_place = Place::file;
    QVariantMap m_onDisk;  // the file's values as last seen or written
    QVariantMap m_pending; // changes that aren't in the file yet; invalid is a removal
    bool m_failureIsLogged = false;
    bool m_lockIsStuck = false;
    std::chrono::milliseconds m_retryInterval;
    std::unique_ptr<Timer> m_retry; // only while a lock is waited for

    mutable std::shared_mutex m_mutex; // guards the two below; the rest is the main thread's
    QVariantMap m_stored;              // m_onDisk under m_pending
    QVariantMap m_registered;
};

} // namespace orvane
