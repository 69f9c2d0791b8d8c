// The meaning of X button numbers. Pure; any thread.
#pragma once

#include "Platform/Event.h"

#include <cstdint>

namespace orvane {

/// A set of buttons, a bit for each number.
using ButtonSet = std::uint32_t;

constexpr ButtonSet buttonBit(std::uint32_t button)
{
    return button < 32 ? ButtonSet{1} << button : 0;
}

/// A turn of the wheel comes as a press and a release.
constexpr bool isWheel(std::uint32_t button)
{
    return button >= 4 && button <= 7;
}

/// Returns null for the release of a wheel: a turn is one event.
constexpr EventType typeOfButton(std::uint32_t button, bool goesDown)
{
    if (isWheel(button))
        return goesDown ? EventType::scrollWheel : EventType::null;
    switch (button) {
    case 1:
        return goesDown ? EventType::leftMouseDown : EventType::leftMouseUp;
    case 3:
        return goesDown ? EventType::rightMouseDown : EventType::rightMouseUp;
    default:
        return goesDown ? EventType::otherMouseDown : EventType::otherMouseUp;
    }
}

/// Returns the type of a motion with these buttons held; the wheel's don't count.
constexpr EventType typeOfMotion(ButtonSet held)
{
    if (held & buttonBit(1))
        return EventType::leftMouseDragged;
    if (held & buttonBit(3))
        return EventType::rightMouseDragged;
    constexpr ButtonSet others = buttonBit(2) | ~(buttonBit(8) - 1);
    return held & others ? EventType::otherMouseDragged : EventType::mouseMoved;
}

} // namespace orvane
