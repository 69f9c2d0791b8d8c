// The model of the history's panel, and the callbacks for what the user does there. Main thread.
#pragma once

#include "Capabilities/ClipboardHistory/Store/ClipItem.h"
#include "OrvaneCore/Base/Observable.h"

#include <QImage>
#include <QList>

#include <functional>
#include <optional>

namespace orvane {

class HistoryViewModel {
public:
    /// The panel's copy of the list, newest first.
    Observable<QList<ClipItem>> items;
    Observable<QString> query;

    // Set by the owners; empty until then.
    std::function<void(const ClipItem&)> onSelect;
    std::function<void(const ClipItem&)> onDelete;
    std::function<void(const ClipItem&)> onTogglePin;
    std::function<void()> onClose;
    /// Reads and decodes the whole file, so it blocks: a copy of the callback may be called on any thread.
    /// Nothing when the file can't be read, or its owner is gone.
    std::function<std::optional<QImage>(const QString& name)> imageProvider;

    /// Returns the entries whose preview contains the trimmed query, ignoring case, in the order of the list;
    /// all of them for an empty one. Goes through the whole list at each call.
    [[nodiscard]] QList<ClipItem> filtered() const;
};

} // namespace orvane
