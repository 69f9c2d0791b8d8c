// The history's list in memory: newest first, without duplicates, with a cap on the entries that aren't
// pinned. A value.
#pragma once

#include "Capabilities/ClipboardHistory/Store/ClipItem.h"

#include <QList>
#include <QLocale>

namespace orvane {

struct ClipboardStore {
    /// The limit to the texts of all entries that aren't pinned, in bytes of memory.
    static constexpr qint64 textBudget = qint64{64} << 20;
    /// The limit to a single text; a larger one isn't kept at all.
    static constexpr qint64 largestText = qint64{16} << 20;

    /// The cap on entries that aren't pinned; pinned ones are neither counted nor removed.
    int maxItems = 0;
    /// Newest first.
    QList<ClipItem> items = {};

    /// Puts an entry on top, and removes the oldest that aren't pinned until cap and budget are kept. An
    /// entry of the same content is removed, and its pin goes to the new one.
    void insert(ClipItem item);
    /// Removes every entry with that id.
    void remove(QUuid id);
    /// Changes the pin of the first entry with that id, which stays in its place, and applies the cap.
    void togglePin(QUuid id);
    void clearUnpinned();
    /// Removes what is beyond the limits to texts, as a list from elsewhere may have it. True if there was
    /// any.
    bool removeBeyondTextLimits();
    /// Returns the entries whose preview contains the trimmed query, ignoring case, in the order of the list;
    /// all of them for an empty one.
    [[nodiscard]] QList<ClipItem> search(const QString& query, const QLocale& locale = QLocale()) const;
};

} // namespace orvane
