// Thumbnails as the desktop has them: from the cache that its programs share, where the entry fits to the
// file's present state; else from its thumbnailer; else made by the worker. The worker opens the entries too:
// other programs wrote them.
#pragma once

#include "Platform/Thumbnails.h"
#include "PlatformLinux/Thumbnails/DesktopThumbnailer.h"

#include <QString>

namespace orvane {

class WorkerPictures;

class DesktopThumbnails : public Thumbnails {
public:
    static constexpr std::chrono::seconds timeLimit{5};

    explicit DesktopThumbnails(WorkerPictures& pictures);
    /// With another cache, and another limit for the thumbnailer. Without a folder no entry is found.
    DesktopThumbnails(WorkerPictures& pictures, QString cacheFolder, std::chrono::milliseconds limit);

    [[nodiscard]] std::optional<Pictures::Pixels> thumbnail(const QString& path, Pictures::Size most,
                                                            std::stop_token stop) override;

    /// Ends the question to the thumbnailer, and fails all that come after it. Any thread, the main one too.
    void giveUp() { m_givenUp.request_stop(); }

private:
    [[nodiscard]] std::optional<Pictures::Pixels> fromCache(const QString& path, Pictures::Size most,
                                                            const std::stop_token& stop);
    [[nodiscard]] bool haveMade(const QString& path, Pictures::Size most, const std::stop_token& stop);

    WorkerPictures& m_pictures;
    const QString m_cacheFolder;
    DesktopThumbnailer m_thumbnailer;
    std::stop_source m_givenUp;
};

} // namespace orvane
