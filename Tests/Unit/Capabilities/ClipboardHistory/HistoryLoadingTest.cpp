// What happens to the list while it is still being read from the disk.
#include "HistoryFixture.h"

namespace orvane::tests {

namespace {

class HistoryLoadingTest : public HistoryFixture {
protected:
    HistoryLoadingTest() { archive.save(stored); }

    /// Captures a copy that is done before the list is, while both are being read.
    void loadBehindACopy(const QString& text)
    {
        fake.generalPasteboard.copyString(text);
        controller->checkPasteboard();
        fake.runLoop.drain(); // the copy has been read and is in the pool, in front of the list
        controller->loadHistory();
        settle();
    }

    const QList<ClipItem> stored{textClip(QStringLiteral("a")), pinnedClip(QStringLiteral("b")),
                                 textClip(QStringLiteral("c"))};
    std::vector<QStringList> shownOneAfterTheOther;
    Subscription subscription = model().items.subscribeToChanges(
        [this](const QList<ClipItem>& shownItems) { shownOneAfterTheOther.push_back(texts(shownItems)); });
};

} // namespace

TEST_F(HistoryLoadingTest, TheListComesInALaterTurn)
{
    controller->loadHistory();
    EXPECT_TRUE(items().isEmpty());
    settle();
    EXPECT_EQ(items(), stored);
    EXPECT_EQ(shown(), stored);
}

TEST_F(HistoryLoadingTest, TextsBeyondTheLimitsGoWithTheLoadingAlsoFromTheFile)
{
    constexpr qsizetype mebi = qsizetype{1} << 20;
    // A character takes two bytes: these have 20 MiB each, and 16 MiB are the limit to one.
    const ClipItem tooLarge = textClip(QString(10 * mebi, u'a'));
    ClipItem pinned = pinnedClip(QString(10 * mebi, u'b'));
    QList<ClipItem> list{tooLarge, pinned};
    // Four of 16 MiB fill the 64 MiB that all may take together.
    for (const char16_t letter : {u'c', u'd', u'e', u'f'})
        list.append(textClip(QString(8 * mebi, letter)));
    list.append(textClip(QStringLiteral("beyond")));
    archive.save(list);
    load();
    const QList<ClipItem> kept = list.sliced(1, 5);
    EXPECT_TRUE(items() == kept);
    EXPECT_TRUE(savedItems() == kept);
}

TEST_F(HistoryLoadingTest, AListWithinTheLimitsIsNotWrittenAgain)
{
    const QByteArray spaced = fileContent().value().replace(",", ", ");
    QFile file(archive.historyPath());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(spaced) == spaced.size());
    file.close();
    load();
    EXPECT_EQ(items(), stored);
    EXPECT_EQ(fileContent(), spaced);
}

TEST_F(HistoryLoadingTest, ARemovalThatComesFirstLeavesNoShortenedFileBehind)
{
    archive.save({textClip(QString(qsizetype{9} << 20, u'a'))});
    controller->loadHistory();
    startTask([this]() -> Task<> { co_await controller->purge(); });
    settle();
    EXPECT_FALSE(QFileInfo::exists(archive.directory));
}

TEST_F(HistoryLoadingTest, ACopyThatComesFirstShowsAtOnceAndStandsOnTop)
{
    loadBehindACopy(QStringLiteral("new"));
    const QStringList whole{QStringLiteral("new"), QStringLiteral("a"), QStringLiteral("b"),
                            QStringLiteral("c")};
    EXPECT_EQ(shownOneAfterTheOther, std::vector<QStringList>({{QStringLiteral("new")}, whole}));
    EXPECT_EQ(itemTexts(), whole);
    EXPECT_EQ(savedItems(), items());
}

TEST_F(HistoryLoadingTest, ACopyOfWhatIsStillBeingReadKeepsItsPin)
{
    loadBehindACopy(QStringLiteral("b"));
    EXPECT_EQ(shownOneAfterTheOther.size(), 2);
    EXPECT_EQ(itemTexts(), QStringList({QStringLiteral("b"), QStringLiteral("a"), QStringLiteral("c")}));
    EXPECT_TRUE(items().first().pinned);
    EXPECT_EQ(savedItems(), items());
}

TEST_F(HistoryLoadingTest, ACopyThatComesFirstTrimsTheListThatComes)
{
    settings->maxItems.set(2);
    loadBehindACopy(QStringLiteral("new"));
    EXPECT_EQ(itemTexts(), QStringList({QStringLiteral("new"), QStringLiteral("a"), QStringLiteral("b")}));
}

TEST_F(HistoryLoadingTest, PinsDeletionsAndAClearCountForTheListThatComes)
{
    controller->loadHistory();
    model().onTogglePin(stored[0]);
    model().onDelete(stored[1]);
    controller->clearHistory();
    EXPECT_TRUE(shown().isEmpty());
    settle();
    EXPECT_EQ(itemTexts(), QStringList{QStringLiteral("a")});
    EXPECT_TRUE(items()[0].pinned);
    EXPECT_EQ(savedItems(), items());
}

TEST_F(HistoryLoadingTest, TheFileNeverLacksWhatIsStillBeingRead)
{
    controller->loadHistory();
    model().onTogglePin(stored[0]);
    fake.runLoop.drainDetached(); // the list is read and the copy saved, before the main thread knows of
                                  // either
    EXPECT_TRUE(items().isEmpty());
    ClipItem pinned = stored[0];
    pinned.pinned = true;
    EXPECT_EQ(savedItems(), QList<ClipItem>({pinned, stored[1], stored[2]}));
}

TEST_F(HistoryLoadingTest, ASaveThatWaitsInFrontOfTheLoadingDoesNotTakeALaterOneWithIt)
{
    load();
    controller->suspend(); // a save waits for the pool
    controller->loadHistory();
    model().onTogglePin(stored[0]); // and another one, which needs the list
    fake.runLoop.drainDetached();
    ClipItem pinned = stored[0];
    pinned.pinned = true;
    EXPECT_EQ(savedItems(), QList<ClipItem>({pinned, stored[1], stored[2]}));
}

TEST_F(HistoryLoadingTest, ClearingAListThatWasNeverReadKeepsItsPins)
{
    controller->clearHistory();
    settle();
    EXPECT_EQ(itemTexts(), QStringList{QStringLiteral("b")});
    EXPECT_EQ(savedItems(), items());
}

TEST_F(HistoryLoadingTest, SwitchingOffWhatWasNeverOnLeavesTheFileAsItWas)
{
    controller->suspend();
    settle();
    EXPECT_EQ(savedItems(), stored);
}

TEST_F(HistoryLoadingTest, AProgramThatEndsMeanwhileHasSavedTheWhole)
{
    controller->loadHistory();
    controller->clearHistory();
    controller.reset();
    fake.runLoop.drainDetached(); // the work that is left to the pool when the event loop has ended
    EXPECT_EQ(texts(savedItems().value_or(QList<ClipItem>())), QStringList{QStringLiteral("b")});
}

TEST_F(HistoryLoadingTest, ASecondLoadingTakesThePlaceOfTheFirst)
{
    controller->loadHistory();
    controller->clearHistory();
    controller->loadHistory();
    settle();
    EXPECT_EQ(itemTexts(), QStringList{QStringLiteral("b")});
    EXPECT_EQ(shown(), items());
    const auto cleared = shownOneAfterTheOther.size() - 1;
    EXPECT_EQ(cleared, 1) << "the first one doesn't show any more";
}

TEST_F(HistoryLoadingTest, TheListDoesNotComeTwice)
{
    controller->loadHistory();
    settle();
    const QList<ClipItem> before = items();
    model().onDelete(before.first());
    settle();
    EXPECT_EQ(items(), before.sliced(1));
}

TEST_F(HistoryLoadingTest, WithPersistOffMeanwhileTheFileStaysAsItWas)
{
    controller->loadHistory();
    settings->persist.set(false);
    controller->clearHistory();
    settle();
    EXPECT_EQ(itemTexts(), QStringList{QStringLiteral("b")});
    EXPECT_EQ(savedItems(), stored);
}

} // namespace orvane::tests
