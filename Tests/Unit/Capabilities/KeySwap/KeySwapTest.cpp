#include "Capabilities/KeySwap/KeySwapCapability.h"
#include "Capabilities/KeySwap/KeySwapController.h"
#include "Capabilities/KeySwap/KeySwapSettingsPane.h"
#include "Capabilities/KeySwap/KeySwapSubscriber.h"
#include "Capabilities/KeySwap/ListedApp.h"
#include "Fakes/FakePlatform.h"
#include "OrvaneCore/Input/SyntheticEvent.h"
#include "OrvaneKit/AppChooser/OrvaAppChooserPanel.h"
#include "OrvaneKit/AppChooser/OrvaAppIconView.h"
#include "OrvaneKit/Model/OrvaControls.h"
#include "OrvaneKit/Model/OrvaLayout.h"
#include "OrvaneKit/Model/OrvaSection.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>

#include <gtest/gtest.h>

using namespace orvane;

namespace {

const QString keySwapID = QStringLiteral("net.lindenrow.orvane.keyswap");
constexpr std::int64_t keyC = 8;

RunningApplication application(const char* bundleID)
{
    return {1, bundleID ? std::optional(QString::fromUtf8(bundleID)) : std::nullopt, {}};
}

Event keyEvent(std::int64_t code, EventFlags flags, EventType type = EventType::keyDown)
{
    Event event;
    event.type = type;
    event.keycode = code;
    event.flags = flags;
    return event;
}

struct KeySwapTest : testing::Test {
    KeySwapTest() { eventTap->start(); }

    KeySwapController& controller()
    {
        if (!m_controller) {
            settings = std::make_shared<KeySwapSettings>(ScopedPreferences(fake.defaults, keySwapID));
            m_controller = KeySwapController::make(settings, eventTap, Log::make(keySwapID));
        }
        return *m_controller;
    }
    void start() { controller().start(); }
    void dropController() { m_controller.reset(); }
    std::shared_ptr<KeySwapController> sharedController()
    {
        controller();
        return m_controller;
    }
    void bringToFront(const std::optional<RunningApplication>& app)
    {
        fake.workspace.activate(app);
        fake.runLoop.drain();
    }
    void store(const char* key, const QVariant& value)
    {
        fake.defaults.stored[keySwapID + QLatin1Char('.') + QLatin1String(key)] = value;
    }
    [[nodiscard]] QVariant stored(const char* key) const
    {
        return fake.defaults.stored.value(keySwapID + QLatin1Char('.') + QLatin1String(key));
    }
    EventFlags send(std::int64_t code, EventFlags flags, EventType type = EventType::keyDown)
    {
        const auto passed = fake.eventTaps.send(keyEvent(code, flags, type));
        EXPECT_TRUE(passed.has_value()) << "an event was consumed";
        return passed ? passed->flags : 0;
    }

    FakePlatform fake;
    std::shared_ptr<EventTapService> eventTap =
        std::make_shared<EventTapService>(Log::make(QStringLiteral("EventTap")));
    std::shared_ptr<KeySwapSettings> settings;

private:
    std::shared_ptr<KeySwapController> m_controller;
};

} // namespace

TEST_F(KeySwapTest, TheMaskIsThatOfKeysAndModifiers)
{
    EXPECT_EQ(KeySwapSubscriber().eventMask(), EventMask{0x1C00});
}

TEST_F(KeySwapTest, PressAndReleaseOfAChordCarryTheSameModifiers)
{
    start();
    for (const EventType type : {EventType::keyDown, EventType::keyUp})
        EXPECT_EQ(send(keyC, eventFlag::control, type), eventFlag::command);
}

TEST_F(KeySwapTest, OtherBitsAndTheKeyStayAsTheyAre)
{
    start();
    const EventFlags others = eventFlag::alphaShift | 0x100 | 0x1;
    const auto passed = fake.eventTaps.send(keyEvent(keyC, eventFlag::control | eventFlag::shift | others));
    ASSERT_TRUE(passed);
    EXPECT_EQ(passed->flags, eventFlag::command | eventFlag::shift | others);
    EXPECT_EQ(passed->keycode, keyC);
}

TEST_F(KeySwapTest, OtherTypesPassUntouched)
{
    start();
    KeySwapSubscriber subscriber;
    subscriber.controller = sharedController();
    for (const EventType type : {EventType::leftMouseDown, EventType::scrollWheel, EventType::mouseMoved}) {
        Event event = keyEvent(keyC, eventFlag::control, type);
        EXPECT_EQ(subscriber.handle(type, event), EventTapDecision::pass);
        EXPECT_EQ(event.flags, eventFlag::control);
    }
}

TEST_F(KeySwapTest, InFullSwapAModifiersOwnEventIsSwappedWithItsKeyUnchanged)
{
    store("mode", QStringLiteral("fullSwap"));
    start();
    const auto passed = fake.eventTaps.send(keyEvent(59, eventFlag::control, EventType::flagsChanged));
    ASSERT_TRUE(passed);
    EXPECT_EQ(passed->flags, eventFlag::command);
    EXPECT_EQ(passed->keycode, 59);
    EXPECT_EQ(send(keyC, eventFlag::command), eventFlag::control);
}

TEST_F(KeySwapTest, OurOwnMarkedEventsAreTreatedLikeAnyOther)
{
    store("mode", QStringLiteral("fullSwap"));
    start();
    Event paste = keyEvent(9, eventFlag::command);
    SyntheticEvent::mark(paste);
    fake.eventTaps.post(EventTaps::Location::hid, paste);
    EXPECT_EQ(fake.eventTaps.delivered.back().flags, eventFlag::control);
}

TEST_F(KeySwapTest, WithModeOffTheSubscriberStaysAndTouchesNothing)
{
    store("mode", QStringLiteral("off"));
    start();
    EXPECT_EQ(fake.eventTaps.taps.size(), 1u);
    EXPECT_EQ(send(keyC, eventFlag::control), eventFlag::control);
}

TEST_F(KeySwapTest, AChangeOfModeOrListHoldsForTheVeryNextKey)
{
    fake.workspace.frontmost = application("org.example.editor");
    start();
    EXPECT_EQ(send(keyC, eventFlag::control), eventFlag::command);
    settings->mode.set(RemapMode::off);
    EXPECT_EQ(send(keyC, eventFlag::control), eventFlag::control);
    settings->mode.set(RemapMode::commonShortcuts);
    settings->excludedApps.set({QStringLiteral("org.example.*")});
    EXPECT_EQ(send(keyC, eventFlag::control), eventFlag::control);
    settings->exclusionMode.set(AppExclusionMode::allowlist);
    EXPECT_EQ(send(keyC, eventFlag::control), eventFlag::command);
}

TEST_F(KeySwapTest, UnknownStoredStringsFallBackAndAreNotRepaired)
{
    store("mode", QStringLiteral("sideways"));
    store("exclusionMode", QStringLiteral("guestlist"));
    fake.workspace.frontmost = application("com.apple.Terminal");
    start();
    EXPECT_EQ(send(keyC, eventFlag::control), eventFlag::control);
    bringToFront(application("org.example.editor"));
    EXPECT_EQ(send(keyC, eventFlag::control), eventFlag::command);
    EXPECT_EQ(send(35, eventFlag::control), eventFlag::control);
    EXPECT_EQ(stored("mode"), QStringLiteral("sideways"));
    EXPECT_EQ(stored("exclusionMode"), QStringLiteral("guestlist"));
}

TEST_F(KeySwapTest, TheFrontmostApplicationDecidesFromTheStartAndThenByNotification)
{
    fake.workspace.frontmost = application("com.apple.Terminal");
    start();
    EXPECT_EQ(send(keyC, eventFlag::control), eventFlag::control);
    fake.workspace.activate(application("org.example.editor"));
    EXPECT_EQ(send(keyC, eventFlag::control), eventFlag::control) << "the task has not run yet";
    fake.runLoop.drain();
    EXPECT_EQ(send(keyC, eventFlag::control), eventFlag::command);
    bringToFront(application("com.jetbrains.clion"));
    EXPECT_EQ(send(keyC, eventFlag::control), eventFlag::control);
}

TEST_F(KeySwapTest, AnApplicationWithoutIdentifierCountsAsUnlisted)
{
    fake.workspace.frontmost = application("com.apple.Terminal");
    start();
    for (const auto& unknown : {std::optional(application(nullptr)), std::optional<RunningApplication>()}) {
        bringToFront(application("com.apple.Terminal"));
        bringToFront(unknown);
        settings->exclusionMode.set(AppExclusionMode::denylist);
        EXPECT_EQ(send(keyC, eventFlag::control), eventFlag::command);
        settings->exclusionMode.set(AppExclusionMode::allowlist);
        EXPECT_EQ(send(keyC, eventFlag::control), eventFlag::control);
    }
}

TEST_F(KeySwapTest, AValueThatIsNoApplicationMeansNoIdentifier)
{
    fake.workspace.frontmost = application("com.apple.Terminal");
    start();
    fake.workspace.notificationCenter().post(Workspace::didActivateApplicationNotification(),
                                             {{Workspace::applicationKey(), QStringLiteral("a program")}});
    fake.runLoop.drain();
    EXPECT_EQ(send(keyC, eventFlag::control), eventFlag::command);
}

TEST_F(KeySwapTest, AnAllowlistOfTheDefaultsIsTheReverse)
{
    store("exclusionMode", QStringLiteral("allowlist"));
    fake.workspace.frontmost = application("org.gnu.Emacs");
    start();
    EXPECT_EQ(send(keyC, eventFlag::control), eventFlag::command);
    bringToFront(application("org.example.editor"));
    EXPECT_EQ(send(keyC, eventFlag::control), eventFlag::control);
}

TEST_F(KeySwapTest, StartSubscribesAndLogsStopUnsubscribes)
{
    start();
    EXPECT_EQ(fake.log.messages().last(), QStringLiteral("Keyboard remapping active"));
    EXPECT_EQ(fake.eventTaps.taps.size(), 1u);
    controller().stop();
    EXPECT_TRUE(fake.eventTaps.taps.empty());
    // The last application is kept, and overwritten by the next start.
    fake.workspace.activate(application("com.apple.Terminal"));
    fake.runLoop.drain();
    start();
    EXPECT_EQ(send(keyC, eventFlag::control), eventFlag::control);
}

TEST_F(KeySwapTest, NotificationsAfterStopAreNotHeard)
{
    fake.workspace.frontmost = application("org.example.editor");
    start();
    controller().stop();
    bringToFront(application("com.apple.Terminal"));
    EXPECT_TRUE(controller().remap({keyC, RemapFlags::control}).has_value());
}

TEST_F(KeySwapTest, TheTapDoesntKeepTheControllerAlive)
{
    start();
    dropController();
    EXPECT_EQ(send(keyC, eventFlag::control), eventFlag::control);
}

TEST_F(KeySwapTest, TheServiceRunsWhileTheSubscriberIsOnTheTap)
{
    ControllerService<KeySwapController> service(sharedController());
    service.start();
    service.start();
    EXPECT_TRUE(service.isRunning());
    EXPECT_EQ(fake.log.messages().count(QStringLiteral("Keyboard remapping active")), 1);
    service.stop();
    service.stop();
    EXPECT_FALSE(service.isRunning());
    EXPECT_TRUE(fake.eventTaps.taps.empty());
}

// Settings.

TEST_F(KeySwapTest, SettingsBeginWithTheirDefaults)
{
    controller();
    EXPECT_EQ(settings->mode.get(), RemapMode::commonShortcuts);
    EXPECT_EQ(settings->exclusionMode.get(), AppExclusionMode::denylist);
    EXPECT_EQ(settings->excludedApps.get(), AppExclusion::defaultDenylist());
    EXPECT_TRUE(fake.defaults.stored.isEmpty());
}

TEST_F(KeySwapTest, AStoredListThatIsNoListOfStringsFallsBack)
{
    store("excludedApps", QVariantList{QStringLiteral("a"), 1});
    controller();
    EXPECT_EQ(settings->excludedApps.get(), AppExclusion::defaultDenylist());
}

TEST_F(KeySwapTest, AnAppIsAddedOnceAtTheEnd)
{
    controller();
    settings->addExcludedApp(QStringLiteral("a.first"));
    settings->addExcludedApp(QStringLiteral("a.first"));
    settings->addExcludedApp(QString());
    QStringList expected = AppExclusion::defaultDenylist();
    expected.append(QStringLiteral("a.first"));
    EXPECT_EQ(stored("excludedApps").toStringList(), expected);
}

TEST_F(KeySwapTest, TheFirstEqualEntryIsRemoved)
{
    store("excludedApps", QStringList{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("a")});
    controller();
    settings->removeExcludedApp(QStringLiteral("a"));
    EXPECT_EQ(stored("excludedApps").toStringList(), (QStringList{QStringLiteral("b"), QStringLiteral("a")}));
}

// The capability.

namespace {

struct KeySwapCapabilityTest : KeySwapTest {
    CapabilityContext context{.id = {keySwapID},
                              .preferences = ScopedPreferences(fake.defaults, keySwapID),
                              .permissions = nullptr,
                              .serviceHost = std::make_shared<ServiceHost>(),
                              .eventTap = eventTap,
                              .logger = Log::make(keySwapID),
                              .appInfo = {}};
    std::shared_ptr<KeySwapCapability> capability = std::make_shared<KeySwapCapability>();
};

} // namespace

TEST_F(KeySwapCapabilityTest, WhatItDeclares)
{
    const CapabilityMetadata& metadata = KeySwapCapability::metadata();
    EXPECT_EQ(metadata.id.rawValue, keySwapID);
    EXPECT_EQ(metadata.displayName, QStringLiteral("Ctrl Shortcuts"));
    EXPECT_EQ(metadata.summary,
              QStringLiteral("Use Windows-style Ctrl+C / Ctrl+V / Ctrl+Z everywhere — Orvane "
                             "maps Ctrl to Cmd."));
    EXPECT_EQ(metadata.symbolName, QStringLiteral("command"));
    EXPECT_EQ(metadata.category, CapabilityCategory::input);
    EXPECT_TRUE(capability->hotkeyActions().isEmpty());
    EXPECT_TRUE(capability->menuBarContributions().isEmpty());

    const auto requirements = capability->permissionRequirements();
    ASSERT_EQ(requirements.size(), 2);
    EXPECT_EQ(requirements[0].permission, SystemPermission::inputMonitoring);
    EXPECT_EQ(requirements[0].level, PermissionRequirement::Level::required);
    EXPECT_EQ(requirements[0].note, QStringLiteral("See and rewrite keyboard events to remap Ctrl to Cmd."));
    EXPECT_EQ(requirements[1].permission, SystemPermission::accessibility);
    EXPECT_EQ(requirements[1].level, PermissionRequirement::Level::optional);
    EXPECT_EQ(requirements[1].note, QStringLiteral("Some macOS versions require Accessibility to modify key "
                                                   "events in secure fields."));
}

TEST_F(KeySwapCapabilityTest, ItsLifeFromActivationToUninstall)
{
    capability->activate(context);
    EXPECT_EQ(context.serviceHost->runningCount(), 1);
    EXPECT_EQ(send(keyC, eventFlag::control), eventFlag::command);
    capability->deactivate();
    EXPECT_TRUE(fake.eventTaps.taps.empty());
    EXPECT_EQ(context.serviceHost->runningCount(), 0);

    store("mode", QStringLiteral("off"));
    store("excludedApps", QStringList());
    capability->uninstall(context);
    EXPECT_TRUE(fake.defaults.stored.isEmpty());
    context.serviceHost->stopAll();
    capability->activate(context);
    EXPECT_EQ(send(keyC, eventFlag::control), eventFlag::command);
    fake.workspace.activate(application("org.vim.MacVim"));
    fake.runLoop.drain();
    EXPECT_EQ(send(keyC, eventFlag::control), eventFlag::control) << "the default list is back";
}

TEST_F(KeySwapCapabilityTest, ThePaneSharesItsSettingsWithTheRunningControllerAndActivatesNothing)
{
    const AnyView pane = capability->makeSettingsPane(context);
    EXPECT_TRUE(fake.eventTaps.taps.empty());
    capability->activate(context);
    pane.all<OrvaRadioGroup>().first()->selection.set(QStringLiteral("off"));
    EXPECT_EQ(send(keyC, eventFlag::control), eventFlag::control);
}

// The pane.

namespace {

struct KeySwapPaneTest : KeySwapTest {
    KeySwapPaneTest()
    {
        controller();
        pane = KeySwapSettingsPane::make(settings);
    }
    /// Returns the names that are shown, by the buttons that remove them.
    [[nodiscard]] QStringList listedApps() const
    {
        QStringList apps;
        for (const auto& button : pane.all<OrvaIconButton>())
            apps.append(QString(button->accessibleName).remove(QStringLiteral("Remove ")));
        return apps;
    }
    [[nodiscard]] QStringList texts() const
    {
        QStringList all;
        for (const auto& text : pane.all<OrvaText>())
            all.append(text->text.get());
        return all;
    }
    const QStringList defaultNames{
        QStringLiteral("Terminal"),
        QStringLiteral("WezTerm"),
        QStringLiteral("iTerm2"),
        QStringLiteral("JetBrains IDEs"),
        QStringLiteral("Visual Studio Code"),
        QStringLiteral("Ghostty"),
        QStringLiteral("Code - OSS"),
        QStringLiteral("Warp"),
        QStringLiteral("Alacritty (before 0.5)"),
        QStringLiteral("kitty"),
        QStringLiteral("Alacritty"),
        QStringLiteral("Emacs"),
        QStringLiteral("MacVim"),
    };

    static QWidget* openChooser()
    {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (dynamic_cast<OrvaAppChooserPanel*>(window) && window->isVisible())
                return window;
        }
        return nullptr;
    }
    static void press(QWidget& widget, Qt::Key key)
    {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QApplication::sendEvent(&widget, &event);
    }

    AnyView pane;
};

} // namespace

TEST_F(KeySwapPaneTest, SectionsInOrder)
{
    const auto sections = pane.all<OrvaSection>();
    ASSERT_EQ(sections.size(), 2);
    EXPECT_EQ(sections[0]->title, QStringLiteral("Remapping"));
    EXPECT_EQ(sections[0]->systemImage, QStringLiteral("command"));
    EXPECT_FALSE(sections[0]->footnote.has_value());
    EXPECT_EQ(sections[1]->title, QStringLiteral("App Exclusions"));
    EXPECT_EQ(sections[1]->systemImage, QStringLiteral("app.badge"));
    EXPECT_EQ(sections[1]->footnote->get(),
              QStringLiteral("Terminals and IDEs are excluded by default so Ctrl+C keeps working there."));
}

TEST_F(KeySwapPaneTest, TheModeIsARadioGroup)
{
    const auto group = pane.all<OrvaRadioGroup>().first();
    EXPECT_EQ(group->content.get(),
              (QList<OrvaPickerOption>{
                  {QStringLiteral("Off"), QStringLiteral("off")},
                  {QStringLiteral("Common shortcuts — ⌃C / ⌃V / ⌃X / ⌃Z / ⌃A become ⌘"),
                   QStringLiteral("commonShortcuts")},
                  {QStringLiteral("Swap Ctrl and Cmd everywhere"), QStringLiteral("fullSwap")}}));
    group->selection.set(QStringLiteral("fullSwap"));
    EXPECT_EQ(stored("mode"), QStringLiteral("fullSwap"));
}

TEST_F(KeySwapPaneTest, ACaptionSaysWhatTheModeDoes)
{
    const auto caption = pane.all<OrvaCaptionRow>().first();
    EXPECT_TRUE(
        caption->text.get().startsWith(QStringLiteral("Ctrl with A, C, F, N, R, S, T, V, W, X or Z ")));
    settings->mode.set(RemapMode::fullSwap);
    EXPECT_TRUE(caption->text.get().contains(QStringLiteral("acts as Ctrl and Ctrl acts as Cmd")));
    settings->mode.set(RemapMode::off);
    EXPECT_EQ(caption->text.get(), QStringLiteral("Every key stays as it is."));
}

TEST_F(KeySwapPaneTest, TheWarningShowsWhileTheModeIsFullSwapOnly)
{
    const auto conditional = pane.all<OrvaIf>().first();
    const auto* warning = conditional->content.as<OrvaCaptionRow>();
    ASSERT_NE(warning, nullptr);
    EXPECT_EQ(warning->text.get(), QStringLiteral("Full swap changes every Ctrl/Cmd shortcut — including "
                                                  "system ones. Use with care."));
    EXPECT_EQ(warning->systemImage, QStringLiteral("exclamationmark.triangle.fill"));
    EXPECT_FALSE(conditional->condition.get());
    settings->mode.set(RemapMode::fullSwap);
    EXPECT_TRUE(conditional->condition.get());
    settings->mode.set(RemapMode::off);
    EXPECT_FALSE(conditional->condition.get());
}

TEST_F(KeySwapPaneTest, TheExclusionModeIsAPicker)
{
    const auto picker = pane.all<OrvaPickerRow>().first();
    EXPECT_EQ(picker->title, QStringLiteral("Apply remapping"));
    EXPECT_EQ(
        picker->content.get(),
        (QList<OrvaPickerOption>{{QStringLiteral("Everywhere except these apps"), QStringLiteral("denylist")},
                                 {QStringLiteral("Only in these apps"), QStringLiteral("allowlist")}}));
    picker->selection.set(QStringLiteral("allowlist"));
    EXPECT_EQ(stored("exclusionMode"), QStringLiteral("allowlist"));
}

TEST_F(KeySwapPaneTest, EachAppHasARowWithAButtonThatRemovesIt)
{
    EXPECT_EQ(listedApps(), defaultNames);
    const auto buttons = pane.all<OrvaIconButton>();
    ASSERT_EQ(buttons.size(), 13);
    EXPECT_EQ(buttons[1]->systemImage, QStringLiteral("minus.circle"));
    EXPECT_EQ(buttons[1]->help, QStringLiteral("Remove"));
    buttons[1]->action();
    EXPECT_FALSE(listedApps().contains(QStringLiteral("WezTerm")));
    EXPECT_EQ(listedApps().size(), 12);
}

TEST_F(KeySwapPaneTest, AProgramIsListedByNameAndWhatIsNotInstalledIsTold)
{
    EXPECT_EQ(texts().count(QStringLiteral("Not installed")), 13);
    fake.workspace.installed = {
        {QStringLiteral("net.kovidgoyal.kitty"), QStringLiteral("Kitty Terminal"), QStringLiteral("kitty")},
        {std::nullopt, QStringLiteral("Nameless"), {}}};
    pane = KeySwapSettingsPane::make(settings);
    EXPECT_EQ(texts().count(QStringLiteral("Not installed")), 12);
    EXPECT_TRUE(texts().contains(QStringLiteral("Kitty Terminal")));
    EXPECT_EQ(pane.all<OrvaAppIcon>()[9]->iconName, QStringLiteral("kitty"));
    for (const QString& text : texts())
        EXPECT_FALSE(text.startsWith(QStringLiteral("com."))) << text.toStdString();
}

TEST(ListedApp, ProgramsThatShareAnIdentifierShareItsName)
{
    const QList<InstalledApplication> installed{
        {QStringLiteral("com.jetbrains.clion"), QStringLiteral("CLion"), QStringLiteral("clion")},
        {QStringLiteral("com.jetbrains.pycharm"), QStringLiteral("PyCharm"), QStringLiteral("pycharm")},
    };
    const QString all = QStringLiteral("com.jetbrains.*");
    EXPECT_EQ(listedApp(all, installed),
              (ListedApp{QStringLiteral("JetBrains IDEs"), QStringLiteral("clion"), true}));
    EXPECT_EQ(listedApp(all, installed.mid(1)),
              (ListedApp{QStringLiteral("PyCharm"), QStringLiteral("pycharm"), true}));
    EXPECT_EQ(listedApp(QStringLiteral("org.example.Gone"), installed),
              (ListedApp{QStringLiteral("org.example.Gone"), {}, false}));
}

TEST_F(KeySwapPaneTest, TheLastRowAddsAnApp)
{
    const auto button = pane.all<OrvaButton>().last();
    EXPECT_EQ(button->title.get(), QStringLiteral("Add App…"));
    EXPECT_EQ(button->systemImage, QStringLiteral("plus"));

    fake.workspace.installed = {{QStringLiteral("org.example.Writer"), QStringLiteral("Writer"), {}},
                                {QStringLiteral("net.kovidgoyal.kitty"), QStringLiteral("Kitty"), {}}};
    button->action();
    QWidget* chooser = openChooser();
    ASSERT_TRUE(chooser);
    const auto field = chooser->findChild<QLineEdit*>();
    field->setText(QStringLiteral("kitty"));
    press(*field, Qt::Key_Return);
    EXPECT_TRUE(chooser->isVisible()) << "it is on the list already";
    field->setText(QStringLiteral("write"));
    press(*field, Qt::Key_Return);
    EXPECT_FALSE(chooser->isVisible());

    const QStringList expected =
        AppExclusion::defaultDenylist() + QStringList{QStringLiteral("org.example.Writer")};
    QStringList names = defaultNames;
    names.replace(9, QStringLiteral("Kitty"));
    EXPECT_EQ(listedApps(), names + QStringList{QStringLiteral("Writer")}) << "at the end, and not sorted in";
    EXPECT_EQ(stored("excludedApps").toStringList(), expected);
}

TEST_F(KeySwapPaneTest, AChooserThatIsDismissedAddsNothing)
{
    fake.workspace.installed = {{QStringLiteral("org.example.Writer"), QStringLiteral("Writer"), {}}};
    pane.all<OrvaButton>().last()->action();
    QWidget* chooser = openChooser();
    ASSERT_TRUE(chooser);
    const auto field = chooser->findChild<QLineEdit*>();
    field->setText(QStringLiteral("write"));
    press(*field, Qt::Key_Escape);
    EXPECT_FALSE(chooser->isVisible());
    EXPECT_EQ(listedApps(), defaultNames);
}
