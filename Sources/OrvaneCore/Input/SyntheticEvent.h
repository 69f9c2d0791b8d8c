// Events that the program itself posts, and the mark on them.
#pragma once

#include "Platform/Event.h"

namespace orvane::SyntheticEvent {

/// The letters "ORVA".
inline constexpr std::int64_t marker = 0x4F525641;

inline void mark(Event& event)
{
    event.setIntegerValueField(EventField::eventSourceUserData, marker);
}

inline bool isOurs(const Event& event)
{
    return event.integerValueField(EventField::eventSourceUserData) == marker;
}

/// Posts a marked press and release of a virtual key at the HID location, with these modifiers.
void postKey(std::int64_t keycode, EventFlags flags);

} // namespace orvane::SyntheticEvent
