#include "Capabilities/DailyFrame/Sources/UnsplashSource.h"

#include "Capabilities/DailyFrame/DailyFrameText.h"
#include "Capabilities/DailyFrame/Sources/JsonReading.h"

#include <QSet>
#include <QStringList>
#include <QUrlQuery>

#include <algorithm>

namespace orvane {

namespace {

const QString base = QStringLiteral("https://" ORVANE_DAYLIGHT_HOST);

struct Photograph {
    QString full;
    std::optional<QString> page;
    std::optional<QString> username;
    std::optional<QString> name;
};

Photograph photograph(const QJsonObject& object)
{
    return {.full = JsonReading::string(JsonReading::object(object[u"urls"])[u"full"]),
            .page = JsonReading::optionalString(object[u"page"]),
            .username = JsonReading::optionalString(object[u"username"]),
            .name = JsonReading::optionalString(object[u"name"])};
}

/// By plain comparison of the keys, so that the order is the same for each reading of a response.
QStringList sortedKeys(const QJsonObject& object)
{
    QStringList keys = object.keys();
    std::ranges::sort(keys, [](const QString& one, const QString& other) {
        return one.toStdU32String() < other.toStdU32String();
    });
    return keys;
}

WallpaperItem item(const Photograph& photograph, const QUrl& url)
{
    const QString author = photograph.name.value_or(photograph.username.value_or(QStringLiteral("Unsplash")));
    WallpaperItem item{.id = QStringLiteral("unsplash-") + photograph.page.value_or(photograph.full),
                       .imageURL = url,
                       .title = {},
                       .credit = DailyFrameText::tr("Photo by %1 on Unsplash").arg(author),
                       .creditURL = std::nullopt,
                       .sourceName = QStringLiteral("Unsplash")};
    if (photograph.page)
        item.creditURL = JsonReading::linkURL(*photograph.page +
                                              QStringLiteral("?utm_source=DailyFrame&utm_medium=referral"));
    return item;
}

} // namespace

QUrl UnsplashSource::request(int width, int height) const
{
    QUrlQuery query;
    query.addQueryItem(QStringLiteral("h"), QString::number(height));
    query.addQueryItem(QStringLiteral("w"), QString::number(width));
    QUrl url(base + QStringLiteral("/backgrounds/bonjourr/images/daylight"));
    url.setQuery(query);
    if (!url.isValid())
        throw WallpaperSourceError(WallpaperSourceError::Kind::badResponse);
    return url;
}

QList<WallpaperItem> UnsplashSource::decode(const QByteArray& body) const
{
    const QJsonObject response = JsonReading::object(body);
    QList<Photograph> photographs;
    for (const QString& key : sortedKeys(response)) {
        for (const QJsonValue value : JsonReading::array(response[key]))
            photographs.append(photograph(JsonReading::object(value)));
    }
    QList<WallpaperItem> items;
    QSet<QString> seen;
    for (const Photograph& photograph : photographs) {
        const auto url = JsonReading::pictureURL(photograph.full);
        if (!url || seen.contains(photograph.full))
            continue;
        seen.insert(photograph.full);
        items.append(item(photograph, *url));
    }
    return items;
}

} // namespace orvane
