#include "KeyboardShortcuts/Storage/ShortcutStorage.h"

#include "KeyboardShortcuts/Storage/ShortcutCoding.h"
#include "Platform/DefaultsStore.h"
#include "Platform/Platform.h"

namespace orvane::KeyboardShortcuts {

QString storage::key(const Name& name)
{
    return QLatin1StringView("KeyboardShortcuts_") + name.rawValue();
}

std::optional<Shortcut> storage::read(const QString& key)
{
    const auto text = platform().standardDefaults.string(key);
    return text ? decode(*text) : std::nullopt;
}

bool storage::hasObject(const QString& key)
{
    return platform().standardDefaults.object(key).isValid();
}

void storage::write(const QString& key, const Shortcut& shortcut)
{
    platform().standardDefaults.set(key, encode(shortcut));
}

void storage::writeCleared(const QString& key)
{
    platform().standardDefaults.set(key, false);
}

void storage::remove(const QString& key)
{
    platform().standardDefaults.remove(key);
}

} // namespace orvane::KeyboardShortcuts
