// Event taps on X11. While an enabled tap is attached, a thread of its own has the keyboards (TapThread);
// else there is no thread, no connection and no grab. Keys only: mouse events have no tap yet. Main thread.
#pragma once

#include "Platform/EventTaps.h"
#include "Platform/LogSink.h"
#include "PlatformLinux/Applications/CommandConvention.h"
#include "PlatformLinux/EventTap/RepeatedLog.h"

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace orvane {

class TapThread;
class XInputEventTap;

class XInputEventTaps : public EventTaps {
public:
    /// `commandKeys` says what `command` means in the application that gets the keys; it is called on another
    /// thread, for each key, and must not block.
    XInputEventTaps(LogSink& log, std::function<CommandKeys()> commandKeys);

    /// Called before a posted key is pressed, with the modifiers that it is pressed with there, as hot keys
    /// have them.
    std::function<void(std::uint32_t keyCode, std::uint32_t modifiers)> onPost = [](auto, auto) {};

    ~XInputEventTaps() override;

    std::unique_ptr<EventTap> tapCreate(Location location, Placement placement, Options options,
                                        EventMask eventsOfInterest, EventTapCallback callback,
                                        void* userInfo) override;
    void post(Location location, const Event& event) override;

private:
    friend class XInputEventTap;
    using Taps = std::vector<XInputEventTap*>;

    void insert(XInputEventTap* tap, Placement placement);
    void remove(XInputEventTap* tap);
    /// A tap began or ceased to want events. False when the keyboards can't be had for it.
    bool update();
    bool isWanted() const;
    EventMask wantedMask() const;

    bool startThread();
    bool startPosting();
    bool makeThread(bool forTap);
    void stopThread();
    void stopThreadSoon();
    /// Of a thread that ended by itself: takes notice, and has the taps told later.
    void noticeEnding();
    void tellOfTimeout();

    void deliver();
    std::optional<Event> walk(Event event, Location from);

    RepeatedLog m_log;
    std::function<CommandKeys()> m_commandKeys;
    /// Never changed in place: a walk keeps the list that it began with.
    std::shared_ptr<const Taps> m_taps = std::make_shared<const Taps>();
    std::unique_ptr<TapThread> m_thread;
    struct NotifierDeleter {
        void operator()(QSocketNotifier* notifier) const;
    };
    std::unique_ptr<QSocketNotifier, NotifierDeleter> m_notifier;
    QTimer m_postingEnd;
    Taps m_timedOut;
    bool m_willStop = false;
    /// The context of queued calls.
    QObject m_context;
};

} // namespace orvane
