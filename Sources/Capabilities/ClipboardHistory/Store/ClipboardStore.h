// The history's list in memory: newest first, without doubles, with a cap on what isn't pinned. A value.
#pragma once

#include "Capabilities/ClipboardHistory/Store/ClipItem.h"

#include <QList>
#include <QLocale>

namespace orvane {

struct ClipboardStore {
    /// The cap on entries that aren't pinned; pinned ones neither count nor go.
    int maxItems = 0;
    /// Newest first.
    QList<ClipItem> items = {};

    /// Puts an entry on top and applies the cap. An entry of the same content goes, and leaves its pin
    /// behind.
    void insert(ClipItem item);
    /// Removes every entry with that id.
    void remove(QUuid id);
    /// Flips the pin of the first entry with that id, which stays in its place, and applies the cap.
    void togglePin(QUuid id);
    void clearUnpinned();
    /// The entries whose preview contains the trimmed query, case aside, in the order of the list; all of
    /// them for an empty one.
    QList<ClipItem> search(const QString& query, const QLocale& locale = QLocale()) const;
};

} // namespace orvane
