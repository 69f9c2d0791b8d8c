// The home view as a tree of components: the rows of its sidebar, and the page that it shows.
#include "Orvane/Brand/OrvaneBrand.h"
#include "Orvane/Home/CapabilityDetailView.h"
#include "Orvane/Home/GeneralSettingsView.h"
#include "Orvane/Home/StatusDot.h"
#include "Unit/Orvane/HomeFixture.h"

namespace orvane::tests {
namespace {

using State = CapabilityState::Kind;
using Fill = OrvaStatusDot::Fill;

struct HomeViewTest : HomeFixture {
    [[nodiscard]] AnyView tree() const { return home(); }
    [[nodiscard]] std::shared_ptr<const OrvaSidebar> sidebar() const
    {
        return tree().all<OrvaSidebar>().constFirst();
    }
    [[nodiscard]] QList<OrvaSidebarSection> sections() const { return sidebar()->content.get(); }
    [[nodiscard]] bool showsGeneral() const { return !tree().all<GeneralSettingsView>().isEmpty(); }
    /// Returns the id of the capability whose page is shown.
    [[nodiscard]] QString shownPage() const
    {
        const auto pages = tree().all<CapabilityDetailView>();
        return pages.isEmpty() ? QString() : pages.constFirst()->entry.id().rawValue;
    }
};

TEST_F(HomeViewTest, TheSidebarHasItsWidthsAndTheWordmarkAboveTheList)
{
    const auto split = tree().all<OrvaSplit>().constFirst();
    EXPECT_EQ(split->minimumWidth, 230);
    EXPECT_EQ(split->idealWidth, 250);
    ASSERT_NE(split->header.as<OrvaneWordmark>(), nullptr);
    EXPECT_EQ(split->header.as<OrvaneWordmark>()->size, 17);
    EXPECT_EQ(OrvaSidebar::tileSize, 20);
}

TEST_F(HomeViewTest, GeneralComesFirstAndHasNoDot)
{
    add("one");
    const OrvaSidebarSection first = sections().constFirst();
    EXPECT_TRUE(first.title.isEmpty());
    ASSERT_EQ(first.rows.size(), 1);
    EXPECT_EQ(first.rows[0].title, QStringLiteral("General"));
    EXPECT_EQ(first.rows[0].systemImage, QStringLiteral("gearshape"));
    EXPECT_FALSE(first.rows[0].status.has_value());
}

TEST_F(HomeViewTest, SectionsStandInTheOrderInWhichTheirCategoriesAreMet)
{
    add("a", CapabilityCategory::system);
    add("b", CapabilityCategory::desktop);
    add("c", CapabilityCategory::system);
    add("d", CapabilityCategory::windowing);
    const QList<OrvaSidebarSection> list = sections();
    ASSERT_EQ(list.size(), 4);
    EXPECT_EQ(list[1].title, QStringLiteral("System"));
    EXPECT_EQ(list[2].title, QStringLiteral("Desktop"));
    EXPECT_EQ(list[3].title, QStringLiteral("Windows & Switching"));
    ASSERT_EQ(list[1].rows.size(), 2) << "in order of registering";
    EXPECT_EQ(list[1].rows[0].title, QStringLiteral("The a"));
    EXPECT_EQ(list[1].rows[1].title, QStringLiteral("The c"));
    EXPECT_EQ(list[1].rows[0].systemImage, QStringLiteral("eye"));
}

TEST_F(HomeViewTest, WithoutCapabilitiesThereAreNoSections)
{
    EXPECT_EQ(sections().size(), 1);
    EXPECT_TRUE(HomeView::groupedCategories({}).isEmpty());
}

TEST(StatusDot, TellsEveryStateByFillColourAndWord)
{
    const OrvaStatusDot off{Fill::hollow, OrvaColor::secondary, QStringLiteral("Off")};
    EXPECT_EQ(StatusDot::of({State::disabled}), off);
    EXPECT_EQ(StatusDot::of({State::installed}), off);
    EXPECT_EQ(StatusDot::of({State::needsPermission}),
              (OrvaStatusDot{Fill::filled, OrvaColor::orange, QStringLiteral("Needs permission")}));
    EXPECT_EQ(StatusDot::of({State::active}),
              (OrvaStatusDot{Fill::filled, OrvaColor::green, QStringLiteral("On")}));
    EXPECT_EQ(StatusDot::of(CapabilityState::failed(QStringLiteral("dark"))),
              (OrvaStatusDot{Fill::filled, OrvaColor::red, QStringLiteral("Error")}));
}

TEST_F(HomeViewTest, ADotFollowsTheStateOfItsCapability)
{
    const auto capability = add("one");
    EXPECT_EQ(sections()[1].rows[0].status->fill, Fill::hollow);
    switchOn("one");
    EXPECT_EQ(sections()[1].rows[0].status->color, OrvaColor::green);
    capability->activateError = QStringLiteral("dark");
    switchOn("one");
    EXPECT_EQ(sections()[1].rows[0].status->color, OrvaColor::red);
}

TEST_F(HomeViewTest, AFreshWindowHasNothingSelectedAndShowsTheGeneralPage)
{
    add("one");
    EXPECT_FALSE(navigation->selection.get().has_value());
    EXPECT_TRUE(showsGeneral());
    EXPECT_EQ(sidebar()->selection.get(), sections()[0].rows[0].tag) << "the row of what is shown is marked";
}

TEST_F(HomeViewTest, ChoosingARowShowsItsPage)
{
    add("one");
    add("two");
    sidebar()->selection.set(QString(sections()[1].rows[1].tag));
    EXPECT_EQ(navigation->selection.get(), HomeSelection::capability(id("two")));
    EXPECT_EQ(shownPage(), QStringLiteral("two"));
    EXPECT_FALSE(showsGeneral());

    sidebar()->selection.set(QString(sections()[0].rows[0].tag));
    EXPECT_EQ(navigation->selection.get(), HomeSelection::general());
    EXPECT_TRUE(showsGeneral());
}

TEST_F(HomeViewTest, AnUnknownIdFallsBackToTheGeneralPage)
{
    add("one");
    select("nobody");
    EXPECT_TRUE(showsGeneral());
    EXPECT_EQ(sidebar()->selection.get(), sections()[0].rows[0].tag);
}

TEST_F(HomeViewTest, ACapabilityCalledGeneralHasAPageOfItsOwn)
{
    add("general");
    select("general");
    EXPECT_EQ(shownPage(), QStringLiteral("general"));
    EXPECT_NE(sections()[0].rows[0].tag, sections()[1].rows[0].tag);
}

TEST_F(HomeViewTest, EachCapabilityHasAViewOfItsOwn)
{
    add("one");
    add("two");
    const auto keyed = tree().all<OrvaKeyed>().constFirst();
    select("one");
    const QString first = keyed->key.get();
    select("two");
    EXPECT_NE(keyed->key.get(), first);
    select("one");
    EXPECT_EQ(keyed->key.get(), first);
}

TEST(HomeNavigation, ShowingThePermissionsSelectsGeneralAndCountsUpEachTime)
{
    HomeNavigation navigation;
    EXPECT_EQ(navigation.focusPermissions.get(), 0);
    navigation.showPermissions();
    EXPECT_EQ(navigation.selection.get(), HomeSelection::general());
    EXPECT_EQ(navigation.focusPermissions.get(), 1);
    int changes = 0;
    const auto watching = navigation.focusPermissions.subscribeToChanges([&](int) { ++changes; });
    navigation.showPermissions();
    EXPECT_EQ(navigation.focusPermissions.get(), 2);
    EXPECT_EQ(changes, 1);
}

} // namespace
} // namespace orvane::tests
