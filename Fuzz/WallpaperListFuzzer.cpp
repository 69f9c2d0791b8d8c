// Any answer of a wallpaper service is refused, or gives pictures that can be asked for and kept: secure
// addresses, links of the web, and names of files that stay in their folder.
#include "Capabilities/DailyFrame/Sources/BingSource.h"
#include "Capabilities/DailyFrame/Sources/JsonReading.h"
#include "Capabilities/DailyFrame/Sources/UnsplashSource.h"
#include "Capabilities/DailyFrame/WallpaperManager.h"
#include "Require.h"

#include <cstdint>

using namespace orvane;
using orvane::fuzz::require;

namespace {

void check(const WallpaperItem& item)
{
    require(item.imageURL.isValid() && item.imageURL.scheme() == QLatin1String("https"));
    require(!item.imageURL.host().isEmpty());
    require(!item.creditURL || item.creditURL->scheme().startsWith(QLatin1String("http")));
    const QString name = WallpaperManager::safeFileName(item);
    require(!name.contains(u'/') && !name.startsWith(QLatin1String(".")) && name.contains(u'.'));
}

void read(const WallpaperSource& source, const QByteArray& body)
{
    try {
        const QList<WallpaperItem> items = source.items({200, body});
        require(!items.isEmpty());
        for (const WallpaperItem& item : items)
            check(item);
    } catch (const WallpaperSourceError&) {
    } catch (const JsonError&) {
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray body(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    read(BingSource(QStringLiteral("en-US")), body);
    read(UnsplashSource(), body);
    return 0;
}
