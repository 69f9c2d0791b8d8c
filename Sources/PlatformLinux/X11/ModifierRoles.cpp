#include "PlatformLinux/X11/ModifierRoles.h"

#include <X11/keysym.h>

#include <algorithm>

namespace orvane {

namespace {

struct ModifierKeysym {
    std::uint32_t keysym;
    ModifierRole role;
};

// The left ones come first: they are preferred as representatives.
constexpr ModifierKeysym modifierKeysyms[] = {
    {XK_Shift_L, ModifierRole::shift},
    {XK_Control_L, ModifierRole::control},
    {XK_Alt_L, ModifierRole::option},
    {XK_Super_L, ModifierRole::command},
    {XK_ISO_Level3_Shift, ModifierRole::levelThree},
    {XK_Caps_Lock, ModifierRole::capsLock},
    {XK_Shift_R, ModifierRole::shift},
    {XK_Control_R, ModifierRole::control},
    {XK_Alt_R, ModifierRole::option},
    {XK_Super_R, ModifierRole::command},
    {XK_Meta_L, ModifierRole::option},
    {XK_Meta_R, ModifierRole::option},
    {XK_Mode_switch, ModifierRole::levelThree},
};

} // namespace

EventFlags flagOf(ModifierRole role)
{
    switch (role) {
    case ModifierRole::shift:
        return eventFlag::shift;
    case ModifierRole::control:
        return eventFlag::control;
    case ModifierRole::option:
        return eventFlag::option;
    case ModifierRole::command:
        return eventFlag::command;
    case ModifierRole::none:
    case ModifierRole::levelThree:
    case ModifierRole::capsLock:
        break;
    }
    return 0;
}

ModifierRoles ModifierRoles::fromKeysyms(std::uint8_t firstKey, unsigned perKey,
                                         std::span<const std::uint32_t> keysyms)
{
    ModifierRoles made;
    if (perKey == 0)
        return made;
    const std::size_t count = std::min<std::size_t>(keysyms.size() / perKey, 256u - firstKey);
    for (const auto& [keysym, role] : modifierKeysyms) {
        for (std::size_t i = 0; i < count; ++i) {
            if (keysyms[i * perKey] != keysym)
                continue;
            const auto key = static_cast<std::uint8_t>(firstKey + i);
            made.m_roles[key] = role;
            if (role != ModifierRole::capsLock)
                made.m_chordKeys.set(key);
            std::uint8_t& representative = made.m_representatives[static_cast<std::size_t>(role)];
            if (representative == 0)
                representative = key;
        }
    }
    return made;
}

} // namespace orvane
