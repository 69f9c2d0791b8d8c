// What the numbers of X buttons mean. Pure; any thread.
#pragma once

#include "Platform/Event.h"

#include <cstdint>

namespace orvane {

/// Buttons by number, each a bit.
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

/// Null for the release of a wheel: a turn is one event.
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

/// Of a motion with these held; the wheel's don't count.
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
