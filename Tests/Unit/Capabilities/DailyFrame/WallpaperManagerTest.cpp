// The files of wallpapers.
#include "DailyFrameFixture.h"

using namespace orvane;
using namespace orvane::tests;

namespace {

struct WallpaperManagerTest : DailyFrameFixture {
    WallpaperManagerTest() { item.imageURL = QUrl(QStringLiteral("https://h/a.png")); }

    QString apply(const QByteArray& body = pictureBytes, int status = 200,
                  WallpaperManager::Copy copy = WallpaperManager::Copy::none)
    {
        return manager.apply(item, {status, body}, fake.screens.list, copy);
    }

    static QString nameFor(const QString& id, const char* url = "https://h/a.jpg")
    {
        return WallpaperManager::safeFileName({.id = id,
                                               .imageURL = QUrl(QString::fromLatin1(url)),
                                               .title = {},
                                               .credit = {},
                                               .creditURL = {},
                                               .sourceName = {}});
    }

    WallpaperManager manager{fake.desktopPicture, fake.pictures, fake.fileManager};
    WallpaperItem item{.id = QStringLiteral("x-1"),
                       .imageURL = {},
                       .title = {},
                       .credit = {},
                       .creditURL = {},
                       .sourceName = {}};
};

} // namespace

TEST_F(WallpaperManagerTest, AFileNameIsMadeOfTheIdAndTheExtension)
{
    EXPECT_EQ(nameFor(QStringLiteral("bing-20260704")), QStringLiteral("bing-20260704.jpg"));
    EXPECT_EQ(nameFor(QStringLiteral("a"), "https://h/p.PNG?x=y.gif"), QStringLiteral("a.PNG"));
    EXPECT_EQ(nameFor(QStringLiteral("a"), "https://h/photo-1?q=80"), QStringLiteral("a.jpg"));
    EXPECT_EQ(nameFor(QStringLiteral("a"), "https://h/th?id=x_UHD.jpg"), QStringLiteral("a.jpg"));
    EXPECT_EQ(nameFor(QStringLiteral("unsplash-https://h/ä b")),
              QStringLiteral("unsplash-https---h---b.jpg"));
    EXPECT_EQ(nameFor(QStringLiteral("../../.bashrc")), QStringLiteral("..-..-.bashrc.jpg"));
    EXPECT_EQ(nameFor(QStringLiteral("a"), "https://h/p.a%2Fb"), QStringLiteral("a.jpg"))
        << "an extension can't lead out of the folder";
}

TEST_F(WallpaperManagerTest, ALongIdIsCutTo120Characters)
{
    EXPECT_EQ(nameFor(QString(500, u'/')), QString(120, u'-') + QStringLiteral(".jpg"));
    EXPECT_EQ(nameFor(QString(120, u'a')), QString(120, u'a') + QStringLiteral(".jpg"));
}

TEST_F(WallpaperManagerTest, ThePictureIsKeptAndShown)
{
    EXPECT_EQ(apply(), fileFor(QStringLiteral("x-1.png")));
    EXPECT_EQ(contentOf(shown()), pictureBytes);
    EXPECT_EQ(apply(pictureBytes + "2"), fileFor(QStringLiteral("x-1.png")));
    EXPECT_EQ(contentOf(shown()), pictureBytes + "2") << "a repeat replaces the file";
    EXPECT_EQ(namesIn(QStringLiteral("support/DailyFrame")), QStringList{QStringLiteral("x-1.png")});
    EXPECT_FALSE(QDir(folder.filePath(QStringLiteral("Pictures"))).exists());
}

TEST_F(WallpaperManagerTest, WhatIsNoPictureNeverReachesTheDesktop)
{
    (void)apply();
    EXPECT_THROW((void)apply("<html>Log in</html>"), WallpaperSourceError);
    EXPECT_THROW((void)apply(""), WallpaperSourceError);
    EXPECT_THROW((void)apply(pictureBytes, 404), WallpaperSourceError);
    EXPECT_EQ(fake.desktopPicture.calls.size(), 1);
    EXPECT_EQ(contentOf(shown()), pictureBytes) << "the old file stays";
    EXPECT_EQ(namesIn(QStringLiteral("support/DailyFrame")), QStringList{QStringLiteral("x-1.png")});
}

TEST_F(WallpaperManagerTest, WithoutDisplaysTheFileIsKeptAndNothingSet)
{
    const QString file = manager.apply(item, {200, pictureBytes}, {}, WallpaperManager::Copy::none);
    EXPECT_EQ(contentOf(file), pictureBytes);
    EXPECT_TRUE(fake.desktopPicture.calls.isEmpty());
}

TEST_F(WallpaperManagerTest, TheFirstDisplayThatRefusesEndsIt)
{
    fake.screens.list.append(FakeScreens::screen(2, {{1440, 0}, {1280, 1000}}, {{1440, 0}, {1280, 1000}}));
    fake.screens.list.append(FakeScreens::screen(3, {{2720, 0}, {1280, 1000}}, {{2720, 0}, {1280, 1000}}));
    fake.desktopPicture.refused = QStringLiteral("Display 2");
    EXPECT_THROW((void)apply(pictureBytes, 200, WallpaperManager::Copy::toPictures), PlatformError);
    EXPECT_EQ(fake.desktopPicture.pictures.keys(), QStringList{QStringLiteral("Display 1")});
    EXPECT_TRUE(namesIn(QStringLiteral("Pictures/Daily Frame")).isEmpty()) << "nothing is copied then";
}

TEST_F(WallpaperManagerTest, ACopyIsMadeOnceAndNeverRenewed)
{
    using enum WallpaperManager::Copy;
    (void)apply(pictureBytes, 200, toPictures);
    const QString copy = folder.filePath(QStringLiteral("Pictures/Daily Frame/x-1.png"));
    EXPECT_EQ(contentOf(copy), pictureBytes);
    (void)apply(pictureBytes + "2", 200, toPictures);
    EXPECT_EQ(contentOf(copy), pictureBytes);
    EXPECT_EQ(namesIn(QStringLiteral("Pictures/Daily Frame")), QStringList{QStringLiteral("x-1.png")});
}

TEST_F(WallpaperManagerTest, WhatAKilledProcessLeftIsRemoved)
{
    (void)apply();
    QFile left(fileFor(QStringLiteral(".download-abcdef")));
    ASSERT_TRUE(left.open(QFile::WriteOnly));
    left.close();
    (void)apply();
    EXPECT_EQ(namesIn(QStringLiteral("support/DailyFrame")), QStringList{QStringLiteral("x-1.png")});
}

TEST_F(WallpaperManagerTest, AFolderThatCannotBeMadeIsSaid)
{
    QFile inTheWay(folder.filePath(QStringLiteral("support")));
    ASSERT_TRUE(inTheWay.open(QFile::WriteOnly));
    try {
        (void)apply();
        FAIL() << "there is no folder";
    } catch (const PlatformError& error) {
        EXPECT_TRUE(QString::fromUtf8(error.what()).contains(QStringLiteral("support/DailyFrame")));
    }
    fake.fileManager.supportDirectories = {};
    EXPECT_THROW((void)apply(), PlatformError);
    EXPECT_TRUE(fake.desktopPicture.calls.isEmpty());
}

TEST_F(WallpaperManagerTest, WithoutAPicturesFolderTheCopyFailsAndThePictureStays)
{
    fake.fileManager.pictures = std::nullopt;
    EXPECT_THROW((void)apply(pictureBytes, 200, WallpaperManager::Copy::toPictures), PlatformError);
    EXPECT_EQ(contentOf(shown()), pictureBytes);
}
