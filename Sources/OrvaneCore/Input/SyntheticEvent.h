// The mark on events that the program itself posts.
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

} // namespace orvane::SyntheticEvent
