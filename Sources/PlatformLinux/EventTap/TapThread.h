// The thread between the user's keyboards and the applications: takes the keys, has the main thread look at
// each, and has pressed on the XTEST keyboard what comes out: by the main thread itself, through the mailbox,
// while this one waits. Everything else of the X server's is used on this thread alone. Made, used and ended
// by the main thread.
#pragma once

#include "Platform/LogSink.h"
#include "PlatformLinux/Common/EventSignal.h"
#include "PlatformLinux/EventTap/GrabbedKeyboards.h"
#include "PlatformLinux/EventTap/LiftedKeys.h"
#include "PlatformLinux/EventTap/TapGuardian.h"
#include "PlatformLinux/EventTap/TapMailbox.h"

#include <atomic>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

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
        timedOut,   // the main thread let an event wait for too long, or the whole program stood still
        serverLost, // the X server is gone
    };

    /// `commandKeys` is asked on the thread. Returns when the keyboards are grabbed, or can't be: after some
    /// round trips.
    TapThread(Purpose purpose, LogSink& log, std::function<CommandKeys()> commandKeys);
    /// Lets everything go, after what was posted.
    ~TapThread();
    TapThread(const TapThread&) = delete;
    TapThread& operator=(const TapThread&) = delete;

    Purpose purpose() const { return m_purpose; }
    /// Why it has ended by itself. Then the mailbox rings.
    Ending ending() const { return m_ending.load(); }
    TapMailbox& mailbox() { return m_mailbox; }

    /// Events of other types pass without a look.
    void setMask(EventMask mask) { m_mask.store(mask); }
    /// Presses this after what came before it. False when the thread has ended.
    bool post(const Event& event);

private:
    void run(std::promise<void> begun);
    bool begin();
    bool grabKeyboards();
    void watchKeyboardSettings();
    void work();
    void wait();
    void end();

    void watchButtons();
    bool handleNextEvent();
    void handleKey(const xcb_input_key_press_event_t& event);
    void handleKey(HardwareKey key);
    /// Until the key that the main thread was shown is delivered: before whatever else uses the model.
    void settle();
    void deliver(const std::optional<Event>& answer);
    void followCapsLock();
    void handleHierarchy(const xcb_input_hierarchy_event_t& event);
    void handleKeyboardSettings(std::uint8_t kind);
    void handlePosts();
    void postNow(const Event& event);

    void perform(const KeyActions& actions);
    void log(LogLevel level, const std::string& sentence);
    void giveUp(Ending ending);
    void noticeLoss();
    void timeOut();

    const Purpose m_purpose;
    LogSink& m_log;
    const std::function<CommandKeys()> m_commandKeys;
    const QByteArray m_guardianProgram;
    TapMailbox m_mailbox{[this](const std::optional<Event>& answer) { deliver(answer); }};
    EventSignal m_wake;
    std::atomic<EventMask> m_mask{0};
    std::atomic<bool> m_isStopping{false};
    std::atomic<Ending> m_ending{Ending::none};

    std::mutex m_postsMutex;
    std::vector<Event> m_posts;
    bool m_takesPosts = true;

    // Of the thread alone, but for what delivery needs.
    std::vector<Event> m_postsAtHand;
    std::unique_ptr<InputConnection> m_connection;
    std::unique_ptr<GrabbedKeyboards> m_keyboards;
    std::unique_ptr<TapGuardian> m_guardian;
    InjectorModel m_model;
    /// The key that is on its way, and whether the main thread was asked.
    struct Passing {
        HardwareKey key;
        Event event;
    };
    Passing m_passing;
    bool m_isUnsettled = false;
    bool m_asksMain = true;
    Ending m_reason = Ending::none;
    std::unique_ptr<LiftedKeys> m_lifted;

    std::thread m_thread;
};

} // namespace orvane
