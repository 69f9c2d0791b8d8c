// Event taps on X11: the chain of taps that each event passes. TapSource provides the events. Keys only:
// mouse events have no tap yet. Main thread.
#pragma once

#include "Platform/EventTaps.h"
#include "Platform/LogSink.h"
#include "PlatformLinux/Applications/CommandConvention.h"
#include "PlatformLinux/EventTap/TapSource.h"
#include "PlatformLinux/Keys/DeliveredModifiers.h"

#include <QObject>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <vector>

namespace orvane {

class XInputEventTap;

class XInputEventTaps : public EventTaps {
public:
    /// `commandKeys` returns what `command` means in the application that gets the keys; it is called on
    /// another thread, for each key, and must not block.
    XInputEventTaps(LogSink& log, std::function<CommandKeys()> commandKeys);
    ~XInputEventTaps() override;

    /// Called before a posted key is pressed, with its modifiers in the form of hot keys.
    std::function<void(std::uint32_t keyCode, std::uint32_t modifiers)> onPost = [](auto, auto) {};

    /// Called when each key begins to wait for the thread of this number and for the main thread, and when
    /// that ends.
    std::function<void(pid_t thread)> onKeysWait = [](auto) {};
    std::function<void()> onKeysPass = [] {};

    std::unique_ptr<EventTap> tapCreate(Location location, Placement placement, Options options,
                                        EventMask eventsOfInterest, EventTapCallback callback,
                                        void* userInfo) override;
    void post(Location location, const Event& event) override;

    /// To be called by a tap's callback: returns the event's modifiers as the applications will see them if
    /// it passes in its present form, where `command` is Super. Absent for a posted event.
    [[nodiscard]] std::optional<EventFlags> deliveredFlags(const Event& event) const;

private:
    friend class XInputEventTap;
    using Taps = std::vector<XInputEventTap*>;

    void insert(XInputEventTap* tap, Placement placement);
    void remove(XInputEventTap* tap);
    /// To be called when a tap begins or ceases to want events. False when what the taps need can't be had,
    /// at least at present.
    bool update();
    void noticeEnding() { m_source.noticeEnding(); }

    EventTapDecision decideKey(Event& event);
    EventTapDecision decide(Event& event, Location from);
    void hear(const Event& event);
    void threadEnded(TapThread::Ending ending);
    void listenerEnded();
    void tellOfTimeout();

    LogSink& m_log;
    std::function<CommandKeys()> m_commandKeys;
    /// Never changed in place: a loop keeps the list with which it began.
    std::shared_ptr<const Taps> m_taps = std::make_shared<const Taps>();
    Taps m_timedOut;
    /// The flags with which the key that is being decided was observed; absent for a posted one.
    std::optional<EventFlags> m_observed;
    /// As the tap's thread has it.
    DeliveredModifiers m_delivered;
    /// The flags of the last key that was decided, as observed.
    EventFlags m_lastFlags = 0;
    /// The modifiers whose press was consumed: their release means nothing.
    std::set<std::int64_t> m_keptBack;
    /// The context of queued calls.
    QObject m_context;
    TapSource m_source;
};

} // namespace orvane
