// A folder of files, and a thumbnail cache of its own in the form that the desktop's programs share.
#pragma once

#include "PlatformLinux/Thumbnails/DesktopThumbnails.h"
#include "PlatformLinux/Thumbnails/ThumbnailCache.h"
#include "PlatformLinux/Worker/WorkerPictures.h"

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace orvane::tests {

class ThumbnailFolder {
public:
    [[nodiscard]] QString path(const QString& name) const { return m_folder.filePath(name); }
    [[nodiscard]] QString cache() const { return m_folder.filePath(QStringLiteral("cache")); }

    /// A white one.
    void addPicture(const QString& name, Pictures::Size size) const
    {
        save(path(name), QImage(size.width, size.height, QImage::Format_RGB32), Qt::white);
    }

    /// Writes a red entry for the file as it is now, or as it was at another time.
    void addEntry(const QString& name, Pictures::Size size, const QString& flavour,
                  qint64 secondsAfter = 0) const
    {
        QImage image(size.width, size.height, QImage::Format_ARGB32);
        const qint64 modified = QFileInfo(path(name)).lastModified().toSecsSinceEpoch() + secondsAfter;
        image.setText(QStringLiteral("Thumb::URI"), QString::fromLatin1(ThumbnailCache::uriOf(path(name))));
        image.setText(QStringLiteral("Thumb::MTime"), QString::number(modified));
        const QString entry = entryOf(name, flavour);
        ASSERT_TRUE(QDir().mkpath(QFileInfo(entry).path()));
        save(entry, image, Qt::red);
    }

    [[nodiscard]] QString entryOf(const QString& name, const QString& flavour) const
    {
        for (const QString& entry : ThumbnailCache::entries(cache(), path(name), 1)) {
            if (entry.contains(u'/' + flavour + u'/'))
                return entry;
        }
        return {};
    }

private:
    static void save(const QString& place, QImage image, const QColor& colour)
    {
        image.fill(colour);
        ASSERT_TRUE(image.save(place, "PNG"));
    }

    QTemporaryDir m_folder;
};

} // namespace orvane::tests
