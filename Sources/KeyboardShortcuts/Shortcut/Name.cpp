#include "KeyboardShortcuts/Shortcut/Name.h"

#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "KeyboardShortcuts/Registration/State.h"
#include "KeyboardShortcuts/Storage/ShortcutStorage.h"

namespace orvane::KeyboardShortcuts {

Name::Name(QString rawValue, const std::optional<Shortcut>& initial)
    : m_rawValue(std::move(rawValue)), m_defaultShortcut(initial)
{
    if (initial && !storage::hasObject(storage::key(*this)))
        userDefaultsSet(*this, *initial);
    initialize();
}

std::optional<Shortcut> Name::shortcut() const
{
    return getShortcut(*this);
}

void Name::setShortcut(const std::optional<Shortcut>& shortcut) const
{
    KeyboardShortcuts::setShortcut(shortcut, *this);
}

} // namespace orvane::KeyboardShortcuts
