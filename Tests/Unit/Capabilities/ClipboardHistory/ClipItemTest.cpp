#include "ClipItems.h"

#include "Capabilities/ClipboardHistory/Store/TextComparison.h"

#include <gtest/gtest.h>

namespace orvane::tests {

namespace {

const QString composedE = QStringLiteral("caf\u00E9");
const QString decomposedE = QStringLiteral("cafe\u0301");

bool found(const QString& query, const QString& text, const QLocale& locale = QLocale::c())
{
    return TextComparison::Search(query, locale).isFoundIn(text);
}

} // namespace

TEST(ClipKind, HasTheStringsOfTheDisk)
{
    EXPECT_EQ(rawValue(ClipKind::text), QLatin1StringView("text"));
    EXPECT_EQ(rawValue(ClipKind::url), QLatin1StringView("url"));
    EXPECT_EQ(rawValue(ClipKind::image), QLatin1StringView("image"));
    EXPECT_EQ(rawValue(ClipKind::fileURLs), QLatin1StringView("fileURLs"));
    for (const ClipKind kind : allCases<ClipKind>())
        EXPECT_EQ(fromRawValue<ClipKind>(QString(rawValue(kind))), kind);
    EXPECT_EQ(fromRawValue<ClipKind>(u"fileurls"), std::nullopt);
    EXPECT_EQ(fromRawValue<ClipKind>(u""), std::nullopt);
}

TEST(ClipItem, ContentIsKindTextPathsAndImageName)
{
    const ClipItem item = textClip(QStringLiteral("a"));
    ClipItem other = item;
    other.id = QUuid::createUuid();
    other.date = ClipItem::Date(5);
    other.pinned = true;
    other.sourceApp = QStringLiteral("org.example.editor");
    EXPECT_TRUE(item.contentEquals(other));
    EXPECT_NE(item, other);

    EXPECT_FALSE(item.contentEquals(clip(ClipKind::url, QStringLiteral("a"))));
    EXPECT_FALSE(item.contentEquals(textClip(QStringLiteral("b"))));
    EXPECT_FALSE(item.contentEquals(textClip(QStringLiteral("A"))));
    EXPECT_FALSE(imageClip(QStringLiteral("1.png")).contentEquals(imageClip(QStringLiteral("2.png"))));
    EXPECT_TRUE(imageClip(QStringLiteral("1.png")).contentEquals(imageClip(QStringLiteral("1.png"))));
}

TEST(ClipItem, PathsAreComparedInTheirOrder)
{
    const QString names = QStringLiteral("a, b");
    const ClipItem item = filesClip({QStringLiteral("/a"), QStringLiteral("/b")}, names);
    EXPECT_TRUE(item.contentEquals(filesClip({QStringLiteral("/a"), QStringLiteral("/b")}, names)));
    EXPECT_FALSE(item.contentEquals(filesClip({QStringLiteral("/b"), QStringLiteral("/a")}, names)));
    EXPECT_FALSE(item.contentEquals(filesClip({QStringLiteral("/a")}, names)));
}

TEST(ClipItem, AbsentEqualsAbsentOnly)
{
    ClipItem absent = textClip({});
    absent.text = std::nullopt;
    EXPECT_FALSE(absent.contentEquals(textClip(QString())));
    EXPECT_TRUE(absent.contentEquals(absent));
    ClipItem noPaths = filesClip({}, QStringLiteral("a"));
    noPaths.filePaths = std::nullopt;
    EXPECT_FALSE(noPaths.contentEquals(filesClip({}, QStringLiteral("a"))));
}

TEST(ClipItem, ContentIsComparedByCanonicalEquivalence)
{
    EXPECT_TRUE(textClip(composedE).contentEquals(textClip(decomposedE)));
    EXPECT_TRUE(imageClip(composedE).contentEquals(imageClip(decomposedE)));
    EXPECT_TRUE(filesClip({composedE}, {}).contentEquals(filesClip({decomposedE}, {})));
    EXPECT_FALSE(textClip(composedE).contentEquals(textClip(QStringLiteral("cafe"))));
}

TEST(TextComparison, EquivalenceHoldsAcrossOrderOfMarksAndLongForms)
{
    using TextComparison::canonicallyEquivalent;
    // A dot below and a dot above, in either order.
    EXPECT_TRUE(canonicallyEquivalent(QStringLiteral("q\u0323\u0307"), QStringLiteral("q\u0307\u0323")));
    EXPECT_TRUE(canonicallyEquivalent(QStringLiteral("\u212B"), QStringLiteral("\u00C5")));
    EXPECT_TRUE(canonicallyEquivalent(QStringLiteral("\uAC00"), QStringLiteral("\u1100\u1161")));
    // The ligature and the full-width letter are only compatible, not the same.
    EXPECT_FALSE(canonicallyEquivalent(QStringLiteral("\uFB01"), QStringLiteral("fi")));
    EXPECT_FALSE(canonicallyEquivalent(QStringLiteral("\uFF21"), QStringLiteral("A")));
    EXPECT_FALSE(canonicallyEquivalent(QStringLiteral("abc"), QStringLiteral("ab")));
    EXPECT_FALSE(canonicallyEquivalent(QStringLiteral("e"), QStringLiteral("e\u0301")));
    EXPECT_TRUE(canonicallyEquivalent(QString(), QStringLiteral("")));
}

TEST(TextComparison, SearchSetsCaseAside)
{
    EXPECT_TRUE(found(QStringLiteral("WORLD"), QStringLiteral("Hello world")));
    EXPECT_TRUE(found(QStringLiteral("\u00C9T\u00C9"), QStringLiteral("l'\u00E9t\u00E9")));
    EXPECT_TRUE(found(QStringLiteral("STRASSE"), QStringLiteral("Stra\u00DFe")));
    EXPECT_TRUE(found(QString(), QStringLiteral("anything")));
    EXPECT_FALSE(found(QStringLiteral("words"), QStringLiteral("word")));
}

TEST(TextComparison, SearchFindsFromEachPlaceOfALongText)
{
    const QString text = QStringLiteral("AaBa").repeated(1000) + QStringLiteral("aAbXa");
    EXPECT_TRUE(found(QStringLiteral("aabx"), text));
    EXPECT_TRUE(found(QStringLiteral("BXA"), text));
    EXPECT_TRUE(found(QStringLiteral("x"), text));
    EXPECT_FALSE(found(QStringLiteral("xab"), text));
    EXPECT_TRUE(found(QStringLiteral("1A"), QStringLiteral("0 11a")));
}

TEST(TextComparison, SearchSetsCaseAsideBetweenAsciiAndTheRest)
{
    const QString kelvin(QChar(0x212A)); // its small letter is the plain k
    EXPECT_TRUE(found(kelvin, QStringLiteral("a kilo")));
    EXPECT_TRUE(found(QStringLiteral("kilo"), QStringLiteral("a ") + kelvin + QStringLiteral("ilo")));
    EXPECT_FALSE(found(QStringLiteral("\u00E9"), QStringLiteral("e")));
    const QString far = QString(5000, u'x') + QStringLiteral("\u00C9t\u00C9");
    EXPECT_TRUE(found(QStringLiteral("\u00E9T"), far));
}

TEST(TextComparison, SearchSeesThroughTheWayOfComposing)
{
    EXPECT_TRUE(found(composedE, decomposedE));
    EXPECT_TRUE(found(decomposedE, composedE));
    EXPECT_FALSE(found(QStringLiteral("cafe"), composedE));
    EXPECT_FALSE(found(QStringLiteral("cafe"), decomposedE));
}

TEST(TextComparison, TheDotOfTheIBelongsToTheLocale)
{
    const QLocale turkish(QLocale::Turkish);
    EXPECT_TRUE(found(QStringLiteral("istanbul"), QStringLiteral("\u0130STANBUL"), turkish));
    EXPECT_TRUE(found(QStringLiteral("\u0131\u015F\u0131k"), QStringLiteral("I\u015EIK"), turkish));
    EXPECT_FALSE(found(QStringLiteral("istanbul"), QStringLiteral("ISTANBUL"), turkish));
    EXPECT_TRUE(found(QStringLiteral("istanbul"), QStringLiteral("ISTANBUL"), QLocale(QLocale::English)));
}

TEST(ClipItem, PreviewOfTextAndLinksIsTrimmed)
{
    EXPECT_EQ(textClip(QStringLiteral(" \n\tabc \u2029")).preview(), QStringLiteral("abc"));
    EXPECT_EQ(clip(ClipKind::url, QStringLiteral(" https://example.org ")).preview(),
              QStringLiteral("https://example.org"));
    EXPECT_EQ(textClip(QStringLiteral("abc")).preview(), textClip(QStringLiteral("abc ")).preview());
    EXPECT_FALSE(textClip(QStringLiteral("abc")).contentEquals(textClip(QStringLiteral("abc "))));
}

TEST(ClipItem, PreviewOfNothingSaysSo)
{
    EXPECT_EQ(textClip(QStringLiteral("   ")).preview(), QStringLiteral("(empty)"));
    ClipItem absent = clip(ClipKind::url, {});
    absent.text = std::nullopt;
    EXPECT_EQ(absent.preview(), QStringLiteral("(empty)"));
}

TEST(ClipItem, PreviewOfPicturesAndFiles)
{
    EXPECT_EQ(imageClip(QStringLiteral("1.png")).preview(), QStringLiteral("Image"));
    const QStringList paths{QStringLiteral("/x/a"), QStringLiteral("/x/b")};
    EXPECT_EQ(filesClip(paths, QStringLiteral(" a, b ")).preview(), QStringLiteral(" a, b "));
    EXPECT_EQ(filesClip(paths, std::nullopt).preview(), QStringLiteral("/x/a, /x/b"));
    ClipItem neither = filesClip({}, std::nullopt);
    neither.filePaths = std::nullopt;
    EXPECT_EQ(neither.preview(), QString());
}

TEST(ClipItem, DatesCountFrom2001WithTheirFraction)
{
    using namespace std::chrono_literals;
    const auto newYear2001 = std::chrono::sys_days(std::chrono::year(2001) / 1 / 1);
    EXPECT_EQ(ClipItem::dateFrom(newYear2001).count(), 0.0);
    EXPECT_EQ(ClipItem::dateFrom(newYear2001 + 1500ms).count(), 1.5);
    EXPECT_EQ(ClipItem::dateFrom(newYear2001 - 1s).count(), -1.0);
}

} // namespace orvane::tests
