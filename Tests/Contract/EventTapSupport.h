// Helpers for tests of event taps: key codes by position, and a tap whose callback is a lambda.
#pragma once

#include "Platform/EventTaps.h"
#include "Support/Eventually.h"

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

namespace orvane::tests {

// X key codes.
namespace key {
inline constexpr std::uint8_t a = 38, b = 56, c = 54, v = 55, x = 53, y = 29;
inline constexpr std::uint8_t controlL = 37, shiftL = 50, superL = 133, capsLock = 66, numLock = 77;
} // namespace key

constexpr EventMask keyboardMask =
    eventMaskBit(EventType::keyDown) | eventMaskBit(EventType::keyUp) | eventMaskBit(EventType::flagsChanged);

/// A tap that is in place until the object's end, and the events that it has seen.
class LambdaTap {
public:
    /// On a busy machine the server may be late, and then a tap isn't enabled at first; its users try again.
    enum class Enabling { untilItIs, once };

    /// Returns true if the event passes.
    using Handler = std::function<bool(Event&)>;

    explicit LambdaTap(EventTaps& taps, Handler handler = {}, EventMask mask = keyboardMask,
                       EventTaps::Options options = EventTaps::Options::defaultTap,
                       EventTaps::Placement placement = EventTaps::Placement::headInsert,
                       Enabling enabling = Enabling::untilItIs)
        : m_handler(std::move(handler)),
          m_tap(taps.tapCreate(EventTaps::Location::session, placement, options, mask, &LambdaTap::callback,
                               this))
    {
        if (!m_tap)
            return;
        m_tap->addToMainRunLoop();
        m_tap->enable(true);
        if (enabling == Enabling::untilItIs) {
            EXPECT_TRUE(comesToBeEnabled());
        }
    }

    /// Enables it again and again, as its users do. False when it isn't enabled after all.
    [[nodiscard]] bool comesToBeEnabled()
    {
        return eventually(std::chrono::seconds(30), [this] {
            if (!m_tap->isEnabled())
                m_tap->enable(true);
            return m_tap->isEnabled();
        });
    }
    EventTap* tap() { return m_tap.get(); }
    [[nodiscard]] const std::vector<Event>& seen() const { return m_seen; }
    [[nodiscard]] int timeouts() const { return m_timeouts; }
    [[nodiscard]] bool sawRepeat() const
    {
        for (const Event& event : m_seen) {
            if (event.autorepeat != 0)
                return true;
        }
        return false;
    }

private:
    static EventTapDecision callback(EventType type, Event& event, void* userInfo)
    {
        auto* self = static_cast<LambdaTap*>(userInfo);
        if (type == EventType::tapDisabledByTimeout) {
            ++self->m_timeouts;
            return EventTapDecision::pass;
        }
        self->m_seen.push_back(event);
        return !self->m_handler || self->m_handler(event) ? EventTapDecision::pass
                                                          : EventTapDecision::consume;
    }

    Handler m_handler;
    std::vector<Event> m_seen;
    int m_timeouts = 0;
    std::unique_ptr<EventTap> m_tap;
};

} // namespace orvane::tests
