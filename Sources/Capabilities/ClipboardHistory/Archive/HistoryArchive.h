// The history on the disk: the list in `history.json`, the pictures in `images/`, for their owner's eyes
// alone.
//
// Every failure is swallowed: the list in memory stays the truth, and the next change tries again. The calls
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
    /// Nothing for what isn't a bare name: the list may come from anywhere.
    [[nodiscard]] std::optional<QString> imagePath(const QString& fileName) const;

    /// The list of the file; empty when it can't be read as one.
    [[nodiscard]] QList<ClipItem> load() const;

    /// Replaces the file as a whole: it is never there in part.
    void save(const QList<ClipItem>& items) const;
    /// Writes a new file, not atomically. False, and nothing is left of it, when it can't be written whole.
    [[nodiscard]] bool writeImage(const QString& fileName, const QByteArray& png) const;
    void removeImage(const QString& fileName) const;
    /// Removes everything from the image folder that no entry names, whatever it is.
    void pruneImages(const QList<ClipItem>& keepingItems) const;
    /// Removes the directory with all that is in it.
    void purge() const;
    /// The directory alone. Throws an error with readable text when it can't be had.
    void requireDirectory() const;
    /// The image folder, and all above it.
    void ensureDirectories() const;

private:
    [[nodiscard]] bool ensureDirectory() const;
};

} // namespace orvane
