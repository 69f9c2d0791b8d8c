// How the services are asked, and how their answers read: well-formed, damaged and hostile ones.
#include "Capabilities/DailyFrame/Sources/BingSource.h"
#include "Capabilities/DailyFrame/Sources/JsonReading.h"
#include "Capabilities/DailyFrame/Sources/UnsplashSource.h"

#include <gtest/gtest.h>

using namespace orvane;

namespace {

const BingSource bing(QStringLiteral("de-DE"));
const UnsplashSource unsplash;

QList<WallpaperItem> itemsOf(const WallpaperSource& source, const QByteArray& body, int status = 200)
{
    return source.items({status, body});
}

std::optional<WallpaperSourceError::Kind> errorOf(const WallpaperSource& source, const QByteArray& body,
                                                  int status = 200)
{
    try {
        (void)itemsOf(source, body, status);
    } catch (const WallpaperSourceError& error) {
        return error.kind();
    }
    return std::nullopt;
}

QByteArray bingImage(const QByteArray& day, const QByteArray& base, const QByteArray& more = {})
{
    return R"({"startdate":")" + day + R"(","urlbase":")" + base +
           R"(","title":"A hill","copyright":"A hill at dawn (c) Somebody")" + more + "}";
}

QByteArray bingList(const QByteArrayList& images)
{
    return R"({"images":[)" + images.join(',') + R"(],"tooltips":{"loading":"..."}})";
}

} // namespace

TEST(WallpaperErrorTest, SaysWhatThePersonReads)
{
    using Kind = WallpaperSourceError::Kind;
    EXPECT_STREQ(WallpaperSourceError(Kind::badResponse).what(),
                 "The wallpaper service returned an unexpected response.");
    EXPECT_STREQ(WallpaperSourceError(Kind::emptyList).what(), "No wallpapers were returned by the service.");
}

TEST(SourceKindTest, HasItsNamesInOrder)
{
    EXPECT_EQ(rawValue(SourceKind::bing), QLatin1String("bing"));
    EXPECT_EQ(rawValue(SourceKind::unsplash), QLatin1String("unsplash"));
    EXPECT_EQ(title(SourceKind::bing), QStringLiteral("Bing Image of the Day"));
    EXPECT_EQ(title(SourceKind::unsplash), QStringLiteral("Unsplash (Daylight)"));
}

// Bing.

TEST(BingSourceTest, AsksForTheLastEightPicturesOfTheMarket)
{
    EXPECT_EQ(bing.request(1, 2).toString(QUrl::FullyEncoded),
              QStringLiteral("https://www.bing.com/HPImageArchive.aspx?format=js&idx=0&n=8&mkt=de-DE"));
    EXPECT_EQ(BingSource(QStringLiteral("x&y")).request(1, 2).query(QUrl::FullyEncoded),
              QStringLiteral("format=js&idx=0&n=8&mkt=x%26y"))
        << "a stored market can't add to the question";
}

TEST(BingSourceTest, HasTwelveMarkets)
{
    QStringList rows;
    for (const BingSource::Market& market : BingSource::markets)
        rows.append(QString(market.code) + u' ' + market.label.source());
    EXPECT_EQ(rows.join(u'\n'), QStringLiteral("en-US United States\nen-GB United Kingdom\nen-CA Canada\n"
                                               "en-AU Australia\nen-IN India\nde-DE Germany\nfr-FR France\n"
                                               "es-ES Spain\nit-IT Italy\nja-JP Japan\nzh-CN China\n"
                                               "pt-BR Brazil"));
}

TEST(BingSourceTest, ReadsAnImageInItsHighestSize)
{
    const auto items = itemsOf(
        bing, bingList({bingImage("20260704", "/th?id=OHR.Hill_DE",
                                  R"(,"copyrightlink":"https://www.bing.com/search?q=hill","hsh":"abc")")}));
    ASSERT_EQ(items.size(), 1);
    EXPECT_EQ(
        items.first(),
        (WallpaperItem{.id = QStringLiteral("bing-20260704"),
                       .imageURL = QUrl(QStringLiteral("https://www.bing.com/th?id=OHR.Hill_DE_UHD.jpg")),
                       .title = QStringLiteral("A hill"),
                       .credit = QStringLiteral("A hill at dawn (c) Somebody"),
                       .creditURL = QUrl(QStringLiteral("https://www.bing.com/search?q=hill")),
                       .sourceName = QStringLiteral("Bing")}));
}

TEST(BingSourceTest, KeepsTheOrderOfTheService)
{
    const auto items = itemsOf(bing, bingList({bingImage("20260704", "/a"), bingImage("20260706", "/b"),
                                               bingImage("20260705", "/c")}));
    ASSERT_EQ(items.size(), 3);
    EXPECT_EQ(items.at(1).id, QStringLiteral("bing-20260706"));
    EXPECT_EQ(items.at(2).id, QStringLiteral("bing-20260705"));
}

TEST(BingSourceTest, WithoutALinkThereIsNone)
{
    for (const QByteArray& more :
         {QByteArray(), QByteArray(R"(,"copyrightlink":null)"), QByteArray(R"(,"copyrightlink":"")"),
          QByteArray(","
                     R"_("copyrightlink":"javascript:void(0)")_"),
          QByteArray(R"(,"copyrightlink":"file:///etc/passwd")")})
        EXPECT_FALSE(itemsOf(bing, bingList({bingImage("1", "/a", more)})).first().creditURL)
            << more.toStdString();
}

TEST(BingSourceTest, AnImageWithoutAnAddressOfTheHostIsLeftOut)
{
    for (const char* base : {":99999999/a", "@elsewhere.example/a", ".elsewhere.example/a", ":444/a"}) {
        const auto items =
            itemsOf(bing, bingList({bingImage("1", "/a"), bingImage("2", base), bingImage("3", "/c")}));
        ASSERT_EQ(items.size(), 2) << base;
        EXPECT_EQ(items.last().id, QStringLiteral("bing-3"));
    }
}

TEST(BingSourceTest, AnythingButSuccessIsABadResponse)
{
    const QByteArray good = bingList({bingImage("1", "/a")});
    for (const int status : {201, 204, 301, 304, 403, 404, 500})
        EXPECT_EQ(errorOf(bing, good, status), WallpaperSourceError::Kind::badResponse) << status;
    EXPECT_EQ(errorOf(bing, "no JSON", 404), WallpaperSourceError::Kind::badResponse);
}

TEST(BingSourceTest, NoPictureIsAnEmptyList)
{
    EXPECT_EQ(errorOf(bing, R"({"images":[]})"), WallpaperSourceError::Kind::emptyList);
    EXPECT_EQ(errorOf(bing, bingList({bingImage("1", "@elsewhere.example/a")})),
              WallpaperSourceError::Kind::emptyList);
}

TEST(BingSourceTest, AnAnswerOfAnotherFormIsAnError)
{
    const QByteArrayList answers{
        "",
        "null",
        "[]",
        "{}",
        "<!DOCTYPE html><html><body>Log in to the network</body></html>",
        R"({"images":{}})",
        R"({"images":null})",
        R"({"images":[1]})",
        R"({"images":[{}]})",
        R"({"images":[{"startdate":"1","urlbase":"/a","title":"t"}]})",
        R"({"images":[{"startdate":20260704,"urlbase":"/a","title":"t","copyright":"c"}]})",
        R"({"images":[{"startdate":"1","urlbase":["/a"],"title":"t","copyright":"c"}]})",
        bingList({bingImage("1", "/a", R"(,"copyrightlink":7)")}),
        bingList({bingImage("1", "/a")}).chopped(1),
        "\xff\xfe{\"images\":[]}",
        QByteArray(100'000, '['),
    };
    for (const QByteArray& answer : answers)
        EXPECT_THROW((void)itemsOf(bing, answer), JsonError) << answer.left(80).toStdString();
}

// Unsplash.

TEST(UnsplashSourceTest, AsksForPicturesOfTheSize)
{
    EXPECT_EQ(
        unsplash.request(3840, 2160).toString(QUrl::FullyEncoded),
        QStringLiteral("https://services.bonjourr.fr/backgrounds/bonjourr/images/daylight?h=2160&w=3840"));
}

TEST(UnsplashSourceTest, ReadsAPhotograph)
{
    const auto items = itemsOf(unsplash, R"({"day":[{"page":"https://unsplash.com/photos/abc","username":"jd",
        "name":"Jane Doe","city":null,"urls":{"full":"https://images.unsplash.com/photo-1?q=80","small":1}}]})");
    ASSERT_EQ(items.size(), 1);
    EXPECT_EQ(items.first(),
              (WallpaperItem{.id = QStringLiteral("unsplash-https://unsplash.com/photos/abc"),
                             .imageURL = QUrl(QStringLiteral("https://images.unsplash.com/photo-1?q=80")),
                             .title = {},
                             .credit = QStringLiteral("Photo by Jane Doe on Unsplash"),
                             .creditURL = QUrl(QStringLiteral("https://unsplash.com/photos/abc?utm_source="
                                                              "DailyFrame&utm_medium=referral")),
                             .sourceName = QStringLiteral("Unsplash")}));
}

TEST(UnsplashSourceTest, TakesTheListsInTheOrderOfTheirKeys)
{
    const auto items = itemsOf(unsplash, R"({"noon":[{"urls":{"full":"https://h/3"}}],
        "Zenith":[{"urls":{"full":"https://h/1"}}], "evening":[{"urls":{"full":"https://h/2"}}],
        "\ud83c\udf19":[{"urls":{"full":"https://h/5"}}], "\uff21":[{"urls":{"full":"https://h/4"}}]})");
    QStringList order;
    for (const WallpaperItem& item : items)
        order.append(item.imageURL.path());
    EXPECT_EQ(order, QStringList({QStringLiteral("/1"), QStringLiteral("/2"), QStringLiteral("/3"),
                                  QStringLiteral("/4"), QStringLiteral("/5")}));
}

TEST(UnsplashSourceTest, APhotographUnderTwoKeysIsOneItem)
{
    const auto items = itemsOf(unsplash, R"({"b":[{"name":"Second","urls":{"full":"https://h/1"}}],
        "a":[{"name":"First","urls":{"full":"https://h/1"}}]})");
    ASSERT_EQ(items.size(), 1);
    EXPECT_EQ(items.first().credit, QStringLiteral("Photo by First on Unsplash"));
}

TEST(UnsplashSourceTest, TheCreditFallsBackToTheUserAndToTheService)
{
    const auto items = itemsOf(unsplash, R"({"a":[{"username":"jd","urls":{"full":"https://h/1"}},
        {"urls":{"full":"https://h/2"}}, {"name":"%1 %2","urls":{"full":"https://h/3"}}]})");
    ASSERT_EQ(items.size(), 3);
    EXPECT_EQ(items.at(0).credit, QStringLiteral("Photo by jd on Unsplash"));
    EXPECT_EQ(items.at(1).credit, QStringLiteral("Photo by Unsplash on Unsplash"));
    EXPECT_EQ(items.at(1).id, QStringLiteral("unsplash-https://h/2")) << "without a page, by the picture";
    EXPECT_FALSE(items.at(1).creditURL);
    EXPECT_EQ(items.at(2).credit, QStringLiteral("Photo by %1 %2 on Unsplash"));
}

TEST(UnsplashSourceTest, APictureWithoutASecureAddressIsLeftOut)
{
    const auto items = itemsOf(unsplash, R"({"a":[{"urls":{"full":""}},{"urls":{"full":"http://h/1"}},
        {"urls":{"full":"file:///etc/passwd"}},{"urls":{"full":"https://h:x/"}},{"urls":{"full":"https://h/1"}}]})");
    ASSERT_EQ(items.size(), 1);
    EXPECT_EQ(items.first().imageURL, QUrl(QStringLiteral("https://h/1")));
}

TEST(UnsplashSourceTest, NoPictureIsAnEmptyList)
{
    for (const char* body : {"{}", R"({"a":[]})", R"({"a":[{"urls":{"full":"ftp://h/1"}}]})"})
        EXPECT_EQ(errorOf(unsplash, body), WallpaperSourceError::Kind::emptyList) << body;
    EXPECT_EQ(errorOf(unsplash, "{}", 404), WallpaperSourceError::Kind::badResponse);
}

TEST(UnsplashSourceTest, AnAnswerOfAnotherFormIsAnError)
{
    for (const char* body :
         {"", "[]", R"({"images":"none"})", R"({"a":[7]})", R"({"a":[{}]})", R"({"a":[{"urls":{}}]})",
          R"({"a":[{"urls":{"full":1}}]})", R"({"a":[{"name":1,"urls":{"full":"https://h/1"}}]})",
          R"({"a":[{"urls":{"full":"https://h/1"}}])"})
        EXPECT_THROW((void)itemsOf(unsplash, body), JsonError) << body;
}
