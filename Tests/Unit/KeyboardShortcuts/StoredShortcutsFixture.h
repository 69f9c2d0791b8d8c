// Stored and registered shortcuts, for tests of names and of handlers.
#pragma once

#include "KeyboardShortcuts/Registration/State.h"
#include "ShortcutsFixture.h"

namespace orvane::tests {

inline constexpr KeyboardShortcuts::Shortcut controlSpace(49, 4096);
inline constexpr KeyboardShortcuts::Shortcut commandK(40, 256);

class StoredShortcutsFixture : public ShortcutsFixture {
protected:
    static bool countsAsRegistered(const Shortcut& shortcut)
    {
        return KeyboardShortcuts::state().registeredShortcuts.contains(shortcut);
    }
    [[nodiscard]] QVariant stored(const char* name) const { return fake.defaults.stored.value(key(name)); }
    [[nodiscard]] bool isStored(const char* name) const { return fake.defaults.stored.contains(key(name)); }
};

} // namespace orvane::tests
