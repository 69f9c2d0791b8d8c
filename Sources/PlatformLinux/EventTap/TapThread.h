// The thread between the user's keyboards and the applications: takes the keys, has the main thread look at
// each, and presses on the XTEST keyboard what comes out. Everything of the X server's is used on this thread
// alone. Made, used and ended by the main thread.
#pragma once

#include "Platform/LogSink.h"
#include "PlatformLinux/EventTap/EventSignal.h"
#include "PlatformLinux/EventTap/GrabbedKeyboards.h"
#include "PlatformLinux/EventTap/GuardianLink.h"
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
        timedOut,   // the main thread let an event wait for too long
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
    void handleHierarchy(const xcb_input_hierarchy_event_t& event);
    void handleKeyboardSettings(std::uint8_t kind);
    void handlePosts();
    void postNow(const Event& event);
    void watchGuardian(short happened);
    void startGuardian();

    void perform(const KeyActions& actions);
    void performOnHardware(const KeyAction& action);
    void log(LogLevel level, const std::string& sentence);
    void giveUp(Ending ending);

    const Purpose m_purpose;
    LogSink& m_log;
    const std::function<CommandKeys()> m_commandKeys;
    const QByteArray m_guardianProgram;
    TapMailbox m_mailbox;
    EventSignal m_wake;
    std::atomic<EventMask> m_mask{0};
    std::atomic<bool> m_isStopping{false};
    std::atomic<Ending> m_ending{Ending::none};

    std::mutex m_postsMutex;
    std::vector<Event> m_posts;
    bool m_takesPosts = true;

    // Of the thread alone.
    std::vector<Event> m_postsAtHand;
    std::unique_ptr<InputConnection> m_connection;
    std::unique_ptr<GrabbedKeyboards> m_keyboards;
    std::unique_ptr<GuardianLink> m_guardian;
    xcb_window_t m_window = 0;
    InjectorModel m_model;
    bool m_asksMain = true;
    bool m_guardianWasReplaced = false;
    Ending m_reason = Ending::none;
    struct Lifted {
        DeviceId device;
        std::uint8_t key;
    };
    std::vector<Lifted> m_lifted;

    std::thread m_thread;
};

} // namespace orvane
