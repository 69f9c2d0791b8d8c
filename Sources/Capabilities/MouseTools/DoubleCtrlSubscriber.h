// Listens for the double press of Control. It only listens, so that no keyboard is grabbed for it. Main
// thread.
#pragma once

#include "Capabilities/MouseTools/DoubleControl.h"
#include "OrvaneCore/Input/EventTapService.h"

#include <functional>

namespace orvane {

class DoubleCtrlSubscriber : public EventTapListener {
public:
    /// `fire` is called in a later turn of the run loop, and must bear to be called after its owner's end.
    explicit DoubleCtrlSubscriber(std::function<void()> fire) : m_fire(std::move(fire)) {}

    [[nodiscard]] EventMask eventMask() const override { return eventMaskBit(EventType::flagsChanged); }
    void hear(EventType type, const Event& event) override;

private:
    std::function<void()> m_fire;
    DoubleControl m_control;
};

} // namespace orvane
