#include "Capabilities/KeySwap/KeySwapSubscriber.h"

#include "Capabilities/KeySwap/KeySwapController.h"

namespace orvane {

EventMask KeySwapSubscriber::eventMask() const
{
    return eventMaskBit(EventType::keyDown) | eventMaskBit(EventType::keyUp) |
           eventMaskBit(EventType::flagsChanged);
}

EventTapDecision KeySwapSubscriber::handle(EventType type, Event& event)
{
    // Releases and modifiers are treated like presses, so both ends of a chord have the same modifiers.
    if (type != EventType::keyDown && type != EventType::keyUp && type != EventType::flagsChanged)
        return EventTapDecision::pass;
    const auto target = controller.lock();
    if (!target)
        return EventTapDecision::pass;
    const KeyChord chord{event.integerValueField(EventField::keyboardEventKeycode),
                         RemapFlags::fromEventFlags(event.flags)};
    if (const auto flags = target->remap(chord))
        event.flags = flags->merged(event.flags);
    return EventTapDecision::pass;
}

} // namespace orvane
