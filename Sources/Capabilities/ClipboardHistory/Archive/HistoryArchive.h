// The history on the disk: the list in `history.json`, the pictures in `images/`, readable only by their
// owner.
//
// Every failure is ignored: the list in memory is the valid one, and the next change tries again. The calls
// block on the disk.
#pragma once

#include "Capabilities/ClipboardHistory/Store/ClipItem.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

namespace orvane {

struct HistoryArchive {
    /// The capability's own support directory.
    QString directory;

    [[nodiscard]] QString historyPath() const;
    [[nodiscard]] QString imagesPath() const;
    /// Returns nothing unless the name is a bare one: the list may have been written by anybody.
    [[nodiscard]] std::optional<QString> imagePath(const QString& fileName) const;

    /// Returns the list of the file; empty when the file isn't a valid list.
    [[nodiscard]] QList<ClipItem> load() const;

    /// Replaces the file as a whole: a reader never sees a part of it.
    void save(const QList<ClipItem>& items) const;
    /// Writes a new file, not atomically. False when it can't be written whole; nothing is left of it then.
    [[nodiscard]] bool writeImage(const QString& fileName, const QByteArray& png) const;
    void removeImage(const QString& fileName) const;
    /// Removes everything from the image folder that no entry names, whatever it is.
    void pruneImages(const QList<ClipItem>& keepingItems) const;
    /// Removes the directory with everything in it.
    void purge() const;
    /// Makes the directory alone. Throws an error with readable text when that fails.
    void requireDirectory() const;
    /// Makes the image folder and everything above it.
    void ensureDirectories() const;

private:
    [[nodiscard]] bool ensureDirectory() const;
};

} // namespace orvane
