#include "Capabilities/ClipboardHistory/ClipboardHistoryCapability.h"
#include "HistoryFixture.h"
#include "OrvaneCore/Capability/Capability.h"
#include "OrvaneKit/Panels/OrvaPanelWindow.h"

#include <QApplication>
#include <QFileInfo>
#include <QWidget>

#include <algorithm>

namespace orvane::tests {

namespace {

using namespace std::chrono_literals;

class ClipboardHistoryCapabilityTest : public ::testing::Test {
protected:
    void settle()
    {
        for (int turn = 0; turn < 20; ++turn) {
            fake.runLoop.drain();
            fake.runLoop.drainDetached();
        }
        fake.runLoop.drain();
    }
    void activate()
    {
        run([this]() -> Task<> { co_await capability->activate(context); });
    }
    void deactivate()
    {
        run([this]() -> Task<> {
            co_await capability->deactivate();
            context.serviceHost->stopAll();
        });
    }
    void uninstall()
    {
        run([this]() -> Task<> { co_await capability->uninstall(context); });
    }
    void run(std::function<Task<>()> body)
    {
        startTask(std::move(body));
        settle();
    }
    void copy(const QString& text)
    {
        fake.generalPasteboard.copyString(text);
        fake.runLoop.advance(1s);
        settle();
    }
    [[nodiscard]] QStringList saved() const { return texts(archive.load()); }
    void press() { capability->hotkeyActions().first().handler(); }
    static bool showsThePanel()
    {
        return std::ranges::any_of(QApplication::topLevelWidgets(), [](const QWidget* top) {
            const auto* panel = dynamic_cast<const OrvaPanelWindow*>(top);
            return panel && panel->isVisible();
        });
    }

    FakePlatform fake;
    QTemporaryDir home;
    HistoryArchive archive{home.filePath(QStringLiteral("Orvane/history"))};
    CapabilityContext context{
        .id = {historyID},
        .preferences = ScopedPreferences(fake.defaults, historyID),
        .permissions = nullptr,
        .serviceHost = std::make_shared<ServiceHost>(),
        .eventTap = nullptr,
        .logger = Log::make(historyID),
        .appInfo = {.bundleID = {}, .version = {}, .supportDirectory = archive.directory}};
    std::shared_ptr<ClipboardHistoryCapability> capability = std::make_shared<ClipboardHistoryCapability>();
};

} // namespace

TEST_F(ClipboardHistoryCapabilityTest, WhatItDeclares)
{
    const CapabilityMetadata& metadata = ClipboardHistoryCapability::metadata();
    EXPECT_EQ(metadata.id.rawValue, historyID);
    EXPECT_EQ(metadata.displayName, QStringLiteral("Clipboard History"));
    EXPECT_EQ(metadata.summary, QStringLiteral("Keep a searchable history of what you copy, and paste from a "
                                               "list \u2014 like Windows' Win+V."));
    EXPECT_EQ(metadata.symbolName, QStringLiteral("doc.on.clipboard"));
    EXPECT_EQ(metadata.category, CapabilityCategory::system);

    const auto requirements = capability->permissionRequirements();
    ASSERT_EQ(requirements.size(), 1);
    EXPECT_EQ(requirements[0].permission, SystemPermission::accessibility);
    EXPECT_EQ(requirements[0].level, PermissionRequirement::Level::optional);
    EXPECT_EQ(requirements[0].note,
              QStringLiteral("Automatically paste the chosen item into the active app."));

    const auto actions = capability->hotkeyActions();
    ASSERT_EQ(actions.size(), 1);
    EXPECT_EQ(actions[0].id, QStringLiteral("clipboardhistory.show"));
    EXPECT_EQ(actions[0].title, QStringLiteral("Show Clipboard History"));
}

TEST_F(ClipboardHistoryCapabilityTest, InstallingMakesItsFolderForItsOwnerAlone)
{
    run([this]() -> Task<> { co_await capability->install(context); });
    EXPECT_TRUE(QFileInfo(archive.directory).isDir());
    EXPECT_FALSE(QFileInfo(archive.directory).permissions() & (QFile::ReadGroup | QFile::ReadOther));
    EXPECT_TRUE(capability->menuBarContributions().isEmpty());
}

TEST_F(ClipboardHistoryCapabilityTest, InstallingSaysWhenItsFolderCannotBeMade)
{
    QFile inTheWay(home.filePath(QStringLiteral("Orvane")));
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    QString message;
    run([this, &message]() -> Task<> {
        try {
            co_await capability->install(context);
        } catch (const std::exception& error) {
            message = QString::fromUtf8(error.what());
        }
    });
    EXPECT_TRUE(message.contains(archive.directory)) << qPrintable(message);
}

TEST_F(ClipboardHistoryCapabilityTest, ActiveItCaptures)
{
    fake.generalPasteboard.copyString(QStringLiteral("before"));
    activate();
    EXPECT_EQ(context.serviceHost->runningCount(), 1);
    EXPECT_EQ(fake.runLoop.timerCount(), 0) << "nothing wakes the process until a copy is announced";
    copy(QStringLiteral("after"));
    EXPECT_EQ(saved(), QStringList{QStringLiteral("after")});
}

TEST_F(ClipboardHistoryCapabilityTest, WhereCopiesAreNotAnnouncedActiveItPolls)
{
    fake.generalPasteboard.announcesCopies = false;
    activate();
    EXPECT_EQ(fake.runLoop.timerIntervals(), std::vector{400ms});
    copy(QStringLiteral("after"));
    EXPECT_EQ(saved(), QStringList{QStringLiteral("after")});
}

TEST_F(ClipboardHistoryCapabilityTest, WhereItWouldMissCopiesItDoesNotStartAndSaysWhy)
{
    fake.generalPasteboard.limit = QStringLiteral("Every second copy would be missed.");
    QString reason;
    run([&]() -> Task<> {
        try {
            co_await capability->activate(context);
        } catch (const std::exception& error) {
            reason = QString::fromUtf8(error.what());
        }
    });
    EXPECT_EQ(reason, QStringLiteral("Every second copy would be missed."));
    copy(QStringLiteral("a"));
    EXPECT_EQ(saved(), QStringList());
}

TEST_F(ClipboardHistoryCapabilityTest, ThePollIntervalIsFlooredAndReadAtActivationOnly)
{
    fake.generalPasteboard.announcesCopies = false;
    fake.defaults.stored[historyID + QStringLiteral(".pollInterval")] = 0.05;
    activate();
    EXPECT_EQ(fake.runLoop.timerIntervals(), std::vector{150ms});
    deactivate();
    EXPECT_EQ(fake.runLoop.timerCount(), 0);
}

TEST_F(ClipboardHistoryCapabilityTest, AStoredIntervalOfTheWrongTypeIsTheUsualOne)
{
    fake.generalPasteboard.announcesCopies = false;
    fake.defaults.stored[historyID + QStringLiteral(".pollInterval")] = QStringLiteral("often");
    activate();
    EXPECT_EQ(fake.runLoop.timerIntervals(), std::vector{400ms});
}

TEST_F(ClipboardHistoryCapabilityTest, TheListOutlivesSwitchingOffAndOn)
{
    activate();
    copy(QStringLiteral("one"));
    deactivate();
    copy(QStringLiteral("while off"));
    activate();
    copy(QStringLiteral("two"));
    EXPECT_EQ(saved(), QStringList({QStringLiteral("two"), QStringLiteral("one")}));
}

TEST_F(ClipboardHistoryCapabilityTest, WithoutPersistNothingOfTheListReachesTheDisk)
{
    fake.defaults.stored[historyID + QStringLiteral(".persist")] = false;
    activate();
    copy(QStringLiteral("one"));
    deactivate();
    activate();
    copy(QStringLiteral("two"));
    deactivate();
    EXPECT_FALSE(QFileInfo::exists(archive.historyPath()));
}

TEST_F(ClipboardHistoryCapabilityTest, SwitchingOffDropsWhatIsOnItsWayAndHidesThePanel)
{
    activate();
    copy(QStringLiteral("one"));
    press();
    fake.generalPasteboard.setOwner(FakePasteboard::Owner::hangs);
    copy(QStringLiteral("hung"));
    deactivate();
    fake.generalPasteboard.setOwner(FakePasteboard::Owner::answers);
    settle();
    EXPECT_EQ(saved(), QStringList{QStringLiteral("one")});
    EXPECT_EQ(context.serviceHost->runningCount(), 0);
    EXPECT_EQ(fake.runLoop.timerCount(), 0);
}

TEST_F(ClipboardHistoryCapabilityTest, SwitchingOffHidesThePanel)
{
    activate();
    EXPECT_FALSE(showsThePanel());
    press();
    EXPECT_TRUE(showsThePanel());
    deactivate();
    EXPECT_FALSE(showsThePanel());
}

TEST_F(ClipboardHistoryCapabilityTest, TheMenuEntryOpensAndClosesThePanel)
{
    activate();
    const auto items = capability->menuBarContributions();
    items.at(0).action();
    EXPECT_TRUE(showsThePanel());
    items.at(0).action();
    EXPECT_FALSE(showsThePanel());
}

TEST_F(ClipboardHistoryCapabilityTest, SwitchingOffSaves)
{
    activate();
    archive.purge();
    deactivate();
    EXPECT_TRUE(QFileInfo::exists(archive.historyPath()));
}

TEST_F(ClipboardHistoryCapabilityTest, TheMenuHasAnEntryWhileThereIsAController)
{
    EXPECT_TRUE(capability->menuBarContributions().isEmpty());
    press(); // no program is in front
    activate();
    const auto items = capability->menuBarContributions();
    ASSERT_EQ(items.size(), 1);
    EXPECT_EQ(items[0].id, QStringLiteral("clipboardhistory.show"));
    EXPECT_EQ(items[0].title, QStringLiteral("Clipboard History\u2026"));
    EXPECT_EQ(items[0].systemImage, QStringLiteral("doc.on.clipboard"));
    deactivate();
    EXPECT_EQ(capability->menuBarContributions().size(), 1);
    uninstall();
    EXPECT_TRUE(capability->menuBarContributions().isEmpty());
}

TEST_F(ClipboardHistoryCapabilityTest, ThePaneAloneMakesTheControllerAndCapturesNothing)
{
    const AnyView pane = capability->makeSettingsPane(context);
    EXPECT_EQ(capability->menuBarContributions().size(), 1);
    EXPECT_EQ(fake.runLoop.timerCount(), 0);
    copy(QStringLiteral("text"));
    EXPECT_EQ(fake.generalPasteboard.reads, 0);
    EXPECT_FALSE(QFileInfo::exists(archive.directory));
}

TEST_F(ClipboardHistoryCapabilityTest, UninstallingRemovesFilesAndSettings)
{
    activate();
    copy(QStringLiteral("text"));
    fake.defaults.stored[historyID + QStringLiteral(".maxItems")] = 20;
    deactivate();
    uninstall();
    EXPECT_FALSE(QFileInfo::exists(archive.directory));
    EXPECT_TRUE(QFileInfo::exists(home.filePath(QStringLiteral("Orvane"))));
    EXPECT_TRUE(fake.defaults.stored.isEmpty());
    press();
}

TEST_F(ClipboardHistoryCapabilityTest, UninstallingWithoutAControllerLeavesTheFiles)
{
    archive.save({textClip(QStringLiteral("text"))});
    uninstall();
    EXPECT_EQ(saved(), QStringList{QStringLiteral("text")});
}

} // namespace orvane::tests
