#include "Capabilities/DailyFrame/Sources/BingSource.h"

#include "Capabilities/DailyFrame/Sources/JsonReading.h"

#include <QUrlQuery>

namespace orvane {

namespace {

const QString base = QStringLiteral("https://" ORVANE_BING_HOST);

std::optional<WallpaperItem> item(const QJsonObject& image)
{
    const QString day = JsonReading::string(image[u"startdate"]);
    const QString stem = JsonReading::string(image[u"urlbase"]);
    const auto link = JsonReading::optionalString(image[u"copyrightlink"]);
    const auto url = JsonReading::pictureURL(base + stem + QStringLiteral("_UHD.jpg"));
    WallpaperItem item{.id = QStringLiteral("bing-") + day,
                       .imageURL = url.value_or(QUrl()),
                       .title = JsonReading::string(image[u"title"]),
                       .credit = JsonReading::string(image[u"copyright"]),
                       .creditURL = link ? JsonReading::linkURL(*link) : std::nullopt,
                       .sourceName = QStringLiteral("Bing")};
    // The stem may not lead to another host, as "@other/" would.
    if (!url || url->authority() != QUrl(base).authority())
        return std::nullopt;
    return item;
}

} // namespace

constexpr std::array<BingSource::Market, 12> BingSource::markets{{
    {QLatin1StringView("en-US"), TextSource("DailyFrameText", "United States")},
    {QLatin1StringView("en-GB"), TextSource("DailyFrameText", "United Kingdom")},
    {QLatin1StringView("en-CA"), TextSource("DailyFrameText", "Canada")},
    {QLatin1StringView("en-AU"), TextSource("DailyFrameText", "Australia")},
    {QLatin1StringView("en-IN"), TextSource("DailyFrameText", "India")},
    {QLatin1StringView("de-DE"), TextSource("DailyFrameText", "Germany")},
    {QLatin1StringView("fr-FR"), TextSource("DailyFrameText", "France")},
    {QLatin1StringView("es-ES"), TextSource("DailyFrameText", "Spain")},
    {QLatin1StringView("it-IT"), TextSource("DailyFrameText", "Italy")},
    {QLatin1StringView("ja-JP"), TextSource("DailyFrameText", "Japan")},
    {QLatin1StringView("zh-CN"), TextSource("DailyFrameText", "China")},
    {QLatin1StringView("pt-BR"), TextSource("DailyFrameText", "Brazil")},
}};

QUrl BingSource::request(int, int) const
{
    QUrlQuery query;
    query.addQueryItem(QStringLiteral("format"), QStringLiteral("js"));
    query.addQueryItem(QStringLiteral("idx"), QStringLiteral("0"));
    query.addQueryItem(QStringLiteral("n"), QStringLiteral("8"));
    query.addQueryItem(QStringLiteral("mkt"), QString::fromLatin1(QUrl::toPercentEncoding(m_market)));
    QUrl url(base + QStringLiteral("/HPImageArchive.aspx"));
    url.setQuery(query);
    if (!url.isValid())
        throw WallpaperSourceError(WallpaperSourceError::Kind::badResponse);
    return url;
}

QList<WallpaperItem> BingSource::decode(const QByteArray& body) const
{
    QList<WallpaperItem> items;
    for (const QJsonValue image : JsonReading::array(JsonReading::object(body)[u"images"])) {
        if (const auto read = item(JsonReading::object(image)))
            items.append(*read);
    }
    return items;
}

} // namespace orvane
