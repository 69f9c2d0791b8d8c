#include "Capabilities/DailyFrame/Sources/WallpaperSource.h"

#include "Capabilities/DailyFrame/DailyFrameText.h"

namespace orvane {

namespace {

QString description(WallpaperSourceError::Kind kind)
{
    switch (kind) {
    case WallpaperSourceError::Kind::badResponse:
        return DailyFrameText::tr("The wallpaper service returned an unexpected response.");
    case WallpaperSourceError::Kind::emptyList:
        return DailyFrameText::tr("No wallpapers were returned by the service.");
    }
    return {};
}

} // namespace

WallpaperSourceError::WallpaperSourceError(Kind kind)
    : std::runtime_error(description(kind).toStdString()), m_kind(kind)
{
}

QList<WallpaperItem> WallpaperSource::items(const Http::Response& response) const
{
    if (response.status != 200)
        throw WallpaperSourceError(WallpaperSourceError::Kind::badResponse);
    QList<WallpaperItem> items = decode(response.body);
    if (items.isEmpty())
        throw WallpaperSourceError(WallpaperSourceError::Kind::emptyList);
    return items;
}

} // namespace orvane
