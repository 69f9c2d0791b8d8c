// Where the events of taps come from: a thread that has grabbed the keyboards while somebody may change
// events, a listener while taps only listen, and else nothing. Changes from one to the other without losing a
// key or telling of one twice. Also presses what is posted. Main thread.
#pragma once

#include "Platform/EventTaps.h"
#include "Platform/LogSink.h"
#include "PlatformLinux/Applications/CommandConvention.h"
#include "PlatformLinux/EventTap/FakedMotions.h"
#include "PlatformLinux/EventTap/RepeatedLog.h"
#include "PlatformLinux/EventTap/ShortTurns.h"
#include "PlatformLinux/EventTap/TapThread.h"

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace orvane {

class KeyListener;

class TapSource {
public:
    enum class Need { nothing, listening, filtering };
    struct Handlers {
        /// A key that waits for the decision.
        std::function<EventTapDecision(Event&)> decide;
        /// A key that has gone its way already.
        std::function<void(const Event&)> hear;
        /// Whoever was served by the thread, or by the listener, is served no more until need() is said anew.
        std::function<void(TapThread::Ending)> threadEnded;
        std::function<void()> listenerEnded;
    };

    TapSource(LogSink& log, std::function<CommandKeys()> commandKeys, Handlers handlers);
    ~TapSource();
    TapSource(const TapSource&) = delete;
    TapSource& operator=(const TapSource&) = delete;

    /// What the taps in place want from now on. False when it can't be had; the log says why.
    [[nodiscard]] bool setNeed(Need need, EventMask mask);
    /// Whether it could be had. If nobody needs it, it ends with this turn of the event loop.
    [[nodiscard]] bool canHave(Need need);
    /// Calls threadEnded() when the thread has ended and it wasn't told yet.
    void noticeEnding();

    /// Presses a key; it passes no tap.
    void press(const Event& event);

private:
    struct NotifierDeleter {
        void operator()(QSocketNotifier* notifier) const;
    };

    bool have(Need need);
    [[nodiscard]] bool isTapping() const
    {
        return m_thread && m_thread->purpose() == TapThread::Purpose::tap;
    }
    bool startThread(TapThread::Purpose purpose);
    void stopThread();
    bool startListener();
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
    /// The keyboards are grabbed, and what the listener heard before isn't told yet.
    bool m_listenerIsEnding = false;
    /// What the thread took when nobody could be asked any more; to be heard before anything else is.
    std::vector<Event> m_unseen;
    /// Each key waits for this thread.
    std::optional<ShortTurns> m_shortTurns;
    QTimer m_postingEnd;
    bool m_willTidy = false;
    /// The context of queued calls.
    QObject m_context;
};

} // namespace orvane
