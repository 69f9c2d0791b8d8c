#include "PlatformLinux/Keys/DeliveredModifiers.h"

namespace orvane {

void DeliveredModifiers::noteModifier(const Rewriting& flags)
{
    m_acting = flags.changesChord() ? std::optional(flags.answer & chordFlags) : std::nullopt;
}

EventFlags DeliveredModifiers::of(const Rewriting& flags, CommandKeys command) const
{
    // Where a key acts as Super already, a chord with it is a chord with Super.
    const bool commandIsHeld = m_acting && (*m_acting & eventFlag::command) != 0;
    if (!flags.changesChord() || commandIsHeld)
        return flags.answer & chordFlags;
    return ofPosted(flags.answer, command);
}

EventFlags DeliveredModifiers::ofPosted(EventFlags flags, CommandKeys command)
{
    EventFlags delivered = flags & chordFlags & ~eventFlag::command;
    if ((flags & eventFlag::command) == 0)
        return delivered;
    delivered |= eventFlag::control;
    return command == CommandKeys::controlShift ? delivered | eventFlag::shift : delivered;
}

} // namespace orvane
