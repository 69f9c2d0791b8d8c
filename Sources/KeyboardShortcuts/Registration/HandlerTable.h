// The actions of each name for one edge of a key. Firing allocates nothing by itself.
#pragma once

#include "KeyboardShortcuts/KeyboardShortcuts.h"

#include <QStringList>

#include <cstddef>
#include <deque>

namespace orvane::KeyboardShortcuts {

/// The table only grows and nothing in it moves, so an action may add further ones while it runs.
class HandlerTable {
public:
    void append(const Name& name, Action action);
    /// Runs the actions of each name that holds the shortcut when its turn comes, in the order in which they
    /// were added; those that are added meanwhile wait for the next time.
    void fire(const Shortcut& shortcut);
    /// Returns the names that have actions and hold the shortcut.
    [[nodiscard]] QStringList namesWith(const Shortcut& shortcut) const;

private:
    struct Handler {
        Action action;
        std::size_t ordinal; // the same count for all names
    };
    struct Entry {
        QString rawValue;
        QString storageKey;
        std::deque<Handler> handlers;
    };

    std::deque<Entry> m_entries;
    std::size_t m_count = 0;
};

} // namespace orvane::KeyboardShortcuts
