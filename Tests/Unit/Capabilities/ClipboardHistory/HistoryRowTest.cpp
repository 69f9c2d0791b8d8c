// The content of a row of the panel, and the places of rows of different heights.
#include "Capabilities/ClipboardHistory/Panel/HistoryRow.h"
#include "Capabilities/ClipboardHistory/Panel/HistoryRowHeights.h"
#include "OrvaneKit/Theme/OrvaThemed.h"
#include "Unit/Capabilities/ClipboardHistory/ClipItems.h"

#include <QFontMetrics>
#include <QPainter>

#include <gtest/gtest.h>

namespace {

using namespace orvane;
using namespace orvane::tests;

constexpr int width = 360;

const QString separator(QChar::LineSeparator);

QString shownOf(const QString& text)
{
    return HistoryRow(textClip(text)).preview;
}

TEST(HistoryRow, EachKindHasItsSymbol)
{
    EXPECT_EQ(HistoryRow(textClip(QStringLiteral("a"))).symbol, QStringLiteral("text.alignleft"));
    EXPECT_EQ(HistoryRow(clip(ClipKind::url, QStringLiteral("a"))).symbol, QStringLiteral("link"));
    EXPECT_EQ(HistoryRow(imageClip(QStringLiteral("a.png"))).symbol, QStringLiteral("photo"));
    EXPECT_EQ(HistoryRow(filesClip({QStringLiteral("/a")}, QStringLiteral("a"))).symbol,
              QStringLiteral("doc.on.doc"));
}

TEST(HistoryRow, ThePreviewKeepsItsLinesWithoutEmptyOnesAndIndents)
{
    EXPECT_EQ(shownOf(QStringLiteral("one\n\n  two\r\n\tthree\n")), QStringLiteral("one") + separator +
                                                                        QStringLiteral("two") + separator +
                                                                        QStringLiteral("three"));
}

TEST(HistoryRow, ControlCharactersAreShownAsSpaces)
{
    EXPECT_EQ(shownOf(QStringLiteral("a\tb") + QChar(7) + QStringLiteral("c")), QStringLiteral("a b c"));
}

TEST(HistoryRow, ALongTextIsCutShort)
{
    EXPECT_LE(shownOf(QString(1'000'000, u'x')).size(), 1000);
}

TEST(HistoryRow, ThePreviewIsTheBeginningBehindBlankLines)
{
    const QString blank(10'000, u'\n');
    EXPECT_EQ(shownOf(blank + QStringLiteral("  one\ntwo") + blank),
              QStringLiteral("one") + separator + QStringLiteral("two"));
    EXPECT_EQ(shownOf(QStringLiteral("one") + blank + QStringLiteral("two")), QStringLiteral("one"))
        << "what is far behind isn't looked for";
}

TEST(HistoryRow, NothingToShowReadsEmpty)
{
    EXPECT_EQ(shownOf(QStringLiteral(" \n ")), QStringLiteral("(empty)"));
}

TEST(HistoryRow, TheSourceIsTheIdentifierAsItStands)
{
    ClipItem item = textClip(QStringLiteral("a"));
    EXPECT_EQ(HistoryRow(item).source, QString());
    item.sourceApp = QStringLiteral("org.example.App");
    EXPECT_EQ(HistoryRow(item).source, QStringLiteral("org.example.App"));
}

class HistoryRowLookTest : public testing::Test {
protected:
    HistoryRowLook look;

    [[nodiscard]] QStringList lines(const QString& text) const
    {
        const HistoryRow row{textClip(text)};
        return look.lines(row, look.textWidth(row, width));
    }
};

TEST_F(HistoryRowLookTest, AShortTextIsOneLine)
{
    EXPECT_EQ(lines(QStringLiteral("short")), QStringList{QStringLiteral("short")});
}

TEST_F(HistoryRowLookTest, ALongTextIsTwoLinesTheSecondElided)
{
    const QStringList shown = lines(QStringLiteral("many words ").repeated(60));
    ASSERT_EQ(shown.size(), 2);
    EXPECT_FALSE(shown.at(0).contains(u'…'));
    EXPECT_TRUE(shown.at(1).endsWith(u'…'));
}

TEST_F(HistoryRowLookTest, ATextWithoutSpacesIsBrokenAnywhere)
{
    const QStringList shown = lines(QString(600, u'x'));
    ASSERT_EQ(shown.size(), 2);
    EXPECT_GT(shown.at(0).size(), 10);
    EXPECT_TRUE(shown.at(1).endsWith(u'…'));
}

TEST_F(HistoryRowLookTest, TwoShortLinesStandWithoutAnEllipsis)
{
    EXPECT_EQ(lines(QStringLiteral("one\ntwo")), (QStringList{QStringLiteral("one"), QStringLiteral("two")}));
}

TEST_F(HistoryRowLookTest, AThirdLineIsToldByAnEllipsis)
{
    EXPECT_EQ(lines(QStringLiteral("one\ntwo\nthree")),
              (QStringList{QStringLiteral("one"), QStringLiteral("two…")}));
}

TEST_F(HistoryRowLookTest, ARowIsNeverLowerThanItsIconWithThePadding)
{
    const HistoryRow row{textClip(QStringLiteral("a"))};
    EXPECT_GE(look.height(row, width), HistoryRowLook::iconSide + 2 * HistoryRowLook::paddingV);
}

TEST_F(HistoryRowLookTest, ARowHasTheMeasuresOfThePanel)
{
    // 8 above and below, an icon of 28, a divider of 1; 10 at both sides and between icon and text.
    EXPECT_EQ(look.height(HistoryRow(textClip(QStringLiteral("a"))), width), 8 + 28 + 8 + 1);
    EXPECT_EQ(look.textWidth(HistoryRow(textClip(QStringLiteral("a"))), width), 360 - 10 - 28 - 10 - 10);

    const auto lineOf = [](double size) { // of a font whose body text has 13
        QFont font = orvaFont(OrvaFont::body);
        if (font.pixelSize() > 0)
            font.setPixelSize(qRound(font.pixelSize() * size / 13));
        else
            font.setPointSizeF(font.pointSizeF() * size / 13);
        return QFontMetrics(font).lineSpacing();
    };
    ClipItem item = textClip(QStringLiteral("many words ").repeated(60));
    item.sourceApp = QStringLiteral("org.example.App");
    EXPECT_EQ(look.height(HistoryRow(item), width), 8 + 2 * lineOf(12) + 2 + lineOf(9) + 8 + 1);
}

TEST_F(HistoryRowLookTest, AThumbnailFillsTheIconsSquare)
{
    QImage red(56, 56, QImage::Format_RGB32);
    red.fill(Qt::red);
    QImage image(width, 8 + 28 + 8 + 1, QImage::Format_RGB32);
    image.fill(Qt::white);
    {
        QPainter painter(&image);
        look.paint(painter, image.rect(), Qt::LeftToRight, HistoryRow(imageClip(QStringLiteral("a.png"))),
                   {.thumbnail = red}, HistoryRowLook::State::plain, HistoryRowLook::FocusRing::hidden);
    }
    QRect painted;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor color = image.pixelColor(x, y);
            if (color.red() > 200 && color.green() < 60 && color.blue() < 60)
                painted |= QRect(x, y, 1, 1);
        }
    }
    EXPECT_EQ(painted, QRect(10, 8, 28, 28));
    EXPECT_EQ(image.pixelColor(10, 8), QColor(Qt::white)) << "its corners are round";
}

TEST_F(HistoryRowLookTest, TwoLinesAndTheSourceMakeARowHigher)
{
    ClipItem item = textClip(QStringLiteral("many words ").repeated(60));
    const int plain = look.height(HistoryRow(item), width);
    item.sourceApp = QStringLiteral("org.example.App");
    const int withSource = look.height(HistoryRow(item), width);
    EXPECT_GT(withSource, plain);
    EXPECT_GT(withSource, look.height(HistoryRow(textClip(QStringLiteral("a"))), width));
}

TEST_F(HistoryRowLookTest, TheGuessIsRightForPlainCases)
{
    ClipItem item = textClip(QStringLiteral("short"));
    EXPECT_EQ(look.likelyHeight(item), look.height(HistoryRow(item), width));
    item.sourceApp = QStringLiteral("org.example.App");
    EXPECT_EQ(look.likelyHeight(item), look.height(HistoryRow(item), width));
    item.text = QStringLiteral("many words ").repeated(60);
    EXPECT_EQ(look.likelyHeight(item), look.height(HistoryRow(item), width));
    item.text = QStringLiteral("one\ntwo");
    EXPECT_EQ(look.likelyHeight(item), look.height(HistoryRow(item), width));
    EXPECT_EQ(look.likelyHeight(imageClip(QStringLiteral("a.png"))),
              look.height(HistoryRow(imageClip(QStringLiteral("a.png"))), width));
}

TEST_F(HistoryRowLookTest, APinTakesRoomFromTheText)
{
    EXPECT_LT(look.textWidth(HistoryRow(pinnedClip(QStringLiteral("a"))), width),
              look.textWidth(HistoryRow(textClip(QStringLiteral("a"))), width));
}

int orangePixels(const HistoryRowLook& look, const ClipItem& item)
{
    QImage image(width, 60, QImage::Format_RGB32);
    image.fill(Qt::white);
    {
        QPainter painter(&image);
        look.paint(painter, image.rect(), Qt::LeftToRight, HistoryRow(item), {}, HistoryRowLook::State::plain,
                   HistoryRowLook::FocusRing::hidden);
    }
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = width / 2; x < image.width(); ++x) {
            const QColor color = image.pixelColor(x, y);
            count += color.red() > color.blue() + 80 ? 1 : 0;
        }
    }
    return count;
}

TEST_F(HistoryRowLookTest, OnlyAPinnedRowShowsThePinInOrange)
{
    EXPECT_EQ(orangePixels(look, textClip(QStringLiteral("a"))), 0);
    EXPECT_GT(orangePixels(look, pinnedClip(QStringLiteral("a"))), 5);
}

TEST(HistoryRowHeights, WithoutRowsThereIsNone)
{
    const HistoryRowHeights heights;
    EXPECT_EQ(heights.count(), 0);
    EXPECT_EQ(heights.total(), 0);
    EXPECT_EQ(heights.rowAt(0), -1);
}

TEST(HistoryRowHeights, ARowReachesFromItsTopToTheNext)
{
    HistoryRowHeights heights;
    heights.reset({10, 20, 30});
    EXPECT_EQ(heights.total(), 60);
    EXPECT_EQ(heights.rowAt(0), 0);
    EXPECT_EQ(heights.rowAt(9), 0);
    EXPECT_EQ(heights.rowAt(10), 1);
    EXPECT_EQ(heights.rowAt(29), 1);
    EXPECT_EQ(heights.rowAt(30), 2);
    EXPECT_EQ(heights.rowAt(-5), 0);
    EXPECT_EQ(heights.rowAt(1000), 2);
}

TEST(HistoryRowHeights, AnotherHeightMovesTheRowsBelow)
{
    HistoryRowHeights heights;
    heights.reset({10, 20, 30});
    heights.set(1, 25);
    EXPECT_EQ(heights.top(1), 10);
    EXPECT_EQ(heights.height(1), 25);
    EXPECT_EQ(heights.top(2), 35);
    EXPECT_EQ(heights.height(2), 30);
    EXPECT_EQ(heights.total(), 65);
}

} // namespace
