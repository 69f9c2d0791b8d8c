#include "ClipItems.h"

#include "Capabilities/ClipboardHistory/Store/ClipboardStore.h"

#include <gtest/gtest.h>

namespace orvane::tests {

namespace {

QString name(int number)
{
    return QStringLiteral("text %1").arg(number);
}

QStringList texts(const QList<ClipItem>& items)
{
    QStringList result;
    for (const ClipItem& item : items)
        result.append(item.text.value_or(QStringLiteral("<none>")));
    return result;
}

/// Makes items with "text 1" on top.
QList<ClipItem> numbered(int count, bool pinned = false)
{
    QList<ClipItem> items;
    for (int number = 1; number <= count; ++number) {
        items.append(textClip(name(number)));
        items.last().pinned = pinned;
    }
    return items;
}

} // namespace

TEST(ClipboardStore, ANewItemGoesOnTop)
{
    ClipboardStore store{.maxItems = 10};
    store.insert(textClip(QStringLiteral("a")));
    store.insert(textClip(QStringLiteral("b")));
    EXPECT_EQ(texts(store.items), QStringList({QStringLiteral("b"), QStringLiteral("a")}));
}

TEST(ClipboardStore, AnItemCopiedAgainMovesToTheTopAsTheNewOne)
{
    ClipboardStore store{.maxItems = 10, .items = numbered(3)};
    ClipItem again = textClip(name(3));
    again.date = ClipItem::Date(42);
    again.sourceApp = QStringLiteral("org.example.editor");
    store.insert(again);
    EXPECT_EQ(texts(store.items), QStringList({name(3), name(1), name(2)}));
    EXPECT_EQ(store.items.first(), again);
}

TEST(ClipboardStore, ThePinOfTheOldEntryWins)
{
    ClipboardStore store{.maxItems = 10, .items = numbered(2)};
    store.items.append(pinnedClip(QStringLiteral("kept")));
    store.insert(textClip(QStringLiteral("kept")));
    EXPECT_EQ(texts(store.items), QStringList({QStringLiteral("kept"), name(1), name(2)}));
    EXPECT_TRUE(store.items.first().pinned);

    store.insert(pinnedClip(name(2)));
    EXPECT_EQ(store.items.first().text, name(2));
    EXPECT_FALSE(store.items.first().pinned);
}

TEST(ClipboardStore, OnlyTheFirstEntryOfTheSameContentGoes)
{
    ClipboardStore store{.maxItems = 10};
    store.items = {textClip(QStringLiteral("a")), pinnedClip(QStringLiteral("b")),
                   textClip(QStringLiteral("b"))};
    store.insert(textClip(QStringLiteral("b")));
    EXPECT_EQ(texts(store.items),
              QStringList({QStringLiteral("b"), QStringLiteral("a"), QStringLiteral("b")}));
    EXPECT_TRUE(store.items.first().pinned);
    EXPECT_FALSE(store.items.last().pinned);
}

TEST(ClipboardStore, ThePictureCopiedTwiceStaysTwice)
{
    ClipboardStore store{.maxItems = 10};
    store.insert(imageClip(QStringLiteral("1.png")));
    store.insert(imageClip(QStringLiteral("2.png")));
    EXPECT_EQ(store.items.size(), 2);
}

TEST(ClipboardStore, TheOldestUnpinnedEntryFallsOut)
{
    ClipboardStore store{.maxItems = 200, .items = numbered(200)};
    store.insert(textClip(QStringLiteral("new")));
    EXPECT_EQ(store.items.size(), 200);
    EXPECT_EQ(store.items.first().text, QStringLiteral("new"));
    EXPECT_EQ(store.items.last().text, name(199));
}

TEST(ClipboardStore, PinnedEntriesNeitherCountNorGo)
{
    ClipboardStore store{.maxItems = 20, .items = numbered(300, true)};
    for (int number = 0; number < 25; ++number)
        store.insert(textClip(QStringLiteral("free %1").arg(number)));
    EXPECT_EQ(store.items.size(), 320);
    EXPECT_EQ(std::ranges::count_if(store.items, &ClipItem::pinned), 300);
    EXPECT_EQ(store.items.first().text, QStringLiteral("free 24"));
    EXPECT_EQ(store.items[19].text, QStringLiteral("free 5"));
}

TEST(ClipboardStore, TheCapTakesFromTheEndAndKeepsTheOrder)
{
    ClipboardStore store{.maxItems = 2};
    store.items = {textClip(name(1)), pinnedClip(name(2)), textClip(name(3)), pinnedClip(name(4)),
                   textClip(name(5))};
    store.insert(textClip(name(0)));
    EXPECT_EQ(texts(store.items), QStringList({name(0), name(1), name(2), name(4)}));
}

TEST(ClipboardStore, UnpinningAppliesTheCapAtOnce)
{
    ClipboardStore store{.maxItems = 2};
    store.items = {textClip(name(1)), pinnedClip(name(2)), textClip(name(3))};
    store.togglePin(store.items[1].id);
    EXPECT_EQ(texts(store.items), QStringList({name(1), name(2)}));

    store.items.append(pinnedClip(name(4)));
    store.togglePin(store.items.last().id);
    EXPECT_EQ(texts(store.items), QStringList({name(1), name(2)}));
}

TEST(ClipboardStore, PinningLeavesTheEntryInItsPlace)
{
    ClipboardStore store{.maxItems = 10, .items = numbered(3)};
    store.togglePin(store.items[2].id);
    EXPECT_EQ(texts(store.items), QStringList({name(1), name(2), name(3)}));
    EXPECT_TRUE(store.items[2].pinned);
}

TEST(ClipboardStore, TogglingFlipsTheFirstOfThatIdOnly)
{
    ClipboardStore store{.maxItems = 10, .items = numbered(2)};
    store.items[1].id = store.items[0].id;
    store.togglePin(store.items[0].id);
    EXPECT_TRUE(store.items[0].pinned);
    EXPECT_FALSE(store.items[1].pinned);
}

TEST(ClipboardStore, TogglingAnUnknownIdDoesNotEvenTrim)
{
    ClipboardStore store{.maxItems = 1, .items = numbered(3)};
    const QList<ClipItem> before = store.items;
    store.togglePin(QUuid::createUuid());
    EXPECT_EQ(store.items, before);
}

TEST(ClipboardStore, WithACapOfZeroOnlyPinnedEntriesStay)
{
    ClipboardStore store{.maxItems = 0};
    store.items = {pinnedClip(name(1)), textClip(name(2))};
    store.insert(textClip(QStringLiteral("new")));
    EXPECT_EQ(texts(store.items), QStringList({name(1)}));
    store.insert(textClip(name(1)));
    EXPECT_EQ(texts(store.items), QStringList({name(1)}));
}

TEST(ClipboardStore, RemovingTakesEveryEntryOfThatId)
{
    ClipboardStore store{.maxItems = 10, .items = numbered(4)};
    store.items[2].id = store.items[0].id;
    store.remove(store.items[0].id);
    EXPECT_EQ(texts(store.items), QStringList({name(2), name(4)}));
    store.remove(QUuid::createUuid());
    EXPECT_EQ(store.items.size(), 2);
}

TEST(ClipboardStore, ClearingKeepsThePinnedInTheirOrder)
{
    ClipboardStore store{.maxItems = 10};
    store.items = {pinnedClip(name(1)), textClip(name(2)), pinnedClip(name(3))};
    store.clearUnpinned();
    EXPECT_EQ(texts(store.items), QStringList({name(1), name(3)}));
}

TEST(ClipboardStore, SearchLooksAtThePreviewAndKeepsTheOrder)
{
    ClipboardStore store{.maxItems = 10};
    store.items = {textClip(QStringLiteral("IMAging")), imageClip(QStringLiteral("1.png")),
                   pinnedClip(QStringLiteral("other")), textClip(QStringLiteral("primate"))};
    store.items[2].sourceApp = QStringLiteral("ima");
    const auto found = store.search(QStringLiteral("  ima "));
    ASSERT_EQ(found.size(), 3);
    EXPECT_EQ(found[0], store.items[0]);
    EXPECT_EQ(found[1], store.items[1]);
    EXPECT_EQ(found[2], store.items[3]);
    EXPECT_TRUE(store.search(QStringLiteral("png")).isEmpty());
}

TEST(ClipboardStore, SearchFindsBlankEntriesByWhatIsShownOfThem)
{
    ClipboardStore store{.maxItems = 10};
    store.items = {textClip(QStringLiteral(" \n ")), textClip(QStringLiteral("  a b \n")),
                   ClipItem{.kind = ClipKind::url}};
    EXPECT_EQ(store.search(QStringLiteral("empty")).size(), 2);
    EXPECT_EQ(store.search(QStringLiteral(" a b ")).size(), 1);
}

TEST(ClipboardStore, SearchForSpacesGivesEverything)
{
    ClipboardStore store{.maxItems = 10, .items = numbered(3)};
    EXPECT_EQ(store.search(QStringLiteral(" \n ")), store.items);
    EXPECT_EQ(store.search(QString()), store.items);
}

TEST(ClipboardStoreBudget, TheOldestUnpinnedTextsGoWhenTheyTakeTooMuchTogether)
{
    // 12 MiB each, so five of them are within 64 MiB.
    const auto large = [](QChar letter) { return textClip(QString(qsizetype{6} << 20, letter)); };
    ClipItem pinned = large(u'p');
    pinned.pinned = true;
    ClipboardStore store{.maxItems = 100, .items = {textClip(QStringLiteral("oldest")), pinned}};
    for (const char letter : {'a', 'b', 'c', 'd', 'e'})
        store.insert(large(QLatin1Char(letter)));
    EXPECT_EQ(store.items.size(), 7) << "the pinned one doesn't count";
    store.insert(large(u'f'));
    QString letters;
    for (const ClipItem& item : store.items)
        letters += item.text->at(0);
    EXPECT_EQ(letters, QStringLiteral("fedcbp"));
}

TEST(ClipboardStoreBudget, PathsCountAsTexts)
{
    EXPECT_EQ(filesClip({QStringLiteral("/a/b"), QStringLiteral("/c")}, QStringLiteral("b, c")).textBytes(),
              20);
    EXPECT_EQ(imageClip(QStringLiteral("a.png")).textBytes(), 0);
}

} // namespace orvane::tests
