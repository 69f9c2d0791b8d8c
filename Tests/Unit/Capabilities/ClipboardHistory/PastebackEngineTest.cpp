#include "Capabilities/ClipboardHistory/Panel/PastebackEngine.h"
#include "HistoryFixture.h"
#include "OrvaneCore/Input/SyntheticEvent.h"

namespace orvane::tests {

namespace {

class PastebackEngineTest : public ::testing::Test {
protected:
    PastebackEngineTest()
    {
        convertByToolkit(fake);
        fake.generalPasteboard.copyString(QStringLiteral("before"));
    }

    int place(const ClipItem& item, const std::optional<PasteboardImage>& image = std::nullopt)
    {
        return PastebackEngine::place(item, image);
    }
    [[nodiscard]] const PasteboardContents& contents() const { return fake.generalPasteboard.contents(); }

    FakePlatform fake;
};

} // namespace

TEST_F(PastebackEngineTest, TextAndLinksGoBackAsPlainText)
{
    for (const ClipKind kind : {ClipKind::text, ClipKind::url}) {
        const int count = place(clip(kind, QStringLiteral(" a\u00E9 ")));
        EXPECT_EQ(contents().types, QStringList{pasteboardType::string});
        EXPECT_EQ(contents().stringForType(pasteboardType::string), QStringLiteral(" a\u00E9 "));
        EXPECT_EQ(count, fake.generalPasteboard.changeCount());
    }
}

TEST_F(PastebackEngineTest, FilesGoBackInTheirOrder)
{
    place(filesClip({QStringLiteral("/z #1%20?"), QStringLiteral("/a")}, QStringLiteral("z, a")));
    EXPECT_EQ(contents().types, QStringList{pasteboardType::fileURL});
    EXPECT_EQ(contents().fileURLs, QList<QUrl>({QUrl::fromLocalFile(QStringLiteral("/z #1%20?")),
                                                QUrl::fromLocalFile(QStringLiteral("/a"))}));
}

TEST_F(PastebackEngineTest, APictureGoesBackAsPng)
{
    place(imageClip(QStringLiteral("1.png")), PasteboardImage{picture("PNG")});
    EXPECT_EQ(contents().types, QStringList{pasteboardType::png});
    EXPECT_EQ(contents().data.value(pasteboardType::png), picture("PNG"));
}

TEST_F(PastebackEngineTest, ThePasteboardIsEmptyForAnEntryWithoutContent)
{
    ClipItem noText = textClip({});
    noText.text.reset();
    ClipItem noPaths = filesClip({}, QStringLiteral("name"));
    noPaths.filePaths.reset();
    for (const ClipItem& item :
         {noText, noPaths, filesClip({}, std::nullopt), imageClip(QStringLiteral("1.png"))}) {
        fake.generalPasteboard.copyString(QStringLiteral("before"));
        const int before = fake.generalPasteboard.changeCount();
        EXPECT_NE(place(item), before);
        EXPECT_TRUE(contents().types.isEmpty());
    }
}

TEST_F(PastebackEngineTest, ThePasteIsAMarkedCommandVDownAndUp)
{
    PastebackEngine::synthesizePaste();
    const auto& events = fake.eventTaps.delivered;
    ASSERT_EQ(events.size(), 2);
    EXPECT_EQ(events[0].type, EventType::keyDown);
    EXPECT_EQ(events[1].type, EventType::keyUp);
    for (const Event& event : events) {
        EXPECT_EQ(event.keycode, 9);
        EXPECT_EQ(event.flags, eventFlag::command);
        EXPECT_TRUE(SyntheticEvent::isOurs(event));
    }
}

TEST_F(PastebackEngineTest, TheFileOfAPictureIsReadAsPng)
{
    const QTemporaryDir directory;
    const auto written = [&directory](const char* name, const QByteArray& content) {
        const QString path = directory.filePath(QLatin1StringView(name));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return path;
    };
    const auto png = PastebackEngine::image(written("1.png", picture("PNG")));
    ASSERT_TRUE(png.has_value());
    EXPECT_EQ(png->png, picture("PNG"));
    const auto tiff = PastebackEngine::image(written("2.png", picture("TIFF")));
    ASSERT_TRUE(tiff.has_value());
    EXPECT_FALSE(QImage::fromData(tiff->png, "PNG").isNull());
    EXPECT_FALSE(PastebackEngine::image(written("3.png", "no picture")).has_value());
    EXPECT_FALSE(PastebackEngine::image(written("4.png", "\x89PNG\r\n\x1A\n and no more")).has_value());
    EXPECT_FALSE(PastebackEngine::image(directory.filePath(QStringLiteral("5.png"))).has_value());
    EXPECT_FALSE(PastebackEngine::image(directory.path()).has_value());
}

} // namespace orvane::tests
