// The modifiers with which a key of the user's reaches the applications after taps have rewritten its flags.
// Pure; one thread at a time. Docs/decisions/0019-what-a-rewritten-command-is.md explains the choice.
#pragma once

#include "Platform/EventFlags.h"
#include "PlatformLinux/Applications/CommandConvention.h"

#include <optional>

namespace orvane {

/// The four flags by which chords are rewritten.
inline constexpr EventFlags chordFlags =
    eventFlag::shift | eventFlag::control | eventFlag::option | eventFlag::command;

class DeliveredModifiers {
public:
    /// The flags of one event, as it was observed and as it came out of the taps.
    struct Rewriting {
        EventFlags observed = 0;
        EventFlags answer = 0;

        [[nodiscard]] bool changesChord() const { return ((observed ^ answer) & chordFlags) != 0; }
    };

    /// To be called for the events of modifiers' own keys: a rewritten one makes the keys that are held act
    /// for others until the next of these events.
    void noteModifier(const Rewriting& flags);

    /// Returns the four flags as the applications see them, where `command` is Super.
    [[nodiscard]] EventFlags of(const Rewriting& flags, CommandKeys command) const;
    /// Returns the flags for which the held modifiers act; absent when they act for themselves.
    [[nodiscard]] std::optional<EventFlags> acting() const { return m_acting; }

    /// Returns the four flags of a posted event as the applications see them: `command` is the command
    /// modifier of the one that gets it, and never Super.
    [[nodiscard]] static EventFlags ofPosted(EventFlags flags, CommandKeys command);

private:
    std::optional<EventFlags> m_acting;
};

} // namespace orvane
