// The history on the disk: the list in `history.json`, the pictures in `images/`, for their owner's eyes
// alone.
//
// Every failure is swallowed: the list in memory stays the truth, and the next change tries again. The calls
// block on the disk.
#pragma once

#include "CapabilityClipboardHistory/ClipItem.h"

#include <QList>
#include <QString>

namespace orvane {

struct HistoryArchive {
    /// The capability's own support directory.
    QString directory;

    QString historyPath() const;
    QString imagesPath() const;

    /// Replaces the file as a whole: it is never there in part.
    void save(const QList<ClipItem>& items) const;
    /// Removes everything from the image folder that no entry names, whatever it is.
    void pruneImages(const QList<ClipItem>& keepingItems) const;
    /// Removes the directory with all that is in it.
    void purge() const;
    void ensureDirectories() const;
};

} // namespace orvane
