// Decides if a chord's modifiers are rewritten, and to which. Pure: no platform, no state.
//
// Runs for every key event of the session, so nothing here allocates, logs or blocks.
#pragma once

#include "OrvaneCore/Base/EnumNames.h"
#include "Platform/EventFlags.h"

#include <array>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <set>

namespace orvane {

enum class RemapMode {
    off,
    commonShortcuts, // Control becomes Command for a short table of letters
    fullSwap,        // Control and Command are exchanged on every key
};

inline constexpr std::array remapModeNames{
    EnumName{RemapMode::off, "off", TextSource("KeySwapText", "Off")},
    EnumName{RemapMode::commonShortcuts, "commonShortcuts",
             TextSource("KeySwapText", "Common shortcuts — ⌃C / ⌃V / ⌃X / ⌃Z / ⌃A become ⌘")},
    EnumName{RemapMode::fullSwap, "fullSwap", TextSource("KeySwapText", "Swap Ctrl and Cmd everywhere")},
};
constexpr const auto& enumNames(RemapMode)
{
    return remapModeNames;
}
static_assert(isInOrder<RemapMode>());

/// A set of modifiers in the program's own bits.
class RemapFlags {
public:
    static const RemapFlags command;
    static const RemapFlags control;
    static const RemapFlags option;
    static const RemapFlags shift;
    static const RemapFlags fn;

    constexpr RemapFlags() = default;
    constexpr explicit RemapFlags(std::int64_t rawValue) : m_rawValue(rawValue) {}
    constexpr RemapFlags(std::initializer_list<RemapFlags> members)
    {
        for (const RemapFlags member : members)
            m_rawValue |= member.m_rawValue;
    }

    /// Takes the five modifiers of an event's flags. Every other bit is dropped, so the result can't replace
    /// a whole word of flags: see `merged`.
    static constexpr RemapFlags fromEventFlags(EventFlags flags);
    /// Returns `flags` with these five modifiers in place of its own, and all its other bits.
    [[nodiscard]] constexpr EventFlags merged(EventFlags flags) const;

    [[nodiscard]] constexpr std::int64_t rawValue() const { return m_rawValue; }
    [[nodiscard]] constexpr bool isEmpty() const { return m_rawValue == 0; }
    [[nodiscard]] constexpr bool contains(RemapFlags other) const { return isSubsetOf(other, *this); }
    [[nodiscard]] constexpr RemapFlags united(RemapFlags other) const
    {
        return RemapFlags(m_rawValue | other.m_rawValue);
    }
    [[nodiscard]] constexpr RemapFlags symmetricDifference(RemapFlags other) const
    {
        return RemapFlags(m_rawValue ^ other.m_rawValue);
    }
    [[nodiscard]] constexpr RemapFlags subtracting(RemapFlags other) const
    {
        return RemapFlags(m_rawValue & ~other.m_rawValue);
    }
    constexpr void insert(RemapFlags other) { *this = united(other); }
    constexpr void remove(RemapFlags other) { *this = subtracting(other); }

    friend constexpr bool operator==(RemapFlags, RemapFlags) = default;

private:
    static constexpr bool isSubsetOf(RemapFlags part, RemapFlags whole)
    {
        return (part.m_rawValue & ~whole.m_rawValue) == 0;
    }

    std::int64_t m_rawValue = 0;
};

inline constexpr RemapFlags RemapFlags::command{1};
inline constexpr RemapFlags RemapFlags::control{2};
inline constexpr RemapFlags RemapFlags::option{4};
inline constexpr RemapFlags RemapFlags::shift{8};
inline constexpr RemapFlags RemapFlags::fn{16};

namespace detail {

struct RemapFlagBit {
    RemapFlags member;
    EventFlags bit;
};

inline constexpr std::array remapFlagBits{
    RemapFlagBit{RemapFlags::command, eventFlag::command},
    RemapFlagBit{RemapFlags::control, eventFlag::control},
    RemapFlagBit{RemapFlags::option, eventFlag::option},
    RemapFlagBit{RemapFlags::shift, eventFlag::shift},
    RemapFlagBit{RemapFlags::fn, eventFlag::secondaryFn},
};

} // namespace detail

constexpr RemapFlags RemapFlags::fromEventFlags(EventFlags flags)
{
    RemapFlags result;
    for (const auto& [member, bit] : detail::remapFlagBits) {
        if ((flags & bit) != 0)
            result.insert(member);
    }
    return result;
}

constexpr EventFlags RemapFlags::merged(EventFlags flags) const
{
    for (const auto& [member, bit] : detail::remapFlagBits)
        flags = contains(member) ? flags | bit : flags & ~bit;
    return flags;
}

struct KeyChord {
    /// A virtual key code.
    std::int64_t keyCode = 0;
    RemapFlags flags;

    friend constexpr bool operator==(const KeyChord&, const KeyChord&) = default;
};

/// `unchanged`, or `rewrite` with the full new flags.
class RemapOutcome {
public:
    static constexpr RemapOutcome unchanged() { return RemapOutcome(std::nullopt); }
    static constexpr RemapOutcome rewrite(RemapFlags flags) { return RemapOutcome(flags); }

    /// Returns the new flags of a rewrite.
    [[nodiscard]] constexpr const std::optional<RemapFlags>& flags() const { return m_flags; }

    friend constexpr bool operator==(const RemapOutcome&, const RemapOutcome&) = default;

private:
    constexpr explicit RemapOutcome(std::optional<RemapFlags> flags) : m_flags(flags) {}

    std::optional<RemapFlags> m_flags;
};

namespace RemapEngine {

using KeyCodes = std::set<std::int64_t>;

/// The key codes by position: A, S, F, Z, X, C, V, W, R, T, N of the ANSI layout. The list is short on
/// purpose: all other letters stay Control chords. Built once, on first use.
const KeyCodes& defaultShortcutKeyCodes();

/// Only Command and Control decide; the other modifiers pass through every rewrite. `table` is used for
/// `commonShortcuts` only.
RemapOutcome outcome(const KeyChord& chord, RemapMode mode, const KeyCodes& table);

} // namespace RemapEngine

} // namespace orvane
