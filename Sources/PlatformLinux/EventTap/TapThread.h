// The thread between the user's keyboards and the applications. It grabs the keyboards, waits for events of
// the X server and messages of the main thread, has a TapEventReader read keys and a KeyInjector lead them
// on, and lets everything go at the end. Made, used and ended by the main thread.
#pragma once

#include "Platform/LogSink.h"
#include "PlatformLinux/Common/EventSignal.h"
#include "PlatformLinux/EventTap/Guardian/TapGuardian.h"
#include "PlatformLinux/EventTap/KeyInjector.h"
#include "PlatformLinux/EventTap/TapEventReader.h"
#include "PlatformLinux/EventTap/TapMailbox.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include <sys/types.h>

namespace orvane {

class TapThread {
public:
    enum class Purpose {
        tap,     // grabs the keyboards
        posting, // only presses what is posted
    };
    enum class Ending {
        none,       // it runs
        failed,     // it couldn't begin; the log says why
        late,       // the X server didn't answer in time when it was to begin
        taken,      // another program has the keyboards at present
        timedOut,   // the main thread let an event wait for too long, or the whole program stood still
        serverLost, // the X server is gone
    };

    /// The time that the main thread waits for the thread's beginning, and for its end.
    static constexpr std::chrono::milliseconds longestWait{500};

    /// `commandKeys` is called on the thread. Returns when the keyboards are grabbed, or can't be: after some
    /// round trips, and in any case after half a second.
    TapThread(Purpose purpose, LogSink& log, FakedMotions& faked, std::function<CommandKeys()> commandKeys);
    ~TapThread();
    TapThread(const TapThread&) = delete;
    TapThread& operator=(const TapThread&) = delete;

    [[nodiscard]] Purpose purpose() const { return m_purpose; }
    /// The kernel's number of the thread, for as long as it runs.
    [[nodiscard]] pid_t number() const { return m_number.load(); }
    /// Returns why the thread has ended by itself; the mailbox rings then.
    [[nodiscard]] Ending ending() const { return m_ending.load(); }
    TapMailbox& mailbox() { return m_mailbox; }

    /// Events of other types pass without being shown.
    void setMask(EventMask mask) { m_mask.store(mask); }
    /// Presses this event after those before it. False when the thread has ended.
    [[nodiscard]] bool post(const Event& event);

    /// Lets everything go after pressing what was posted. Where the server doesn't answer for that long, the
    /// end of the connection frees the keyboards, and the guardian releases the keys. Returns in order the
    /// events of the mask that went on without being shown to the main thread.
    std::vector<Event> stop(std::chrono::milliseconds patience = longestWait);

private:
    void run(std::promise<void> begun, std::promise<void> ended);
    void finish(std::chrono::milliseconds patience);
    bool begin();
    void work();
    void wait();
    void end();
    void injectPosts();

    void log(LogLevel level, const std::string& sentence);
    void noticeLateness();
    void noticeLoss();
    void noticeStandstill();

    const Purpose m_purpose;
    LogSink& m_log;
    FakedMotions& m_faked;
    const std::function<CommandKeys()> m_commandKeys;
    const QByteArray m_guardianProgram;
    TapMailbox m_mailbox{
        [this](const Event& answer, EventTapDecision decision) { m_injector->inject(answer, decision); }};
    EventSignal m_wake;
    /// Raised when the main thread has waited for long enough: the thread's waits for the server end.
    EventSignal m_givesUp;
    std::atomic<EventMask> m_mask{0};
    std::atomic<bool> m_isStopping{false};
    std::atomic<Ending> m_ending{Ending::none};
    std::atomic<pid_t> m_number{0};

    std::mutex m_postsMutex;
    std::vector<Event> m_posts;
    bool m_takesPosts = true;

    // Used by the thread alone, except what an injection needs.
    std::vector<Event> m_postsAtHand;
    std::unique_ptr<InputConnection> m_connection;
    std::unique_ptr<KeyInjector> m_injector;
    std::unique_ptr<TapEventReader> m_reader;
    std::unique_ptr<TapGuardian> m_guardian;
    Ending m_reason = Ending::none;
    std::vector<Event> m_unseen;

    std::future<void> m_ended;
    std::thread m_thread;
};

} // namespace orvane
