// The opening of the panel, and the choice of an entry.
#include "HistoryFixture.h"

namespace orvane::tests {

namespace {

using namespace std::chrono_literals;

class HistoryChoosingTest : public HistoryFixture {
protected:
    HistoryChoosingTest() { fake.workspace.frontmost = editor; }

    void choose(const ClipItem& item)
    {
        model().onSelect(item);
        settle();
    }

    const RunningApplication editor{7, QStringLiteral("org.example.editor"), QStringLiteral("Editor")};
};

} // namespace

TEST_F(HistoryChoosingTest, OpeningShowsTheListAndTheSecondPressHides)
{
    capture(QStringLiteral("text"));
    EXPECT_FALSE(controller->panel().isVisible());
    controller->togglePanel();
    EXPECT_TRUE(controller->panel().isVisible());
    EXPECT_EQ(shown(), items());
    const RunningApplication ourselves{1, QStringLiteral("net.lindenrow.orvane"), QStringLiteral("Orvane")};
    fake.workspace.frontmost = ourselves;
    controller->togglePanel();
    EXPECT_FALSE(controller->panel().isVisible());

    settings->autoPaste.set(true);
    choose(items().first());
    EXPECT_EQ(fake.workspace.activated, QList<RunningApplication>{editor})
        << "the second press doesn't change whom the choice goes back to";
}

TEST_F(HistoryChoosingTest, TheProgramInFrontMayBeThisOne)
{
    const RunningApplication ourselves{1, QStringLiteral("net.lindenrow.orvane"), QStringLiteral("Orvane")};
    fake.workspace.frontmost = ourselves;
    settings->autoPaste.set(true);
    capture(QStringLiteral("text"));
    controller->togglePanel();
    choose(items().first());
    EXPECT_EQ(fake.workspace.activated, QList<RunningApplication>{ourselves});
}

TEST_F(HistoryChoosingTest, AChoiceGoesToThePasteboardAndIsNotCaptured)
{
    capture(QStringLiteral("one"));
    capture(QStringLiteral("two"));
    const QList<ClipItem> before = items();
    controller->togglePanel();
    choose(before.last());
    EXPECT_EQ(pasteboardText(), QStringLiteral("one"));
    EXPECT_FALSE(controller->panel().isVisible());
    controller->checkPasteboard();
    settle();
    EXPECT_EQ(items(), before) << "neither order nor dates change";
    capture(QStringLiteral("three"));
    EXPECT_EQ(items().size(), 3) << "the next copy counts again";
}

TEST_F(HistoryChoosingTest, WithAutoPasteOffNothingIsActivatedOrTyped)
{
    bool wasAsked = false;
    fake.permissions.onRead = [&] { wasAsked = true; };
    capture(QStringLiteral("text"));
    controller->togglePanel();
    choose(items().first());
    fake.runLoop.advance(1s);
    EXPECT_TRUE(fake.workspace.activated.isEmpty());
    EXPECT_EQ(pastes(), 0);
    EXPECT_FALSE(wasAsked);
}

TEST_F(HistoryChoosingTest, WithoutTrustNothingIsActivatedOrTyped)
{
    settings->autoPaste.set(true);
    fake.permissions.accessibility = false;
    capture(QStringLiteral("text"));
    controller->togglePanel();
    choose(items().first());
    fake.runLoop.advance(1s);
    EXPECT_EQ(pasteboardText(), QStringLiteral("text"));
    EXPECT_TRUE(fake.workspace.activated.isEmpty());
    EXPECT_EQ(pastes(), 0);
    EXPECT_TRUE(fake.permissions.requests.isEmpty());
}

TEST_F(HistoryChoosingTest, AutoPasteReturnsToTheProgramAndPastesAMomentLater)
{
    settings->autoPaste.set(true);
    capture(QStringLiteral("text"));
    controller->togglePanel();
    choose(items().first());
    EXPECT_EQ(fake.workspace.activated, QList<RunningApplication>{editor});
    fake.runLoop.advance(79ms);
    EXPECT_EQ(pastes(), 0);
    controller->togglePanel(); // opening the panel again doesn't stop it
    fake.runLoop.advance(1ms);
    EXPECT_EQ(pastes(), 1);
    fake.runLoop.advance(1s);
    EXPECT_EQ(pastes(), 1);
    controller->panel().hide();
}

TEST_F(HistoryChoosingTest, TheEntryIsPlacedThenThePanelHiddenThenTheProgramActivated)
{
    settings->autoPaste.set(true);
    capture(QStringLiteral("text"));
    controller->togglePanel();
    std::optional<bool> wasOpenAtPlacing;
    fake.generalPasteboard.onClear = [&] { wasOpenAtPlacing = controller->panel().isVisible(); };
    std::optional<bool> wasOpenAtAsking;
    fake.permissions.onRead = [&] { // asked before the program is activated
        wasOpenAtAsking = controller->panel().isVisible();
        EXPECT_TRUE(fake.workspace.activated.isEmpty());
        EXPECT_EQ(pasteboardText(), QStringLiteral("text"));
    };
    choose(items().first());
    EXPECT_EQ(wasOpenAtPlacing, true);
    EXPECT_EQ(wasOpenAtAsking, false);
    EXPECT_EQ(fake.workspace.activated, QList<RunningApplication>{editor});
}

TEST_F(HistoryChoosingTest, ANameThatIsAPathReachesNoFile)
{
    QDir().mkpath(archive.imagesPath());
    for (const QString& name : {QStringLiteral("../outside.png"), QStringLiteral("..")}) {
        QFile outside(archive.directory + QStringLiteral("/outside.png"));
        ASSERT_TRUE(outside.open(QIODevice::WriteOnly));
        outside.write(picture("PNG"));
        outside.close();
        archive.save({ClipItem{
            .id = QUuid::createUuid(), .kind = ClipKind::image, .imageFileName = name, .date = {}}});
        load();
        ASSERT_EQ(items().size(), 1);
        EXPECT_EQ(model().imageProvider(name), std::nullopt);
        fake.generalPasteboard.copyString(QStringLiteral("before"));
        choose(items().first());
        EXPECT_TRUE(pasteboardTypes().isEmpty()) << "as for a file that has gone";
    }
}

TEST_F(HistoryChoosingTest, TwoQuickChoicesPasteTwice)
{
    settings->autoPaste.set(true);
    capture(QStringLiteral("one"));
    capture(QStringLiteral("two"));
    choose(items()[0]);
    fake.runLoop.advance(40ms);
    choose(items()[1]);
    fake.runLoop.advance(40ms);
    EXPECT_EQ(pastes(), 1);
    fake.runLoop.advance(40ms);
    EXPECT_EQ(pastes(), 2);
}

TEST_F(HistoryChoosingTest, ThePasteWaitsUntilOthersGetTheEntry)
{
    settings->autoPaste.set(true);
    capture(QStringLiteral("text"));
    fake.generalPasteboard.setHeld(true);
    choose(items().first());
    fake.runLoop.advance(5s);
    EXPECT_EQ(pastes(), 0);
    fake.generalPasteboard.setHeld(false);
    settle();
    EXPECT_EQ(pastes(), 1);
    fake.runLoop.advance(5s);
    EXPECT_EQ(pastes(), 1);
}

TEST_F(HistoryChoosingTest, AnotherProgramsCopyIsNeverPastedInsteadOfTheEntry)
{
    settings->autoPaste.set(true);
    capture(QStringLiteral("text"));
    choose(items().first());
    fake.runLoop.advance(79ms);
    fake.generalPasteboard.copyString(QStringLiteral("other"));
    fake.runLoop.advance(1s);
    EXPECT_EQ(pastes(), 0);

    fake.generalPasteboard.setHeld(true);
    choose(items().first());
    fake.runLoop.advance(1s);
    fake.generalPasteboard.setOwner(FakePasteboard::Owner::fails);
    fake.generalPasteboard.copyString(QStringLiteral("other"));
    fake.generalPasteboard.setHeld(false);
    settle();
    EXPECT_EQ(pastes(), 0);

    fake.generalPasteboard.setOwner(FakePasteboard::Owner::answers);
    choose(items().first());
    fake.runLoop.advance(80ms);
    EXPECT_EQ(pastes(), 1) << "the next choice is pasted again";
}

TEST_F(HistoryChoosingTest, TheEndOfTheControllerEndsAPasteThatWaits)
{
    settings->autoPaste.set(true);
    capture(QStringLiteral("text"));
    choose(items().first());
    controller.reset();
    fake.runLoop.advance(1s);
    EXPECT_EQ(pastes(), 0);
}

TEST_F(HistoryChoosingTest, ThePasteComesAlsoWhenTheProgramHasGone)
{
    settings->autoPaste.set(true);
    capture(QStringLiteral("text"));
    controller->togglePanel();
    fake.workspace.ended.append(editor.processIdentifier);
    choose(items().first());
    fake.runLoop.advance(80ms);
    EXPECT_EQ(pastes(), 1);
}

TEST_F(HistoryChoosingTest, APinMakesNoDifferenceAndStays)
{
    settings->autoPaste.set(true);
    capture(QStringLiteral("one"));
    capture(QStringLiteral("two"));
    model().onTogglePin(items().last());
    const QList<ClipItem> before = items();
    choose(before.last());
    fake.runLoop.advance(80ms);
    EXPECT_EQ(pastes(), 1);
    EXPECT_EQ(pasteboardText(), QStringLiteral("one"));
    EXPECT_EQ(items(), before);
}

TEST_F(HistoryChoosingTest, APictureIsReadWithoutHoldingTheMainThread)
{
    const QByteArray png = picture("PNG");
    capture({{pasteboardType::png, png}});
    fake.generalPasteboard.copyString(QStringLiteral("other"));
    controller->togglePanel();
    model().onSelect(items().first());
    EXPECT_EQ(pasteboardText(), QStringLiteral("other"));
    settle();
    EXPECT_EQ(fake.generalPasteboard.contents().data.value(pasteboardType::png), png);
    EXPECT_EQ(pasteboardTypes(), QStringList{pasteboardType::png});
    EXPECT_FALSE(controller->panel().isVisible());
}

TEST_F(HistoryChoosingTest, APictureWhoseFileHasGoneLeavesThePasteboardEmptyAndIsPasted)
{
    settings->autoPaste.set(true);
    capture({{pasteboardType::png, picture("PNG")}});
    ASSERT_TRUE(QDir(archive.imagesPath()).removeRecursively());
    controller->togglePanel();
    choose(items().first());
    EXPECT_TRUE(pasteboardTypes().isEmpty());
    fake.runLoop.advance(80ms);
    EXPECT_EQ(pastes(), 1);
    EXPECT_EQ(items().size(), 1) << "the entry stays";
}

TEST_F(HistoryChoosingTest, OfTwoQuickChoicesTheLaterOneIsOnThePasteboard)
{
    capture({{pasteboardType::png, picture("PNG")}});
    capture(QStringLiteral("text"));
    model().onSelect(items()[1]);
    model().onSelect(items()[0]);
    settle();
    EXPECT_EQ(pasteboardText(), QStringLiteral("text"));
}

TEST_F(HistoryChoosingTest, ACopyThatIsStillOnItsWayIsNotTakenForTheChoice)
{
    capture(QStringLiteral("text"));
    fake.generalPasteboard.setOwner(FakePasteboard::Owner::hangs);
    capture(QStringLiteral("slow"));
    choose(items().first());
    fake.generalPasteboard.setOwner(FakePasteboard::Owner::answers);
    settle();
    EXPECT_EQ(itemTexts(), QStringList{QStringLiteral("text")});
}

TEST_F(HistoryChoosingTest, NoCallbackReachesAControllerThatHasEnded)
{
    capture(QStringLiteral("text"));
    const ClipItem item = items().first();
    const auto onSelect = model().onSelect;
    const auto onDelete = model().onDelete;
    const auto onTogglePin = model().onTogglePin;
    controller.reset();
    onSelect(item);
    onDelete(item);
    onTogglePin(item);
    settle();
    EXPECT_EQ(pasteboardText(), QStringLiteral("text"));
    EXPECT_EQ(savedItems(), QList<ClipItem>{item});
}

} // namespace orvane::tests
