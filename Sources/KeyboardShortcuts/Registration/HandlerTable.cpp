#include "KeyboardShortcuts/Registration/HandlerTable.h"

#include "KeyboardShortcuts/Storage/ShortcutStorage.h"

#include <algorithm>

namespace orvane::KeyboardShortcuts {

void HandlerTable::append(const Name& name, Action action)
{
    auto entry = std::ranges::find(m_entries, name.rawValue(), &Entry::rawValue);
    if (entry == m_entries.end())
        entry = m_entries.insert(entry, Entry{name.rawValue(), storage::key(name), {}});
    entry->handlers.push_back({std::move(action), m_count++});
}

void HandlerTable::fire(const Shortcut& shortcut)
{
    const std::size_t count = m_count;
    const std::size_t entryCount = m_entries.size();
    // The loop goes by index: adding leaves references valid, but not iterators.
    for (std::size_t i = 0; i < entryCount; ++i) {
        const Entry& entry = m_entries[i];
        if (storage::read(entry.storageKey) != shortcut)
            continue;
        for (std::size_t j = 0; j < entry.handlers.size() && entry.handlers[j].ordinal < count; ++j)
            entry.handlers[j].action();
    }
}

QStringList HandlerTable::namesWith(const Shortcut& shortcut) const
{
    QStringList names;
    for (const Entry& entry : m_entries) {
        if (storage::read(entry.storageKey) == shortcut)
            names.append(entry.rawValue);
    }
    return names;
}

} // namespace orvane::KeyboardShortcuts
