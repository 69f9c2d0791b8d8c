// The declarations of the daily wallpaper, its settings and its pane.
#include "Capabilities/DailyFrame/DailyFrameCapability.h"
#include "Capabilities/DailyFrame/DailyFrameSettingsPane.h"
#include "Capabilities/DailyFrame/WallpaperPreviewView.h"
#include "DailyFrameFixture.h"
#include "OrvaneKit/Model/OrvaControls.h"
#include "OrvaneKit/Model/OrvaLayout.h"
#include "OrvaneKit/Model/OrvaPage.h"
#include "OrvaneKit/Model/OrvaSection.h"

using namespace orvane;
using namespace orvane::tests;

namespace {

struct DailyFrameCapabilityTest : DailyFrameFixture {
    CapabilityContext context{.id = {dailyFrameID},
                              .preferences = ScopedPreferences(fake.defaults, dailyFrameID),
                              .permissions = nullptr,
                              .serviceHost = std::make_shared<ServiceHost>(),
                              .eventTap = nullptr,
                              .logger = Log::make(dailyFrameID),
                              .appInfo = {}};
    std::shared_ptr<DailyFrameCapability> capability = std::make_shared<DailyFrameCapability>();
};

struct DailyFramePaneTest : DailyFrameFixture {
    template <class Row>
    [[nodiscard]] std::shared_ptr<const Row> row(const QString& title) const
    {
        for (const auto& found : pane.all<Row>()) {
            if (titleOf(*found) == title)
                return found;
        }
        return nullptr;
    }
    static QString titleOf(const OrvaPickerRow& picker) { return picker.title; }
    static QString titleOf(const OrvaButton& button) { return button.title.get(); }
    static QString titleOf(const OrvaToggleRow& toggle) { return toggle.title.get(); }

    [[nodiscard]] bool isEnabled(const QString& title) const { return row<OrvaButton>(title)->enabled.get(); }
    [[nodiscard]] QList<OrvaForEach::Item> credit() const
    {
        return pane.all<OrvaForEach>().first()->content.get();
    }

    AnyView pane = DailyFrameSettingsPane::make(controller);
};

} // namespace

TEST_F(DailyFrameCapabilityTest, SaysWhatItIs)
{
    const CapabilityMetadata& metadata = capability->classMetadata();
    EXPECT_EQ(metadata.id.rawValue, dailyFrameID);
    EXPECT_EQ(metadata.displayName, QStringLiteral("Daily Wallpaper"));
    EXPECT_EQ(metadata.symbolName, QStringLiteral("photo.artframe"));
    EXPECT_EQ(metadata.category, CapabilityCategory::desktop);
    EXPECT_TRUE(capability->permissionRequirements().isEmpty());
}

TEST_F(DailyFrameCapabilityTest, OffersOneShortcutAndOneEntryOfTheMenu)
{
    const auto actions = capability->hotkeyActions();
    ASSERT_EQ(actions.size(), 1);
    EXPECT_EQ(actions.first().id, QStringLiteral("dailyframe.newWallpaper"));
    EXPECT_EQ(actions.first().title, QStringLiteral("New Wallpaper Now"));
    actions.first().handler();
    settle();
    EXPECT_TRUE(fake.http.requests.isEmpty()) << "there is no controller yet";

    EXPECT_TRUE(capability->menuBarContributions().isEmpty());
    (void)capability->makeSettingsPane(context);
    settle();
    EXPECT_TRUE(fake.http.requests.isEmpty()) << "a pane alone asks nothing of the network";
    const auto items = capability->menuBarContributions();
    ASSERT_EQ(items.size(), 1);
    EXPECT_EQ(items.first().id, QStringLiteral("dailyframe.change"));
    EXPECT_EQ(items.first().title, QStringLiteral("New Wallpaper Now"));
    items.first().action();
    settle();
    EXPECT_EQ(asked(bingList()), 1);
}

TEST_F(DailyFrameCapabilityTest, ChecksWhileItIsOnAndForgetsItsSettingsAtTheEnd)
{
    startTask([this]() -> Task<> { co_await capability->activate(context); });
    settle();
    EXPECT_EQ(asked(bingList()), 1);
    EXPECT_EQ(context.serviceHost->runningCount(), 1);
    EXPECT_EQ(fake.runLoop.timerCount(), 1U);
    startTask([this]() -> Task<> { co_await capability->deactivate(); });
    settle();
    EXPECT_EQ(fake.runLoop.timerCount(), 0U);
    context.preferences.set(QStringLiteral("2026-07-04"), QStringLiteral("lastChangeDay"));
    startTask([this]() -> Task<> { co_await capability->uninstall(context); });
    settle();
    EXPECT_FALSE(storedDay().isValid());
}

TEST_F(DailyFrameCapabilityTest, TheSettingsHaveTheirDefaults)
{
    EXPECT_EQ(settings->source.get(), SourceKind::bing);
    EXPECT_TRUE(settings->applyToAllDisplays.get());
    EXPECT_TRUE(settings->showCredit.get());
    EXPECT_FALSE(settings->saveToFolder.get());
    EXPECT_EQ(settings->bingMarket.get(), QStringLiteral("en-US"));
    EXPECT_TRUE(fake.defaults.stored.isEmpty());
}

TEST_F(DailyFrameCapabilityTest, AStoredSourceThatIsUnknownIsBingAndAMarketIsTakenAsItIs)
{
    context.preferences.set(QStringLiteral("Unsplash"), QStringLiteral("source"));
    context.preferences.set(QStringLiteral("xx-YY"), QStringLiteral("bingMarket"));
    const DailyFrameSettings read(context.preferences);
    EXPECT_EQ(read.source.get(), SourceKind::bing);
    EXPECT_EQ(read.bingMarket.get(), QStringLiteral("xx-YY"));
}

// The pane.

TEST_F(DailyFramePaneTest, HasItsPartsInOrder)
{
    QStringList sections;
    for (const auto& section : pane.all<OrvaSection>())
        sections.append(section->title.value_or(QString()) + u' ' + section->systemImage.value_or(QString()));
    EXPECT_EQ(sections, QStringList({QStringLiteral("Source photo.on.rectangle.angled"),
                                     QStringLiteral("Options slider.horizontal.3")}));
    QStringList buttons;
    for (const auto& button : pane.all<OrvaButton>())
        buttons.append(button->title.get() + u' ' + button->systemImage.value_or(QString()));
    EXPECT_EQ(buttons, QStringList({QStringLiteral("Previous chevron.left"),
                                    QStringLiteral("New Wallpaper arrow.triangle.2.circlepath"),
                                    QStringLiteral("Next chevron.right")}));
    QStringList toggles;
    for (const auto& toggle : pane.all<OrvaToggleRow>())
        toggles.append(toggle->title.get());
    EXPECT_EQ(toggles,
              QStringList({QStringLiteral("Apply to all displays"), QStringLiteral("Show photo credit"),
                           QStringLiteral("Save a copy to Pictures")}));
    EXPECT_EQ(pane.all<WallpaperPreview>().size(), 1);
}

TEST_F(DailyFramePaneTest, TheButtonsAreThereWhenTheyCanDoSomething)
{
    EXPECT_FALSE(isEnabled(QStringLiteral("Previous")));
    EXPECT_TRUE(isEnabled(QStringLiteral("New Wallpaper")));
    EXPECT_FALSE(isEnabled(QStringLiteral("Next")));
    serveBing({8, 7, 6, 5, 4, 3, 2, 1});
    row<OrvaButton>(QStringLiteral("New Wallpaper"))->action();
    settle();
    EXPECT_TRUE(isEnabled(QStringLiteral("Previous")));
    EXPECT_FALSE(isEnabled(QStringLiteral("Next")));
    for (int i = 0; i < 7; ++i) {
        row<OrvaButton>(QStringLiteral("Previous"))->action();
        settle();
    }
    EXPECT_EQ(currentID(), QStringLiteral("bing-1"));
    EXPECT_FALSE(isEnabled(QStringLiteral("Previous"))) << "the eighth is the last";
    EXPECT_TRUE(isEnabled(QStringLiteral("Next")));
    fake.http.answers.clear();
    row<OrvaButton>(QStringLiteral("Next"))->action();
    settle();
    for (const char* title : {"Previous", "New Wallpaper", "Next"})
        EXPECT_FALSE(isEnabled(QString::fromLatin1(title))) << title << " during a job";
}

TEST_F(DailyFramePaneTest, TheCreditIsALinkWhereThereIsOne)
{
    EXPECT_TRUE(credit().isEmpty());
    serveBing({4});
    controller->changeNow();
    settle();
    ASSERT_EQ(credit().size(), 1);
    ASSERT_TRUE(credit().first().view.as<OrvaText>());
    EXPECT_EQ(credit().first().view.as<OrvaText>()->text.get(), QStringLiteral("Credit 4"));

    WallpaperItem linked = *controller->current.get();
    linked.creditURL = QUrl(QStringLiteral("https://h/by?a=b"));
    controller->current.set(linked);
    const auto lines = credit();
    const auto* const link = lines.first().view.as<OrvaTextButton>();
    ASSERT_TRUE(link);
    EXPECT_EQ(link->title, QStringLiteral("Credit 4"));
    link->action();
    EXPECT_EQ(fake.workspace.openedURLs, QStringList{QStringLiteral("https://h/by?a=b")});

    row<OrvaToggleRow>(QStringLiteral("Show photo credit"))->isOn.set(false);
    EXPECT_TRUE(credit().isEmpty());
}

TEST_F(DailyFramePaneTest, TheBannerSaysWhyTheLastJobFailed)
{
    const auto banner = pane.all<OrvaStatusBanner>();
    ASSERT_EQ(banner.size(), 1);
    const auto shown = [this] {
        return std::ranges::any_of(pane.all<OrvaIf>(), [](const auto& conditional) {
            return conditional->content.template as<OrvaStatusBanner>() && conditional->condition.get();
        });
    };
    EXPECT_FALSE(shown());
    cutNetwork(bingList());
    controller->changeNow();
    settle();
    EXPECT_TRUE(shown());
    EXPECT_EQ(banner.first()->message.get(), QStringLiteral("No network."));
}

TEST_F(DailyFramePaneTest, AChangeOfSourceOrRegionFetchesAnew)
{
    const auto source = row<OrvaPickerRow>(QStringLiteral("Wallpaper source"));
    const auto region = row<OrvaPickerRow>(QStringLiteral("Region"));
    ASSERT_TRUE(source && region);
    EXPECT_EQ(source->content.get().size(), 2);
    EXPECT_EQ(region->content.get().size(), 12);
    EXPECT_EQ(region->selection.get(), QStringLiteral("en-US"));
    serveBing({4}, QStringLiteral("fr-FR"));
    region->selection.set(QStringLiteral("fr-FR"));
    settle();
    EXPECT_EQ(settings->bingMarket.get(), QStringLiteral("fr-FR"));
    EXPECT_EQ(currentID(), QStringLiteral("bing-4"));
    serveUnsplash({1});
    source->selection.set(QStringLiteral("unsplash"));
    settle();
    EXPECT_EQ(currentID(), QStringLiteral("unsplash-https://images.example/1.png"));
    const bool regionIsShown = std::ranges::any_of(pane.all<OrvaIf>(), [](const auto& conditional) {
        return conditional->content.template as<OrvaPickerRow>() && conditional->condition.get();
    });
    EXPECT_FALSE(regionIsShown);
}

TEST_F(DailyFramePaneTest, AllDisplaysShowsThePictureAgain)
{
    serveBing({4});
    controller->changeNow();
    settle();
    row<OrvaToggleRow>(QStringLiteral("Apply to all displays"))->isOn.set(false);
    settle();
    EXPECT_EQ(asked(bingPicture(4)), 2);
    row<OrvaToggleRow>(QStringLiteral("Save a copy to Pictures"))->isOn.set(true);
    settle();
    EXPECT_EQ(asked(bingPicture(4)), 2) << "this is only stored";
}

TEST_F(DailyFramePaneTest, ThePreviewIsMadeFromTheFileWhileItIsShown)
{
    serveBing({4});
    controller->changeNow();
    settle();
    WallpaperPreviewView view(controller);
    settle();
    EXPECT_TRUE(view.image().isNull());
    view.show();
    settle();
    EXPECT_FALSE(view.image().isNull());
    EXPECT_LE(view.image().width(), 960 * 2) << "it is small";
    QFile::remove(*controller->currentFile.get());
    controller->currentFile.set(controller->currentFile.get());
    settle();
    EXPECT_TRUE(view.image().isNull()) << "a file that is gone leaves the placeholder";
}
