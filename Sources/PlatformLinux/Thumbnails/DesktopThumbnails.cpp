#include "PlatformLinux/Thumbnails/DesktopThumbnails.h"

#include "PlatformLinux/Common/XdgDirectories.h"
#include "PlatformLinux/Thumbnails/ThumbnailCache.h"
#include "PlatformLinux/Worker/WorkerPictures.h"

#include <QFile>
#include <QMimeDatabase>

#include <algorithm>

#include <sys/stat.h>

namespace orvane {

namespace {

int longerSide(Pictures::Size size)
{
    return std::max(size.width, size.height);
}

} // namespace

DesktopThumbnails::DesktopThumbnails(WorkerPictures& pictures)
    : DesktopThumbnails(pictures, XdgDirectories::ofThisProcess().cache.value_or(QString()), timeLimit)
{
}

DesktopThumbnails::DesktopThumbnails(WorkerPictures& pictures, QString cacheFolder,
                                     std::chrono::milliseconds limit)
    : m_pictures(pictures), m_cacheFolder(std::move(cacheFolder)), m_thumbnailer(limit)
{
}

std::optional<Pictures::Pixels> DesktopThumbnails::thumbnail(const QString& path, Pictures::Size most,
                                                             std::stop_token stop)
{
    if (auto kept = fromCache(path, most, stop))
        return kept;
    if (haveMade(path, most, stop)) {
        if (auto made = fromCache(path, most, stop))
            return made;
    }
    return m_pictures.thumbnail(path, most, stop);
}

std::optional<Pictures::Pixels> DesktopThumbnails::fromCache(const QString& path, Pictures::Size most,
                                                             const std::stop_token& stop)
{
    struct stat file {};
    if (m_cacheFolder.isEmpty() || ::stat(QFile::encodeName(path).constData(), &file) != 0 ||
        file.st_mtim.tv_sec < 0)
        return std::nullopt;
    const auto modified = static_cast<std::uint64_t>(file.st_mtim.tv_sec);
    for (const QString& entry : ThumbnailCache::entries(m_cacheFolder, path, longerSide(most))) {
        if (auto pixels = m_pictures.cachedThumbnail(entry, modified, most, stop))
            return pixels;
    }
    return std::nullopt;
}

bool DesktopThumbnails::haveMade(const QString& path, Pictures::Size most, const std::stop_token& stop)
{
    if (m_cacheFolder.isEmpty() || !QFile::exists(path))
        return false;
    std::stop_source end;
    const auto request = [&end] { end.request_stop(); };
    const std::stop_callback byCaller(stop, request);
    const std::stop_callback byAll(m_givenUp.get_token(), request);
    const QString type = QMimeDatabase().mimeTypeForFile(path, QMimeDatabase::MatchExtension).name();
    return !end.stop_requested() &&
           m_thumbnailer.make(ThumbnailCache::uriOf(path), type, ThumbnailCache::flavour(longerSide(most)),
                              end.get_token());
}

} // namespace orvane
