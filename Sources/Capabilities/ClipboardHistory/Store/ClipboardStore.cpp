#include "Capabilities/ClipboardHistory/Store/ClipboardStore.h"

#include "Capabilities/ClipboardHistory/Store/TextComparison.h"

#include <algorithm>

namespace orvane {

namespace {

/// The rule of cap and budget, applied to each entry from the top. Once the budget is spent, everything older
/// goes that isn't pinned.
class Limits {
public:
    explicit Limits(int maxItems) : m_maxItems(maxItems) {}
    bool keep(const ClipItem& entry)
    {
        if (entry.pinned)
            return true;
        m_textBytes += entry.textBytes();
        return ++m_unpinned <= m_maxItems && m_textBytes <= ClipboardStore::textBudget;
    }

private:
    int m_maxItems;
    int m_unpinned = 0;
    qint64 m_textBytes = 0;
};

/// Returns the text to search: a trimmed query is found in it exactly when it is found in the preview.
/// Trimming a large text would copy it.
QString searched(const ClipItem& entry)
{
    const bool isText = entry.kind == ClipKind::text || entry.kind == ClipKind::url;
    return isText && entry.text && !QStringView(*entry.text).trimmed().isEmpty() ? *entry.text
                                                                                 : entry.preview();
}

} // namespace

/// Builds a new list: the old one is mostly shared with the panel or a save, and can be far longer than the
/// rest that stays.
void ClipboardStore::insert(ClipItem item)
{
    const auto same = std::ranges::find_if(
        std::as_const(items), [&item](const ClipItem& entry) { return item.contentEquals(entry); });
    if (same != items.cend())
        item.pinned = same->pinned;
    Limits limits(maxItems);
    QList<ClipItem> kept;
    if (limits.keep(item))
        kept.append(std::move(item));
    for (auto entry = items.cbegin(); entry != items.cend(); ++entry) {
        if (entry != same && limits.keep(*entry))
            kept.append(*entry);
    }
    items = std::move(kept);
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
    Limits limits(maxItems);
    items.removeIf([&limits](const ClipItem& entry) { return !limits.keep(entry); });
}

void ClipboardStore::clearUnpinned()
{
    items.removeIf([](const ClipItem& entry) { return !entry.pinned; });
}

bool ClipboardStore::removeBeyondTextLimits()
{
    qint64 textBytes = 0;
    const auto isBeyond = [&textBytes](const ClipItem& entry) {
        if (entry.pinned)
            return false;
        if (entry.textBytes() > largestText)
            return true;
        textBytes += entry.textBytes();
        return textBytes > textBudget;
    };
    return items.removeIf(isBeyond) > 0;
}

QList<ClipItem> ClipboardStore::search(const QString& query, const QLocale& locale) const
{
    const QString trimmed = query.trimmed();
    if (trimmed.isEmpty())
        return items;
    const TextComparison::Search search(trimmed, locale);
    QList<ClipItem> found;
    std::ranges::copy_if(items, std::back_inserter(found),
                         [&search](const ClipItem& entry) { return search.isFoundIn(searched(entry)); });
    return found;
}

} // namespace orvane
