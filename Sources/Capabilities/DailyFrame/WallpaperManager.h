// The files of wallpapers, and the way of a picture from the server to the desktop. A value.
#pragma once

#include "Capabilities/DailyFrame/Sources/WallpaperItem.h"
#include "Platform/Http.h"
#include "Platform/Screens.h"

namespace orvane {

class DesktopPicture;
class FileManager;
class Pictures;

class WallpaperManager {
public:
    static constexpr qint64 mostBytes = 100'000'000;

    enum class Copy { none, toPictures };

    WallpaperManager(DesktopPicture& desktop, Pictures& pictures, const FileManager& folders)
        : m_desktop(&desktop), m_pictures(&pictures), m_folders(&folders)
    {
    }

    [[nodiscard]] static Http::Request request(const WallpaperItem& item)
    {
        return {.url = item.imageURL, .mostBytes = mostBytes};
    }

    /// Keeps the picture that a server sent, shows it on the displays in their order, and copies it if told.
    /// Returns its file. Blocks; any thread but the main one. The first failure is thrown, with a text for a
    /// person: WallpaperSourceError or PlatformError. What was done before it stays.
    [[nodiscard]] QString apply(const WallpaperItem& item, const Http::Response& picture,
                                const QList<Screen>& screens, Copy copy) const;

    /// Made of the item's id, and of the extension that its address has.
    [[nodiscard]] static QString safeFileName(const WallpaperItem& item);

private:
    [[nodiscard]] QString keep(const WallpaperItem& item, const Http::Response& picture) const;
    void copyToPictures(const QString& file) const;

    DesktopPicture* m_desktop;
    Pictures* m_pictures;
    const FileManager* m_folders;
};

} // namespace orvane
