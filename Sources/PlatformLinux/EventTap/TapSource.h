// The source of the taps' events: a thread that has grabbed the keyboards while some tap may change events, a
// listener while taps only listen, and otherwise nothing. Changes between them without losing a key or
// reporting one twice. Also presses what is posted. Main thread.
#pragma once

#include "Platform/EventTaps.h"
#include "Platform/LogSink.h"
#include "PlatformLinux/Applications/CommandConvention.h"
#include "PlatformLinux/EventTap/FakedMotions.h"
#include "PlatformLinux/EventTap/GrabPause.h"
#include "PlatformLinux/EventTap/RepeatedLog.h"
#include "PlatformLinux/EventTap/ShortTurns.h"
#include "PlatformLinux/EventTap/TapThread.h"

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace orvane {

class KeyListener;

class TapSource {
public:
    enum class Need { nothing, listening, filtering };
    enum class Result {
        there,
        late,    // the X server doesn't answer, or others have the keyboards; a later attempt may succeed
        refused, // the log says why
    };
    struct Handlers {
        /// Called for a key that waits for the decision.
        std::function<EventTapDecision(Event&)> decide;
        /// Called for a key that has been delivered already.
        std::function<void(const Event&)> hear;
        /// Called when the thread, or the listener, has ended: its taps get nothing more until setNeed() is
        /// called again.
        std::function<void(TapThread::Ending)> threadEnded;
        std::function<void()> listenerEnded;
        /// Called when each key begins to wait for the thread of this number and for the main thread, and
        /// when that ends.
        std::function<void(pid_t thread)> keysWait;
        std::function<void()> keysPass;
    };

    TapSource(LogSink& log, std::function<CommandKeys()> commandKeys, Handlers handlers);
    ~TapSource();
    TapSource(const TapSource&) = delete;
    TapSource& operator=(const TapSource&) = delete;

    /// Sets what the taps in place want from now on, and returns if that is there. May wait for the X server
    /// for half a second, and after a late answer not again for a second. While another program has the
    /// keyboards it tries to get them in pauses that grow from a second to a minute.
    [[nodiscard]] Result setNeed(Need need, EventMask mask);
    /// Tries if it could be had, as setNeed() does. If nothing needs it, it ends with this turn of the event
    /// loop.
    [[nodiscard]] Result tryNeed(Need need);
    /// Calls threadEnded() if the thread has ended and that wasn't reported yet.
    void noticeEnding();

    /// Presses a key; it passes no tap.
    void press(const Event& event);

private:
    struct NotifierDeleter {
        void operator()(QSocketNotifier* notifier) const;
    };

    Result have(Need need);
    [[nodiscard]] bool isTapping() const
    {
        return m_thread && m_thread->purpose() == TapThread::Purpose::tap;
    }
    Result startThread(TapThread::Purpose purpose);
    void stopThread(std::chrono::milliseconds patience = TapThread::longestWait);
    Result startListener();
    [[nodiscard]] bool isTooSoon() const;
    Result noteLate();
    void finishListener();
    void tidySoon();
    void tidy();
    void answerNext();
    void hear(const Event& event);
    void tellUnseen();

    RepeatedLog m_log;
    const std::function<CommandKeys()> m_commandKeys;
    const Handlers m_handlers;
    Need m_need = Need::nothing;
    EventMask m_mask = 0;
    FakedMotions m_faked;
    std::unique_ptr<TapThread> m_thread;
    std::unique_ptr<QSocketNotifier, NotifierDeleter> m_notifier;
    std::shared_ptr<KeyListener> m_listener;
    /// True while the keyboards are grabbed and what the listener heard before isn't reported yet.
    bool m_listenerIsEnding = false;
    /// The events that the thread took when it couldn't ask any more; to be reported before anything else.
    std::vector<Event> m_unseen;
    /// Each key waits for the main thread.
    std::optional<ShortTurns> m_shortTurns;
    QTimer m_postingEnd;
    bool m_willTidy = false;
    /// Until then the server isn't asked again for a connection.
    Deadline m_nextAttempt;
    GrabPause m_grabPause;
    /// The context of queued calls.
    QObject m_context;
};

} // namespace orvane
