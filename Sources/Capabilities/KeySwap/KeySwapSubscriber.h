// Rewrites the modifiers of key events in place; never consumes one.
#pragma once

#include "OrvaneCore/Input/EventTapService.h"

#include <memory>

namespace orvane {

class KeySwapController;

class KeySwapSubscriber : public EventTapSubscriber {
public:
    [[nodiscard]] EventTapRank rank() const override { return EventTapRank::keyRemapping; }
    [[nodiscard]] EventMask eventMask() const override;
    EventTapDecision handle(EventType type, Event& event) override;

    std::weak_ptr<KeySwapController> controller;
};

} // namespace orvane
