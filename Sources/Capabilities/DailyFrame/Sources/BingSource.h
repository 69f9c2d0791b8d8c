// The Bing Image of the Day: the last eight pictures of a market.
#pragma once

#include "Capabilities/DailyFrame/Sources/WallpaperSource.h"
#include "OrvaneCore/Base/TextSource.h"

namespace orvane {

class BingSource final : public WallpaperSource {
public:
    struct Market {
        QLatin1StringView code;
        TextSource label;
    };
    /// In the order in which they are shown.
    static const std::array<Market, 12> markets;

    /// `market` goes into the request as it stands.
    explicit BingSource(QString market) : m_market(std::move(market)) {}

    [[nodiscard]] QString name() const override { return QStringLiteral("Bing"); }
    /// The size isn't used: the pictures come in the highest one that the service has.
    [[nodiscard]] QUrl request(int width, int height) const override;

protected:
    [[nodiscard]] QList<WallpaperItem> decode(const QByteArray& body) const override;

private:
    QString m_market;
};

} // namespace orvane
