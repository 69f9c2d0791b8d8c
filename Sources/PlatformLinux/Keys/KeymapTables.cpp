#include "PlatformLinux/Keys/KeymapTables.h"

#include "PlatformLinux/Keys/EventKeyCodes.h"
#include "PlatformLinux/Keys/KeyNames.h"
#include "PlatformLinux/Keys/KeysymText.h"
#include "PlatformLinux/Keys/VirtualKeyCodeTable.h"

#include <bitset>
#include <span>
#include <vector>

#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon.h>

namespace orvane {

namespace {

constexpr xkb_level_index_t baseLevel = 0;
/// The level of Shift on most keys, of Num Lock on those of the keypad.
constexpr xkb_level_index_t secondLevel = 1;
constexpr qsizetype longestText = 4;
/// The least number of the 26 letters: Esperanto has 22 of them, layouts of other scripts have none.
constexpr std::size_t fewestLatinLetters = 14;

xkb_keycode_t keyAt(const KeyPosition& position)
{
    return static_cast<xkb_keycode_t>(position.kernelKeyCode + xKeyCodeOffset);
}

bool isOnKeypad(xkb_keysym_t keysym)
{
    return keysym >= XKB_KEY_KP_Space && keysym <= XKB_KEY_KP_Equal;
}

std::span<const xkb_keysym_t> symbols(xkb_keymap* keymap, xkb_keycode_t key, xkb_layout_index_t group,
                                      xkb_level_index_t level)
{
    const xkb_layout_index_t groups = xkb_keymap_num_layouts_for_key(keymap, key);
    if (groups == 0)
        return {};
    // A key with fewer groups than others begins again with its first.
    const xkb_keysym_t* found = nullptr;
    const int count = xkb_keymap_key_get_syms_by_level(keymap, key, group % groups, level, &found);
    return {found, static_cast<std::size_t>(count)};
}

QString textOf(std::span<const xkb_keysym_t> keysyms)
{
    QString text;
    for (const xkb_keysym_t keysym : keysyms)
        text += keysymText(keysym);
    return text.size() <= longestText ? text : QString();
}

bool typesLatin(xkb_keymap* keymap, xkb_layout_index_t group)
{
    std::bitset<26> letters;
    for (const KeyPosition& position : keyPositions) {
        const auto typed = symbols(keymap, keyAt(position), group, baseLevel);
        if (typed.size() == 1 && typed[0] >= XKB_KEY_a && typed[0] <= XKB_KEY_z)
            letters.set(typed[0] - XKB_KEY_a);
    }
    return letters.count() >= fewestLatinLetters;
}

xkb_layout_index_t latinGroup(xkb_keymap* keymap, xkb_layout_index_t inUse)
{
    if (typesLatin(keymap, inUse))
        return inUse;
    for (xkb_layout_index_t group = 0; group < xkb_keymap_num_layouts(keymap); ++group) {
        if (typesLatin(keymap, group))
            return group;
    }
    return inUse;
}

/// Returns all keys, those with a virtual code first: where two keys have one symbol, they are preferred.
std::vector<xkb_keycode_t> keysByRank()
{
    std::vector<xkb_keycode_t> keys;
    for (const KeyPosition& position : keyPositions)
        keys.push_back(keyAt(position));
    constexpr xkb_keycode_t lastKey = 0xFF;
    for (xkb_keycode_t key = xKeyCodeOffset + 1; key <= lastKey; ++key) {
        if (eventKeyCode(static_cast<std::uint8_t>(key)) > keyCodeBeyondVirtual)
            keys.push_back(key);
    }
    return keys;
}

} // namespace

KeymapTables KeymapTables::of(xkb_keymap* keymap, std::uint32_t group)
{
    KeymapTables made;
    const xkb_layout_index_t textGroup = latinGroup(keymap, group);
    for (const KeyPosition& position : keyPositions) {
        auto typed = symbols(keymap, keyAt(position), textGroup, baseLevel);
        if (typed.size() == 1 && isOnKeypad(typed[0]) && keysymText(typed[0]).isEmpty())
            typed = symbols(keymap, keyAt(position), textGroup, secondLevel);
        made.m_texts.at(static_cast<std::size_t>(position.virtualKeyCode)) = textOf(typed);
    }

    const std::vector<xkb_keycode_t> keys = keysByRank();
    for (const xkb_keycode_t key : keys) {
        const std::int64_t code = eventKeyCode(static_cast<std::uint8_t>(key));
        const auto typed = symbols(keymap, key, textGroup, baseLevel);
        if (code <= keyCodeBeyondVirtual || typed.size() != 1)
            continue;
        if (auto name = nameOfKeysym(typed[0]))
            made.m_names.insert(code, std::move(*name));
    }

    std::vector<xkb_layout_index_t> groups{group};
    for (xkb_layout_index_t other = 0; other < xkb_keymap_num_layouts(keymap); ++other) {
        if (other != group)
            groups.push_back(other);
    }
    for (const xkb_level_index_t level : {baseLevel, secondLevel}) {
        for (const xkb_layout_index_t each : groups) {
            for (const xkb_keycode_t key : keys) {
                const auto typed = symbols(keymap, key, each, level);
                if (typed.size() != 1 || made.m_places.contains(typed[0]))
                    continue;
                const bool isShifted = level == secondLevel && !isOnKeypad(typed[0]);
                made.m_places.insert(typed[0],
                                     {static_cast<int>(eventKeyCode(static_cast<std::uint8_t>(key))),
                                      isShifted ? Place::Level::shifted : Place::Level::plain});
            }
        }
    }
    return made;
}

std::optional<QString> KeymapTables::text(std::int64_t virtualKeyCode) const
{
    if (virtualKeyCode < 0 || virtualKeyCode >= static_cast<std::int64_t>(m_texts.size()))
        return std::nullopt;
    const QString& found = m_texts[static_cast<std::size_t>(virtualKeyCode)];
    return found.isEmpty() ? std::nullopt : std::optional(found);
}

std::optional<QString> KeymapTables::name(std::int64_t keyCode) const
{
    const auto name = m_names.find(keyCode);
    return name == m_names.end() ? std::nullopt : std::optional(*name);
}

std::optional<KeymapTables::Place> KeymapTables::placeOf(std::uint32_t keysym) const
{
    const auto place = m_places.find(keysym);
    return place == m_places.end() ? std::nullopt : std::optional(*place);
}

} // namespace orvane
