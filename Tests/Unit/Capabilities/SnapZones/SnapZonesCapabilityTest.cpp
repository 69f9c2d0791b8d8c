// The declarations of Snap Zones, its settings, its pane and its lifecycle.
#include "Capabilities/SnapZones/SnapZonesCapability.h"
#include "Capabilities/SnapZones/SnapZonesSettingsPane.h"
#include "OrvaneKit/Model/OrvaRows.h"
#include "OrvaneKit/Model/OrvaSection.h"
#include "OrvaneKit/Theme/SystemSymbol.h"
#include "SnapZonesFixture.h"

#include <QWidget>

using namespace orvane;
using namespace orvane::tests;

namespace {

struct SnapZonesCapabilityTest : SnapZonesFixture {
    [[nodiscard]] bool isWatching() const { return fake.eventMonitors.globalCount() == 1; }
    [[nodiscard]] bool isMaximized() const { return windowFrame() == Rect{{0, 24}, {1440, 806}}; }

    CapabilityContext context{.id = {snapZonesID},
                              .preferences = ScopedPreferences(fake.defaults, snapZonesID),
                              .permissions = nullptr,
                              .serviceHost = std::make_shared<ServiceHost>(),
                              .eventTap = nullptr,
                              .logger = Log::make(snapZonesID),
                              .appInfo = {}};
    std::shared_ptr<SnapZonesCapability> capability = std::make_shared<SnapZonesCapability>();
};

struct SnapZonesSettingsTest : SnapZonesFixture {
    SnapZonesSettings& made()
    {
        controller();
        return *settings;
    }
};

struct SnapZonesPaneTest : SnapZonesFixture {
    AnyView pane()
    {
        controller();
        return SnapZonesSettingsPane::make(settings);
    }
};

} // namespace

// The settings.

TEST_F(SnapZonesSettingsTest, HaveTheirDefaults)
{
    EXPECT_TRUE(made().dragToSnap.get());
    EXPECT_EQ(made().outerGap.get(), 0);
    EXPECT_EQ(made().innerGap.get(), 0);
    EXPECT_EQ(made().edgeThreshold.get(), 8);
    EXPECT_EQ(made().cornerSize.get(), 80);
    EXPECT_EQ(made().gaps(), SnapGaps::zero);
    EXPECT_TRUE(fake.defaults.stored.isEmpty()) << "defaults are registered and not stored";
}

TEST_F(SnapZonesSettingsTest, AreReadFromTheStoreAndNotClamped)
{
    store("dragToSnap", false);
    store("outerGap", 12.5);
    store("innerGap", 7);
    store("edgeThreshold", -3.25);
    store("cornerSize", 100'000);
    EXPECT_FALSE(made().dragToSnap.get());
    EXPECT_EQ(made().gaps(), (SnapGaps{.outer = 12.5, .inner = 7}));
    EXPECT_EQ(made().edgeThreshold.get(), -3.25);
    EXPECT_EQ(made().cornerSize.get(), 100'000);
}

TEST_F(SnapZonesSettingsTest, AStoredValueThatIsNoNumberIsMissing)
{
    for (const QVariant& value : {QVariant(QStringLiteral("16")), QVariant(true), QVariant(QStringList()),
                                  QVariant(QByteArray("16")), QVariant(QVariantMap())}) {
        for (const char* key : {"outerGap", "innerGap", "edgeThreshold", "cornerSize"})
            store(key, value);
        const SnapZonesSettings read(ScopedPreferences(fake.defaults, snapZonesID));
        EXPECT_EQ(read.gaps(), SnapGaps::zero) << value.typeName();
        EXPECT_EQ(read.edgeThreshold.get(), 8) << value.typeName();
        EXPECT_EQ(read.cornerSize.get(), 80) << value.typeName();
    }
}

TEST_F(SnapZonesSettingsTest, AreWrittenThroughAtEachSet)
{
    made().dragToSnap.set(false);
    made().outerGap.set(1.5);
    made().innerGap.set(2.5);
    made().edgeThreshold.set(3.5);
    made().cornerSize.set(4.5);
    EXPECT_EQ(stored("dragToSnap"), QVariant(false));
    EXPECT_EQ(stored("outerGap"), QVariant(1.5));
    EXPECT_EQ(stored("innerGap"), QVariant(2.5));
    EXPECT_EQ(stored("edgeThreshold"), QVariant(3.5));
    EXPECT_EQ(stored("cornerSize"), QVariant(4.5));
}

TEST_F(SnapZonesSettingsTest, SensitivityAndCornerHoldForTheNextMotion)
{
    controller().start();
    beginMoving();
    drag({20, 450});
    EXPECT_EQ(state(), SnapDrag::State::moving);
    settings->edgeThreshold.set(30);
    drag({20, 450});
    EXPECT_EQ(controller().drag().target()->zone, SnapZone::leftHalf);
    drag({20, 780});
    EXPECT_EQ(controller().drag().target()->zone, SnapZone::leftHalf);
    settings->cornerSize.set(160);
    drag({20, 780});
    EXPECT_EQ(controller().drag().target()->zone, SnapZone::topLeft);
}

// The pane.

TEST_F(SnapZonesPaneTest, HasItsSectionsInOrder)
{
    const auto sections = pane().all<OrvaSection>();
    ASSERT_EQ(sections.size(), 3);
    EXPECT_EQ(sections[0]->title, QStringLiteral("Drag to Snap"));
    EXPECT_EQ(sections[0]->systemImage, QStringLiteral("rectangle.split.2x1"));
    EXPECT_EQ(sections[0]->footnote->get(),
              QStringLiteral("Drag a window to the left/right edge for halves, a corner for quarters, or the "
                             "top to maximize."));
    EXPECT_EQ(sections[1]->title, QStringLiteral("Spacing"));
    EXPECT_EQ(sections[1]->systemImage, QStringLiteral("square.dashed"));
    EXPECT_EQ(sections[2]->title, QStringLiteral("Edge Detection"));
    EXPECT_EQ(sections[2]->systemImage, QStringLiteral("dot.viewfinder"));
    const auto callouts = pane().all<OrvaCalloutText>();
    ASSERT_EQ(callouts.size(), 1);
    EXPECT_EQ(callouts[0]->text.get(),
              QStringLiteral("Assign keyboard shortcuts for halves, quarters, maximize, and Snap Layouts in "
                             "the Keyboard Shortcuts section above."));
}

TEST_F(SnapZonesPaneTest, TheToggleIsBound)
{
    const auto toggles = pane().all<OrvaToggleRow>();
    ASSERT_EQ(toggles.size(), 1);
    EXPECT_EQ(toggles[0]->title.get(), QStringLiteral("Snap windows when dragged to a screen edge"));
    EXPECT_TRUE(toggles[0]->isOn.get());
    toggles[0]->isOn.set(false);
    EXPECT_FALSE(settings->dragToSnap.get());
}

TEST_F(SnapZonesPaneTest, TheSlidersAreBoundInTheirRangesWithoutSteps)
{
    const AnyView view = pane();
    const struct {
        const char* title;
        Setting<double>& setting;
        double lower;
        double upper;
    } expected[]{{"Gap from screen edges", settings->outerGap, 0, 40},
                 {"Gap between windows", settings->innerGap, 0, 40},
                 {"Edge sensitivity", settings->edgeThreshold, 2, 30},
                 {"Corner size", settings->cornerSize, 40, 160}};
    const auto sliders = view.all<OrvaSliderRow>();
    ASSERT_EQ(sliders.size(), 4);
    for (qsizetype index = 0; index < 4; ++index) {
        const auto& [title, setting, lower, upper] = expected[index];
        EXPECT_EQ(sliders[index]->title, QLatin1String(title));
        EXPECT_EQ(sliders[index]->range.lower, lower);
        EXPECT_EQ(sliders[index]->range.upper, upper);
        EXPECT_FALSE(sliders[index]->step) << title;
        sliders[index]->value.set(17.5);
        EXPECT_EQ(setting.get(), 17.5) << title;
    }
}

TEST_F(SnapZonesPaneTest, TheDetailIsTheValueTruncated)
{
    const AnyView view = pane();
    const auto slider = view.all<OrvaSliderRow>().first();
    EXPECT_EQ(slider->detail.get(), QStringLiteral("0 pt"));
    const struct {
        double value;
        const char* text;
    } cases[]{{12.99, "12 pt"}, {40, "40 pt"}, {-0.5, "0 pt"}, {-3.7, "-3 pt"}, {3e9, "3000000000 pt"}};
    for (const auto& [value, text] : cases) {
        settings->outerGap.set(value);
        EXPECT_EQ(slider->detail.get(), QLatin1String(text)) << value;
    }
    int changes = 0;
    const Cancellables subscriptions = slider->detail.onChange([&] { ++changes; });
    settings->outerGap.set(5);
    EXPECT_EQ(changes, 1);
}

TEST_F(SnapZonesPaneTest, CanBeRendered)
{
    const std::unique_ptr<QWidget> widget(pane().makeWidget());
    EXPECT_GT(widget->sizeHint().height(), 0);
}

// The capability.

TEST_F(SnapZonesCapabilityTest, WhatItDeclares)
{
    const CapabilityMetadata& metadata = SnapZonesCapability::metadata();
    EXPECT_EQ(metadata.id.rawValue, snapZonesID);
    EXPECT_EQ(metadata.displayName, QStringLiteral("Snap Zones"));
    EXPECT_EQ(metadata.summary,
              QStringLiteral("Drag windows to the edges — or use shortcuts — to snap them into "
                             "halves, quarters, or fullscreen."));
    EXPECT_EQ(metadata.symbolName, QStringLiteral("rectangle.split.2x2"));
    EXPECT_EQ(metadata.category, CapabilityCategory::windowing);

    const auto requirements = capability->permissionRequirements();
    ASSERT_EQ(requirements.size(), 1);
    EXPECT_EQ(requirements[0].permission, SystemPermission::accessibility);
    EXPECT_EQ(requirements[0].level, PermissionRequirement::Level::required);
    EXPECT_EQ(requirements[0].note, QStringLiteral("Move and resize the windows of other apps."));
}

TEST_F(SnapZonesCapabilityTest, OffersElevenShortcutsInOrderActiveOrNot)
{
    const auto actions = capability->hotkeyActions();
    const std::pair<const char*, const char*> expected[]{
        {"snapzones.leftHalf", "Snap: Left Half"},      {"snapzones.rightHalf", "Snap: Right Half"},
        {"snapzones.topHalf", "Snap: Top Half"},        {"snapzones.bottomHalf", "Snap: Bottom Half"},
        {"snapzones.topLeft", "Snap: Top Left"},        {"snapzones.topRight", "Snap: Top Right"},
        {"snapzones.bottomLeft", "Snap: Bottom Left"},  {"snapzones.bottomRight", "Snap: Bottom Right"},
        {"snapzones.maximize", "Snap: Maximize"},       {"snapzones.center", "Snap: Center"},
        {"snapzones.showLayouts", "Show Snap Layouts"},
    };
    ASSERT_EQ(actions.size(), 11);
    for (qsizetype index = 0; index < actions.size(); ++index) {
        EXPECT_EQ(actions[index].id, QLatin1String(expected[index].first));
        EXPECT_EQ(actions[index].title, QLatin1String(expected[index].second));
    }
}

TEST_F(SnapZonesCapabilityTest, AShortcutWithoutAControllerDoesNothing)
{
    for (const HotkeyAction& action : capability->hotkeyActions())
        action.handler();
    EXPECT_EQ(callCount(), 0u);
}

TEST_F(SnapZonesCapabilityTest, AShortcutSnapsItsZone)
{
    const auto actions = capability->hotkeyActions();
    capability->activate(context);
    for (std::size_t index = 0; index < allCases<SnapZone>().size(); ++index) {
        moveWindow(start);
        actions[static_cast<qsizetype>(index)].handler();
        const Rect frame = SnapZoneCalculator::frame(allCases<SnapZone>()[index],
                                                     fake.screens.list.first().visibleFrame, SnapGaps::zero);
        EXPECT_EQ(windowFrame(), (Rect{{frame.minX(), 900 - frame.maxY()}, frame.size}))
            << title(allCases<SnapZone>()[index]).toStdString();
    }
}

TEST_F(SnapZonesCapabilityTest, AShortcutHoldsTheCapabilityWeakly)
{
    const auto actions = capability->hotkeyActions();
    const std::weak_ptr<SnapZonesCapability> weak = capability;
    capability->activate(context);
    capability.reset();
    EXPECT_TRUE(weak.expired());
    for (const HotkeyAction& action : actions)
        action.handler();
    EXPECT_EQ(callCount(), 0u);
}

TEST_F(SnapZonesCapabilityTest, TheLayoutsShortcutTogglesThePanel)
{
    capability->activate(context);
    const HotkeyAction action = capability->hotkeyActions().last();
    action.handler();
    EXPECT_EQ(fake.eventMonitors.globalCount(), 2u) << "the drags' and the panel's";
    action.handler();
    EXPECT_EQ(fake.eventMonitors.globalCount(), 1u);
}

TEST_F(SnapZonesCapabilityTest, TheMenuHasTwoEntriesOnceThereIsAController)
{
    EXPECT_TRUE(capability->menuBarContributions().isEmpty());
    capability->activate(context);
    const auto items = capability->menuBarContributions();
    ASSERT_EQ(items.size(), 2);
    EXPECT_EQ(items[0].id, QStringLiteral("snapzones.maximize"));
    EXPECT_EQ(items[0].title, QStringLiteral("Maximize Window"));
    EXPECT_EQ(items[0].systemImage, QStringLiteral("rectangle.fill"));
    EXPECT_EQ(items[1].id, QStringLiteral("snapzones.layouts"));
    EXPECT_EQ(items[1].title, QStringLiteral("Snap Layouts…"));
    EXPECT_EQ(items[1].systemImage, QStringLiteral("rectangle.split.2x2"));

    items[0].action();
    EXPECT_TRUE(isMaximized());
    items[1].action();
    EXPECT_EQ(fake.eventMonitors.globalCount(), 2u);
}

TEST_F(SnapZonesCapabilityTest, EverySymbolThatItNamesIsInTheFamily)
{
    for (const char* name :
         {"rectangle.split.2x2", "rectangle.fill", "rectangle.split.2x1", "square.dashed", "dot.viewfinder"})
        EXPECT_TRUE(SystemSymbol::exists(QLatin1String(name))) << name;
    for (const SnapZone zone : allCases<SnapZone>())
        EXPECT_TRUE(SystemSymbol::exists(symbol(zone))) << symbol(zone).toStdString();
}

TEST_F(SnapZonesCapabilityTest, ItsLife)
{
    capability->install(context);
    EXPECT_TRUE(capability->menuBarContributions().isEmpty());
    capability->activate(context);
    EXPECT_TRUE(isWatching());
    EXPECT_EQ(context.serviceHost->runningCount(), 1);

    capability->deactivate();
    EXPECT_FALSE(isWatching());
    EXPECT_EQ(context.serviceHost->runningCount(), 0);
    EXPECT_EQ(capability->menuBarContributions().size(), 2) << "the controller stays";
    capability->menuBarContributions()[0].action();
    EXPECT_TRUE(isMaximized());

    store("outerGap", 10);
    store("other", 1);
    fake.defaults.stored.insert(QStringLiteral("elsewhere.outerGap"), 3);
    capability->uninstall(context);
    EXPECT_TRUE(capability->menuBarContributions().isEmpty());
    EXPECT_FALSE(stored("outerGap").isValid());
    EXPECT_FALSE(stored("other").isValid());
    EXPECT_TRUE(fake.defaults.stored.contains(QStringLiteral("elsewhere.outerGap")));
}

TEST_F(SnapZonesCapabilityTest, DeactivatedAfterItsServicesWereStopped)
{
    capability->activate(context);
    context.serviceHost->stopAll();
    EXPECT_FALSE(isWatching());
    capability->deactivate();
    capability->activate(context);
    EXPECT_TRUE(isWatching());
}

TEST_F(SnapZonesCapabilityTest, ThePaneMakesTheControllerAndActivatesNothing)
{
    const AnyView view = capability->makeSettingsPane(context);
    EXPECT_FALSE(isWatching());
    EXPECT_EQ(capability->menuBarContributions().size(), 2);
    // The same settings apply to drags.
    capability->activate(context);
    view.all<OrvaToggleRow>().first()->isOn.set(false);
    beginMoving();
    EXPECT_EQ(callCount(), 0u);
}

TEST_F(SnapZonesCapabilityTest, TheServiceRunsWhileTheMonitorsAreThere)
{
    ControllerService<SnapZonesController> service(sharedController());
    EXPECT_FALSE(service.isRunning());
    service.start();
    service.start();
    EXPECT_TRUE(service.isRunning());
    EXPECT_EQ(fake.eventMonitors.globalCount(), 1u);
    EXPECT_EQ(fake.eventMonitors.localCount(), 1u);
    service.stop();
    service.stop();
    EXPECT_FALSE(service.isRunning());
    EXPECT_EQ(fake.eventMonitors.globalCount(), 0u);
}
