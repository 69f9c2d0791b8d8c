#include "Capabilities/ColorPicker/ColorPickerCapability.h"
#include "Capabilities/ColorPicker/ColorPickerOverlayView.h"
#include "Capabilities/ColorPicker/ColorPickerSettingsPane.h"
#include "Fakes/FakePlatform.h"
#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "OrvaneKit/Model/OrvaSettingRows.h"

#include <QApplication>
#include <QImage>

#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace std::chrono_literals;
using Disposition = EventMonitors::Disposition;

const QString id = QStringLiteral("net.lindenrow.orvane.colorpicker");

class ColorPickerTest : public testing::Test {
protected:
    ColorPickerTest() { fake.eventMonitors.pointer = {100, 800}; }

    static EventMonitors::MonitoredEvent event(EventType type, std::int64_t keycode = 0, EventFlags flags = 0)
    {
        EventMonitors::MonitoredEvent monitored;
        monitored.event.type = type;
        monitored.event.keycode = keycode;
        monitored.event.flags = flags;
        return monitored;
    }
    Disposition send(EventType type, std::int64_t keycode = 0, EventFlags flags = 0)
    {
        return fake.eventMonitors.sendToWindow(event(type, keycode, flags));
    }
    void begin()
    {
        controller.pick();
        fake.runLoop.drain();
        ASSERT_TRUE(isUp());
    }
    void moveTo(double x, double y)
    {
        fake.eventMonitors.pointer = {x, y};
        EXPECT_EQ(send(EventType::mouseMoved), Disposition::pass);
    }
    [[nodiscard]] bool isUp() const { return controller.model() != nullptr; }
    /// True if nothing of a pick is left.
    [[nodiscard]] bool isIdle() const
    {
        return !controller.isPicking() && !isUp() && fake.eventMonitors.localCount() == 0 &&
               fake.overlays.holdCount() == 0 && fake.screenCapture.capturers == 0 &&
               fake.runLoop.timerCount() == 0 && QApplication::topLevelWidgets().isEmpty();
    }
    [[nodiscard]] QString copied() const
    {
        return fake.generalPasteboard.contents().stringForType(pasteboardType::string).value_or(QString());
    }
    /// The fake display has the row and the column of a pixel in its colour.
    static QString hexOf(int x, int y)
    {
        return u'#' + QString::number(0x1000000 | y << 12 | x, 16).right(6).toUpper();
    }

    FakePlatform fake;
    KeyboardShortcuts::StateScope shortcuts;
    std::shared_ptr<ColorPickerSettings> settings =
        std::make_shared<ColorPickerSettings>(ScopedPreferences(fake.defaults, {id}));
    ColorPickerController controller{settings, Log::make({id})};
};

} // namespace

TEST_F(ColorPickerTest, AClickCopiesThePixelUnderThePointer)
{
    begin();
    moveTo(300, 650);
    EXPECT_EQ(send(EventType::leftMouseDown), Disposition::swallow);
    EXPECT_EQ(copied(), hexOf(300, 250));
    EXPECT_TRUE(isIdle());
}

TEST_F(ColorPickerTest, TheFirstSampleIsTakenWhereThePointerIs)
{
    begin();
    EXPECT_EQ(controller.model()->formatString, hexOf(100, 100));
    EXPECT_EQ(controller.model()->cursor.get(), QPointF(100, 100));
    EXPECT_EQ(controller.model()->crop.get(), QRect(93, 93, 15, 15));
}

TEST_F(ColorPickerTest, AtTheUpperLeftCornerTheCropBeginsThere)
{
    begin();
    moveTo(0, 899.5);
    EXPECT_EQ(controller.model()->formatString, hexOf(0, 0));
    EXPECT_EQ(controller.model()->crop.get(), QRect(0, 0, 15, 15));
}

TEST_F(ColorPickerTest, AtTheLowerRightCornerTheCropEndsThere)
{
    begin();
    moveTo(1439, 1);
    EXPECT_EQ(controller.model()->formatString, hexOf(1439, 899));
    EXPECT_EQ(controller.model()->crop.get(), QRect(1425, 885, 15, 15));
}

TEST_F(ColorPickerTest, APointBecomesItsUpperLeftPixelOnADisplayOfTwoPixelsForEach)
{
    fake.screens.list[0].backingScaleFactor = 2;
    begin();
    EXPECT_EQ(controller.model()->background.width, 2880);
    moveTo(300.5, 650);
    EXPECT_EQ(controller.model()->formatString, hexOf(601, 500));
    EXPECT_EQ(controller.model()->cursor.get(), QPointF(300.5, 250));
}

TEST_F(ColorPickerTest, TheFormatIsReadAfreshForEachSampleAndForTheCopy)
{
    begin();
    settings->format.set(ColorFormat::rgb);
    moveTo(10, 880);
    EXPECT_EQ(controller.model()->formatString, QStringLiteral("rgb(1, 64, 10)"));
    settings->format.set(ColorFormat::hex);
    (void)send(EventType::leftMouseDown);
    EXPECT_EQ(copied(), hexOf(10, 20));
}

TEST_F(ColorPickerTest, OnAnotherDisplayTheLastSampleStaysAndIsCopied)
{
    const Rect second{{1440, 0}, {1280, 1000}};
    fake.screens.arrange(fake.screens.list + QList<Screen>{FakeScreens::screen(2, second, second)});
    begin();
    moveTo(20, 870);
    moveTo(1500, 500);
    EXPECT_EQ(controller.model()->formatString, hexOf(20, 30));
    (void)send(EventType::leftMouseDown);
    EXPECT_EQ(copied(), hexOf(20, 30));
}

TEST_F(ColorPickerTest, ThePictureIsThatOfTheDisplayWithThePointer)
{
    const Rect second{{1440, 0}, {1280, 1000}};
    fake.screens.arrange(fake.screens.list + QList<Screen>{FakeScreens::screen(2, second, second)});
    fake.eventMonitors.pointer = {1500, 500};
    begin();
    ASSERT_EQ(fake.screenCapture.requests.size(), 1u);
    EXPECT_EQ(fake.screenCapture.requests[0].display, 2u);
    EXPECT_FALSE(fake.screenCapture.requests[0].part);
    EXPECT_EQ(controller.model()->formatString, hexOf(60, 500));
}

TEST_F(ColorPickerTest, BetweenDisplaysItIsTheMainOne)
{
    fake.eventMonitors.pointer = {5000, 5000};
    begin();
    EXPECT_EQ(fake.screenCapture.requests[0].display, 1u);
    EXPECT_FALSE(controller.model()->crop.get()) << "there is no sample yet";
    (void)send(EventType::leftMouseDown);
    EXPECT_EQ(copied(), QStringLiteral("#000000"));
}

TEST_F(ColorPickerTest, WithoutADisplayNothingBegins)
{
    fake.screens.arrange({});
    controller.pick();
    EXPECT_TRUE(isIdle());
    EXPECT_TRUE(fake.screenCapture.requests.empty());
}

TEST_F(ColorPickerTest, AnyKeyCancels)
{
    begin();
    EXPECT_EQ(send(EventType::keyDown, 0), Disposition::swallow);
    EXPECT_TRUE(isIdle());
    EXPECT_EQ(copied(), QString());
}

TEST_F(ColorPickerTest, ARightClickCancels)
{
    begin();
    EXPECT_EQ(send(EventType::rightMouseDown), Disposition::swallow);
    EXPECT_TRUE(isIdle());
    EXPECT_EQ(copied(), QString());
}

TEST_F(ColorPickerTest, AModifierAndTheRepeatOfAKeyThatWasDownBeforeDontCancel)
{
    begin();
    (void)send(EventType::flagsChanged, 59, eventFlag::control);
    auto repeat = event(EventType::keyDown, 8);
    repeat.event.autorepeat = 1;
    EXPECT_EQ(fake.eventMonitors.sendToWindow(repeat), Disposition::swallow);
    EXPECT_TRUE(isUp());
}

TEST_F(ColorPickerTest, ItsOwnShortcutDoesNothingDuringAPick)
{
    constexpr std::int64_t keyC = 8;
    KeyboardShortcuts::setShortcut(
        KeyboardShortcuts::Shortcut(KeyboardShortcuts::Key{keyC}, eventFlag::control | eventFlag::option),
        KeyboardShortcuts::Name(ColorPickerController::actionID()));
    begin();
    EXPECT_EQ(send(EventType::keyDown, keyC, eventFlag::control | eventFlag::option), Disposition::swallow);
    EXPECT_TRUE(isUp());
    (void)send(EventType::keyDown, keyC, eventFlag::control);
    EXPECT_TRUE(isIdle());
}

TEST_F(ColorPickerTest, ASecondPickDuringTheCaptureOrTheSamplingDoesNothing)
{
    controller.pick();
    controller.pick();
    EXPECT_EQ(fake.screenCapture.requests.size(), 1u);
    fake.runLoop.drain();
    controller.pick();
    EXPECT_EQ(fake.screenCapture.requests.size(), 1u);
}

TEST_F(ColorPickerTest, WithoutAPictureNothingIsShownAndALaterPickWorks)
{
    fake.screenCapture.isPermitted = false;
    controller.pick();
    fake.runLoop.drain();
    EXPECT_TRUE(isIdle());
    EXPECT_EQ(fake.sound.beeps, 0);
    fake.screenCapture.isPermitted = true;
    begin();
}

TEST_F(ColorPickerTest, WhileAnotherProgramHasTheInputItIsToldByASoundAndALaterPickWorks)
{
    fake.overlays.otherHasInput = true;
    controller.pick();
    fake.runLoop.drain();
    EXPECT_TRUE(isIdle());
    EXPECT_EQ(fake.sound.beeps, 1);
    fake.overlays.otherHasInput = false;
    begin();
}

TEST_F(ColorPickerTest, TheWindowIsShownOnceTheInputIsHeldAndGetsIt)
{
    controller.pick();
    EXPECT_EQ(fake.overlays.holdCount(), 0u) << "the picture comes first";
    fake.runLoop.drain();
    EXPECT_TRUE(fake.overlays.isInputHeld());
    EXPECT_EQ(fake.overlays.prepared, std::vector{Overlays::Input::takes});
    const auto windows = QApplication::topLevelWidgets();
    ASSERT_EQ(windows.size(), 1);
    EXPECT_EQ(windows[0]->windowHandle(), fake.overlays.target);
    EXPECT_EQ(windows[0]->geometry(), QRect(0, 0, 1440, 900));
    EXPECT_EQ(windows[0]->cursor().shape(), Qt::CrossCursor);
}

TEST_F(ColorPickerTest, AfterThirtySecondsItEndsAndNothingIsCopied)
{
    begin();
    fake.runLoop.advance(30s - 1ms);
    EXPECT_TRUE(isUp());
    fake.runLoop.advance(1ms);
    EXPECT_TRUE(isIdle());
    EXPECT_EQ(copied(), QString());
}

TEST_F(ColorPickerTest, ADisplayThatGoesEndsThePickInEachState)
{
    const Rect second{{1440, 0}, {1280, 1000}};
    const auto first = fake.screens.list;
    fake.eventMonitors.pointer = {1500, 500};
    for (const bool isSampling : {false, true}) {
        fake.screens.arrange(first + QList<Screen>{FakeScreens::screen(2, second, second)});
        controller.pick();
        if (isSampling)
            fake.runLoop.drain();
        fake.screens.arrange(first);
        EXPECT_TRUE(isIdle());
        fake.runLoop.drain();
        EXPECT_TRUE(isIdle());
    }
}

TEST_F(ColorPickerTest, AnotherDisplayThatComesOrGoesDoesNotDisturb)
{
    begin();
    const Rect second{{1440, 0}, {1280, 1000}};
    fake.screens.arrange(fake.screens.list + QList<Screen>{FakeScreens::screen(2, second, second)});
    fake.screens.arrange(fake.screens.list.first(1));
    EXPECT_TRUE(isUp());
}

TEST_F(ColorPickerTest, ThePickedColourIsLogged)
{
    begin();
    (void)send(EventType::leftMouseDown);
    const auto entries = fake.log.entries();
    const bool isLogged = std::ranges::any_of(entries, [](const auto& entry) {
        return entry.level == LogLevel::info && entry.message == QStringLiteral("Picked color #064064");
    });
    EXPECT_TRUE(isLogged);
}

TEST_F(ColorPickerTest, AFormatThatIsUnknownCountsAsHex)
{
    fake.defaults.stored.insert(id + QStringLiteral(".format"), QStringLiteral("cmyk"));
    EXPECT_EQ(ColorPickerSettings(ScopedPreferences(fake.defaults, {id})).format.get(), ColorFormat::hex);
}

TEST_F(ColorPickerTest, TheLoupeIsAboveThePointerWithSharpBlocks)
{
    fake.screenCapture.color = [](std::uint32_t, int x, int y) {
        return (x + y) % 2 ? 0xFF0000u : 0x0000FFu;
    };
    begin();
    moveTo(400, 500);
    QWidget* window = QApplication::topLevelWidgets().value(0);
    QImage image(window->size(), QImage::Format_RGB32);
    window->render(&image);
    const QPointF center = ColorPickerOverlayView::loupeCenter({400, 400});
    EXPECT_EQ(center, QPointF(400, 400 - 66 - 18));
    EXPECT_EQ(image.pixel(20, 20), 0xFF0000FF) << "the background isn't dimmed";
    EXPECT_EQ(image.pixel(21, 20), 0xFFFF0000);
    // The blocks are 8.8 points wide: the middle of each has the colour of its pixel.
    for (int block = -5; block <= 5; ++block) {
        const QPoint middle = (center + QPointF(block * 8.8, 8.8)).toPoint();
        EXPECT_EQ(image.pixel(middle), (block + 1) % 2 ? 0xFFFF0000 : 0xFF0000FF) << block;
    }
    EXPECT_EQ(image.pixel((center + QPointF(66, 0)).toPoint()), 0xFFFFFFFF) << "the ring";
}

TEST_F(ColorPickerTest, ThePaneChoosesTheFormat)
{
    const AnyView pane = ColorPickerSettingsPane::make(settings);
    const auto sections = pane.all<OrvaSection>();
    ASSERT_EQ(sections.size(), 1);
    EXPECT_EQ(sections[0]->title, QStringLiteral("Format"));
    EXPECT_EQ(sections[0]->systemImage, QStringLiteral("number"));
    const auto pickers = pane.all<OrvaPickerRow>();
    ASSERT_EQ(pickers.size(), 1);
    EXPECT_EQ(pickers[0]->title, QStringLiteral("Copy color as"));
    EXPECT_EQ(pickers[0]->selection.get(), QStringLiteral("hex"));
    pickers[0]->selection.set(QStringLiteral("hsl"));
    EXPECT_EQ(settings->format.get(), ColorFormat::hsl);
    const auto callouts = pane.all<OrvaCalloutText>();
    ASSERT_EQ(callouts.size(), 1);
    EXPECT_EQ(callouts[0]->text.get(),
              QStringLiteral("Assign a shortcut above, then point at any pixel and click to copy its color. "
                             "Press Esc to cancel."));
}

TEST_F(ColorPickerTest, TheCapabilitySaysWhatItIs)
{
    const CapabilityMetadata& metadata = ColorPickerCapability::metadata();
    EXPECT_EQ(metadata.id.rawValue, id);
    EXPECT_EQ(metadata.displayName, QStringLiteral("Color Picker"));
    EXPECT_EQ(metadata.symbolName, QStringLiteral("eyedropper.halffull"));
    EXPECT_EQ(metadata.category, CapabilityCategory::system);
    const auto capability = std::make_shared<ColorPickerCapability>();
    EXPECT_TRUE(capability->menuBarContributions().isEmpty()) << "there is no controller yet";
    const auto actions = capability->hotkeyActions();
    ASSERT_EQ(actions.size(), 1);
    const auto requirements = capability->permissionRequirements();
    ASSERT_EQ(requirements.size(), 1);
    EXPECT_EQ(requirements[0].permission, SystemPermission::screenRecording);
    EXPECT_EQ(requirements[0].level, PermissionRequirement::Level::required);
}

} // namespace orvane
