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
    FakeEventTap(FakeEventTaps& taps, EventTaps::Location location, EventTaps::Options options,
                 EventMask eventMask, EventTapCallback callback, void* userInfo);
    ~FakeEventTap() override;

    void addToMainRunLoop() override;
    void removeFromMainRunLoop() override;
    void enable(bool enabled) override;
    [[nodiscard]] bool isEnabled() const override { return m_isEnabled; }
    void invalidate() override;

    [[nodiscard]] EventMask mask() const { return m_mask; }
    [[nodiscard]] EventTaps::Options options() const { return m_options; }
    [[nodiscard]] bool delivers() const { return m_isAttached && m_isEnabled && m_isValid; }
    /// True if an event that enters the stream at this place passes this tap.
    [[nodiscard]] bool isAskedFor(EventType type, EventTaps::Location from) const
    {
        return delivers() && (m_mask & eventMaskBit(type)) != 0 && m_location >= from;
    }
    /// Acts as the system does at a time-out: disables the tap and tells the callback.
    void disableByTimeout();
    /// Calls the callback as the system does: one that only listens gets a copy, and its answer is ignored.
    EventTapDecision call(Event& event);

private:
    FakeEventTaps& m_taps;
    EventTaps::Location m_location;
    EventTaps::Options m_options;
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

    /// Sends an event of the hardware through the taps whose mask has its type. Nothing when one consumed it.
    std::optional<Event> send(const Event& event) { return pass(event, Location::hid); }
    /// True while the keyboards are taken away from other programs.
    [[nodiscard]] bool holdsKeyboards() const;

    /// True if the keyboards can't be had, neither by a new tap nor by one that is enabled again.
    bool refuses = false;
    /// Existing taps, the one asked first at the front.
    std::vector<FakeEventTap*> taps;
    /// The events that came out at the end of the stream.
    std::vector<Event> delivered;
    /// Each call in order: "create session head 7168", "add", "enable", "remove", "disable", "invalidate",
    /// "end"; of a tap that only listens "create session tail 7168 listening".
    QStringList calls;

private:
    std::optional<Event> pass(Event event, Location from);
};

} // namespace orvane
