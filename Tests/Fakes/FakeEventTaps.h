// Event taps that a test feeds by hand.
#pragma once

#include "Platform/EventTaps.h"

#include <QStringList>

#include <optional>
#include <vector>

namespace orvane {

class FakeEventTaps;

class FakeEventTap : public EventTap {
public:
    FakeEventTap(FakeEventTaps& taps, EventMask eventMask, EventTapCallback callback, void* userInfo);
    ~FakeEventTap() override;

    void addToMainRunLoop() override;
    void removeFromMainRunLoop() override;
    void enable(bool enabled) override;
    bool isEnabled() const override { return m_isEnabled; }
    void invalidate() override;

    EventMask mask() const { return m_mask; }
    bool delivers() const { return m_isAttached && m_isEnabled && m_isValid; }
    /// Acts as the system does at a time-out: disables the tap and tells the callback.
    void disableByTimeout();
    Event* call(EventType type, Event* event) { return m_callback(type, event, m_userInfo); }

private:
    FakeEventTaps& m_taps;
    EventMask m_mask;
    EventTapCallback m_callback;
    void* m_userInfo;
    bool m_isAttached = false;
    bool m_isEnabled = false;
    bool m_isValid = true;
};

class FakeEventTaps : public EventTaps {
public:
    std::unique_ptr<EventTap> tapCreate(Location location, Placement placement, Options options,
                                        EventMask eventsOfInterest, EventTapCallback callback,
                                        void* userInfo) override;
    void post(Location location, const Event& event) override;

    /// Sends an event of the hardware through the taps whose mask has its type. Nothing when one removed it.
    std::optional<Event> send(Event event);

    /// True if the keyboards can't be had, neither by a new tap nor by one that is enabled again.
    bool refuses = false;
    /// Existing taps, the one asked first at the front.
    std::vector<FakeEventTap*> taps;
    /// The events that came out at the end of the stream.
    std::vector<Event> delivered;
    /// Each call in order: "create 7168", "add", "enable", "remove", "disable", "invalidate", "end".
    QStringList calls;
};

} // namespace orvane
