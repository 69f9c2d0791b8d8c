#include "CapabilityClipboardHistory/ClipboardStore.h"

#include "CapabilityClipboardHistory/TextComparison.h"

#include <algorithm>

namespace orvane {

void ClipboardStore::insert(ClipItem item)
{
    const auto same = std::ranges::find_if(
        std::as_const(items), [&item](const ClipItem& entry) { return item.contentEquals(entry); });
    if (same != items.cend()) {
        item.pinned = same->pinned;
        items.erase(same);
    }
    items.prepend(std::move(item));
    applyCap();
}

void ClipboardStore::remove(QUuid id)
{
    items.removeIf([&id](const ClipItem& entry) { return entry.id == id; });
}

void ClipboardStore::togglePin(QUuid id)
{
    const auto index = std::ranges::find(std::as_const(items), id, &ClipItem::id) - items.cbegin();
    if (index == items.size())
        return;
    items[index].pinned = !items[index].pinned;
    applyCap();
}

void ClipboardStore::clearUnpinned()
{
    items.removeIf([](const ClipItem& entry) { return !entry.pinned; });
}

QList<ClipItem> ClipboardStore::search(const QString& query, const QLocale& locale) const
{
    const QString trimmed = query.trimmed();
    if (trimmed.isEmpty())
        return items;
    const TextComparison::Search search(trimmed, locale);
    QList<ClipItem> found;
    std::ranges::copy_if(items, std::back_inserter(found),
                         [&search](const ClipItem& entry) { return search.isFoundIn(entry.preview()); });
    return found;
}

void ClipboardStore::applyCap()
{
    int unpinned = 0;
    items.removeIf(
        [this, &unpinned](const ClipItem& entry) { return !entry.pinned && ++unpinned > maxItems; });
}

} // namespace orvane
