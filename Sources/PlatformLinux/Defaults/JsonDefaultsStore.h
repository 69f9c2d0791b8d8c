// The defaults store in memory, with one JSON file behind it that several processes may share.
//
// The main thread reads the file once, at the start. After that a thread of the store's own, which exists
// while there is something to write, merges what changed into the file: within a tenth of a second after the
// first change, and at the store's end. What can't be written is kept in memory and tried again.
#pragma once

#include "Platform/DefaultsStore.h"
#include "Platform/LogSink.h"
#include "PlatformLinux/Defaults/DefaultsFile.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace orvane {

class JsonDefaultsStore : public DefaultsStore {
public:
    struct Pace {
        /// The time in which changes are gathered, after the first of them. With the time of a write it has
        /// to stay below a tenth of a second.
        std::chrono::milliseconds gathering{40};
        /// The pause after a failure that may pass. It doubles up to `rareRetry`.
        std::chrono::milliseconds firstRetry{250};
        /// The pause after a refusal, such as a read-only file.
        std::chrono::milliseconds rareRetry{60'000};
        /// The time for which another process's turn is respected; one that takes longer is stuck.
        std::chrono::milliseconds patience{1'000};
        /// The time after which the thread ends when nothing more has changed.
        std::chrono::milliseconds lingering{5'000};
    };

    /// Reads the file; a missing one is a first start and nothing is made until the first set. With an empty
    /// path all stays in memory.
    JsonDefaultsStore(const QString& path, LogSink& log) : JsonDefaultsStore(path, log, Pace()) {}
    JsonDefaultsStore(const QString& path, LogSink& log, const Pace& pace);
    /// Writes what is unsaved, and waits for that.
    ~JsonDefaultsStore() override;
    /// Does the same before the object's end. Each later change is written at once.
    void finish();
    JsonDefaultsStore(const JsonDefaultsStore&) = delete;
    JsonDefaultsStore& operator=(const JsonDefaultsStore&) = delete;

    /// "orvane/defaults.json" in the user's config home; empty when the user has no home.
    static QString standardPath();

    void registerDefaults(const QVariantMap& defaults) override;
    [[nodiscard]] QVariant object(const QString& key) const override;
    /// A value of a type that the file can't keep is logged and not stored.
    void set(const QString& key, const QVariant& value) override;
    [[nodiscard]] QVariantMap dictionaryRepresentation() const override;

private:
    using Clock = std::chrono::steady_clock;
    using Lock = std::unique_lock<std::mutex>;

    void writeWithin(std::chrono::milliseconds delay);
    void startWriter();
    void runWriter();
    bool awaitWork(Lock& lock);
    DefaultsFile::Outcome writeOnce(Lock& lock);
    void planNext(DefaultsFile::Outcome outcome, Lock& lock);
    void adopt(const QJsonObject& values);
    void report(const DefaultsFile::Result& result);
    void logError(const QString& message);

    LogSink& m_log;
    const Pace m_pace;

    // Used only by the writer while it runs.
    DefaultsFile m_file;
    QJsonObject m_known; // the file's values as last seen or written
    bool m_failureIsLogged = false;
    std::chrono::milliseconds m_pause;
    Clock::time_point m_busySince = Clock::time_point::max();

    mutable std::mutex m_mutex; // guards the following members; never held during access to the disk
    std::condition_variable m_wake;
    QVariantMap m_registered;
    QVariantMap m_stored;
    DefaultsFile::Changes m_unsaved;
    /// The time at which the writer has to begin; far in the future when there is nothing to do.
    Clock::time_point m_due = Clock::time_point::max();
    bool m_writerRuns = false;
    bool m_isEnding = false;

    std::thread m_writer;
};

} // namespace orvane
