// Unsplash photographs by time of day, from a public proxy.
#pragma once

#include "Capabilities/DailyFrame/Sources/WallpaperSource.h"

namespace orvane {

class UnsplashSource final : public WallpaperSource {
public:
    [[nodiscard]] QString name() const override { return QStringLiteral("Unsplash"); }
    [[nodiscard]] QUrl request(int width, int height) const override;

protected:
    [[nodiscard]] QList<WallpaperItem> decode(const QByteArray& body) const override;
};

} // namespace orvane
