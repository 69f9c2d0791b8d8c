#include "Capabilities/TextExtractor/TextExtractorCapability.h"
#include "Capabilities/TextExtractor/TextExtractorSettingsPane.h"
#include "Fakes/FakePlatform.h"
#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "OrvaneKit/Model/OrvaSettingRows.h"

#include <QApplication>
#include <QImage>
#include <QWidget>

#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace std::chrono_literals;
using Disposition = EventMonitors::Disposition;

const QString id = QStringLiteral("net.lindenrow.orvane.textextractor");
const QStringList twoLines{QStringLiteral("first"), QStringLiteral("second")};

class TextExtractorTest : public testing::Test {
protected:
    TextExtractorTest() { fake.eventMonitors.pointer = {100, 800}; }

    Disposition send(EventType type, std::int64_t keycode = 0, EventFlags flags = 0, int autorepeat = 0)
    {
        EventMonitors::MonitoredEvent monitored;
        monitored.event.type = type;
        monitored.event.keycode = keycode;
        monitored.event.flags = flags;
        monitored.event.autorepeat = autorepeat;
        return fake.eventMonitors.sendToWindow(monitored);
    }
    Disposition send(EventType type, Point pointer)
    {
        fake.eventMonitors.pointer = pointer;
        return send(type);
    }
    void begin()
    {
        controller->extract();
        fake.runLoop.drain();
        ASSERT_TRUE(isUp());
    }
    void drag(Point from, Point to)
    {
        EXPECT_EQ(send(EventType::leftMouseDown, from), Disposition::swallow);
        EXPECT_EQ(send(EventType::leftMouseDragged, to), Disposition::swallow);
        EXPECT_EQ(send(EventType::leftMouseUp, to), Disposition::swallow);
    }
    void read()
    {
        fake.runLoop.drainDetached();
        fake.runLoop.drain();
    }
    [[nodiscard]] bool isUp() const { return controller->model() != nullptr; }
    /// True if nothing of an extraction is left.
    [[nodiscard]] bool isIdle() const
    {
        return !controller->isActive() && !isUp() && fake.eventMonitors.localCount() == 0 &&
               fake.overlays.holdCount() == 0 && fake.screenCapture.capturers == 0 &&
               fake.runLoop.timerCount() == 0 && QApplication::topLevelWidgets().isEmpty();
    }
    [[nodiscard]] std::optional<QString> copied() const
    {
        return fake.generalPasteboard.contents().stringForType(pasteboardType::string);
    }
    [[nodiscard]] QString status() const
    {
        return controller->model() ? controller->model()->status.get().value_or(QStringLiteral("none"))
                                   : QStringLiteral("no window");
    }

    FakePlatform fake;
    KeyboardShortcuts::StateScope shortcuts;
    std::shared_ptr<TextExtractorSettings> settings =
        std::make_shared<TextExtractorSettings>(ScopedPreferences(fake.defaults, {id}));
    std::shared_ptr<TextExtractorController> controller =
        TextExtractorController::make(settings, Log::make({id}));
};

} // namespace

TEST_F(TextExtractorTest, TheTextInTheBoxIsCopied)
{
    fake.textRecognition.setAnyLines(twoLines);
    begin();
    drag({100, 800}, {300, 700});
    EXPECT_EQ(status(), QStringLiteral("Recognizing…"));
    read();
    EXPECT_EQ(status(), QStringLiteral("Copied ✓"));
    EXPECT_EQ(copied(), QStringLiteral("first\nsecond"));
    fake.runLoop.advance(700ms - 1ms);
    EXPECT_TRUE(isUp());
    fake.runLoop.advance(1ms);
    EXPECT_TRUE(isIdle());
}

TEST_F(TextExtractorTest, AReleaseThatIsToldTwiceIsReadOnce)
{
    fake.textRecognition.setAnyLines(twoLines);
    begin();
    drag({100, 800}, {300, 700});
    EXPECT_EQ(send(EventType::leftMouseUp, {300, 700}), Disposition::swallow);
    read();
    EXPECT_EQ(fake.textRecognition.images().size(), 1);
    EXPECT_EQ(status(), QStringLiteral("Copied ✓"));
}

TEST_F(TextExtractorTest, JoinedLinesAreOneParagraph)
{
    fake.textRecognition.setAnyLines(twoLines);
    settings->joinLines.set(true);
    begin();
    drag({100, 800}, {300, 700});
    read();
    EXPECT_EQ(copied(), QStringLiteral("first second"));
}

TEST_F(TextExtractorTest, ThePixelsOfTheBoxAreRead)
{
    begin();
    drag({100, 800}, {300, 700});
    read();
    const auto images = fake.textRecognition.images();
    ASSERT_EQ(images.size(), 1);
    EXPECT_EQ(images[0].width, 200);
    EXPECT_EQ(images[0].height, 100);
    ASSERT_EQ(images[0].pixels.size(), 200 * 100 * 4);
    // The fake display has the row and the column of a pixel in its colour; it is 900 points high.
    std::uint32_t first = 0;
    std::memcpy(&first, images[0].pixels.constData(), sizeof first);
    EXPECT_EQ(first & 0xFFFFFF, 100u << 12 | 100u);
    std::uint32_t last = 0;
    std::memcpy(&last, images[0].pixels.constData() + images[0].pixels.size() - 4, sizeof last);
    EXPECT_EQ(last & 0xFFFFFF, 199u << 12 | 299u);
}

TEST_F(TextExtractorTest, TheBoxIsScaledOnADisplayOfTwoPixelsForEachPoint)
{
    fake.screens.list[0].backingScaleFactor = 2;
    begin();
    drag({100, 800}, {300, 700});
    read();
    const auto images = fake.textRecognition.images();
    ASSERT_EQ(images.size(), 1);
    EXPECT_EQ(images[0].width, 400);
    EXPECT_EQ(images[0].height, 200);
}

TEST_F(TextExtractorTest, BothWaysOfDraggingGiveTheSameBox)
{
    const QRectF box(100, 100, 200, 100);
    for (const auto& [from, to] : {std::pair{Point{100, 800}, Point{300, 700}}, {{300, 700}, {100, 800}}}) {
        begin();
        (void)send(EventType::leftMouseDown, from);
        EXPECT_FALSE(controller->model()->selection.get());
        (void)send(EventType::leftMouseDragged, to);
        EXPECT_EQ(controller->model()->selection.get(), box);
        (void)send(EventType::keyDown);
    }
}

TEST_F(TextExtractorTest, ABoxOfEightPointsIsASlipAndOneOfNineIsRead)
{
    for (const Point to : {Point{108, 700}, Point{300, 792}}) {
        begin();
        drag({100, 800}, to);
        EXPECT_TRUE(isIdle());
    }
    begin();
    drag({100, 800}, {109, 791});
    EXPECT_EQ(status(), QStringLiteral("Recognizing…"));
    read();
    ASSERT_EQ(fake.textRecognition.images().size(), 1);
    EXPECT_EQ(fake.textRecognition.images()[0].width, 9);
    EXPECT_EQ(fake.textRecognition.images()[0].height, 9);
}

TEST_F(TextExtractorTest, AClickCancels)
{
    begin();
    EXPECT_EQ(send(EventType::leftMouseDown, {100, 800}), Disposition::swallow);
    EXPECT_EQ(send(EventType::leftMouseUp, {100, 800}), Disposition::swallow);
    EXPECT_TRUE(isIdle());
}

TEST_F(TextExtractorTest, AMotionWithoutAPressSelectsNothing)
{
    begin();
    EXPECT_EQ(send(EventType::leftMouseDragged, {300, 700}), Disposition::swallow);
    EXPECT_FALSE(controller->model()->selection.get());
}

TEST_F(TextExtractorTest, OnlyThePartOnTheDisplayIsRead)
{
    begin();
    drag({1400, 100}, {1500, -50});
    read();
    const auto images = fake.textRecognition.images();
    ASSERT_EQ(images.size(), 1);
    EXPECT_EQ(images[0].width, 40);
    EXPECT_EQ(images[0].height, 100);
}

TEST_F(TextExtractorTest, TheTextIsTrimmedAndBlanksCountAsNone)
{
    fake.textRecognition.setAnyLines(QStringList{QStringLiteral("  text \t")});
    begin();
    drag({100, 800}, {300, 700});
    read();
    EXPECT_EQ(copied(), QStringLiteral("text"));
    fake.runLoop.advance(700ms);

    fake.textRecognition.setAnyLines(QStringList{QStringLiteral("   "), QStringLiteral(" ")});
    begin();
    drag({100, 800}, {300, 700});
    read();
    EXPECT_EQ(status(), QStringLiteral("No text found"));
    EXPECT_EQ(copied(), QStringLiteral("text")) << "the pasteboard stays";
}

TEST_F(TextExtractorTest, AFailedReadingIsNoText)
{
    fake.textRecognition.setAnyLines(std::nullopt);
    begin();
    drag({100, 800}, {300, 700});
    read();
    EXPECT_EQ(status(), QStringLiteral("No text found"));
    EXPECT_FALSE(copied());
    fake.runLoop.advance(700ms);
    EXPECT_TRUE(isIdle());
}

TEST_F(TextExtractorTest, CancelledWhileItReadsTheTextIsCopiedAllTheSame)
{
    fake.textRecognition.setAnyLines(twoLines);
    begin();
    drag({100, 800}, {300, 700});
    EXPECT_EQ(send(EventType::keyDown), Disposition::swallow);
    EXPECT_TRUE(isIdle());
    read();
    EXPECT_EQ(copied(), QStringLiteral("first\nsecond"));
    EXPECT_TRUE(isIdle());
}

TEST_F(TextExtractorTest, TheOutcomeOfACancelledOneIsNotShownInTheNext)
{
    fake.textRecognition.setAnyLines(twoLines);
    begin();
    drag({100, 800}, {300, 700});
    (void)send(EventType::keyDown);
    controller->extract();
    read();
    EXPECT_EQ(status(), QStringLiteral("none"));
    fake.runLoop.advance(10s);
    EXPECT_TRUE(isUp());
}

TEST_F(TextExtractorTest, AnEndOfTheControllerWhileItReadsDropsTheText)
{
    fake.textRecognition.setAnyLines(twoLines);
    begin();
    drag({100, 800}, {300, 700});
    controller.reset();
    read();
    EXPECT_FALSE(copied());
    EXPECT_EQ(fake.runLoop.timerCount(), 0u);
}

TEST_F(TextExtractorTest, AfterFortyFiveSecondsItEnds)
{
    begin();
    (void)send(EventType::leftMouseDown, {100, 800});
    fake.runLoop.advance(45s - 1ms);
    EXPECT_TRUE(isUp());
    fake.runLoop.advance(1ms);
    EXPECT_TRUE(isIdle());
}

TEST_F(TextExtractorTest, AnyKeyAndARightClickCancel)
{
    for (const EventType type : {EventType::keyDown, EventType::rightMouseDown}) {
        begin();
        EXPECT_EQ(send(type), Disposition::swallow);
        EXPECT_TRUE(isIdle());
    }
    EXPECT_FALSE(copied());
}

TEST_F(TextExtractorTest, ItsOwnShortcutAndRepeatsDoNothing)
{
    constexpr std::int64_t keyT = 17;
    KeyboardShortcuts::setShortcut(
        KeyboardShortcuts::Shortcut(KeyboardShortcuts::Key{keyT}, eventFlag::control | eventFlag::option),
        KeyboardShortcuts::Name(TextExtractorController::actionID()));
    begin();
    EXPECT_EQ(send(EventType::keyDown, keyT, eventFlag::control | eventFlag::option), Disposition::swallow);
    EXPECT_EQ(send(EventType::keyDown, 3, 0, 1), Disposition::swallow);
    EXPECT_TRUE(isUp());
    controller->extract();
    EXPECT_EQ(fake.screenCapture.requests.size(), 1u);
}

TEST_F(TextExtractorTest, TheModelIsLoadedWhileTheUserDrags)
{
    EXPECT_EQ(fake.textRecognition.preparations(), 0);
    begin();
    fake.runLoop.drainDetached();
    EXPECT_EQ(fake.textRecognition.preparations(), 1);
    EXPECT_TRUE(fake.textRecognition.images().isEmpty());
}

TEST_F(TextExtractorTest, WithoutAPictureOrTheInputNothingIsShown)
{
    fake.screenCapture.isPermitted = false;
    controller->extract();
    fake.runLoop.drain();
    EXPECT_TRUE(isIdle());
    EXPECT_EQ(fake.sound.beeps, 0);
    fake.screenCapture.isPermitted = true;
    fake.overlays.otherHasInput = true;
    controller->extract();
    fake.runLoop.drain();
    EXPECT_TRUE(isIdle());
    EXPECT_EQ(fake.sound.beeps, 1);
    fake.overlays.otherHasInput = false;
    begin();
}

TEST_F(TextExtractorTest, ADisplayThatGoesEndsIt)
{
    const Rect second{{1440, 0}, {1280, 1000}};
    const auto first = fake.screens.list;
    fake.screens.arrange(first + QList<Screen>{FakeScreens::screen(2, second, second)});
    fake.eventMonitors.pointer = {1500, 500};
    begin();
    EXPECT_EQ(fake.screenCapture.requests[0].display, 2u);
    (void)send(EventType::leftMouseDown, {1500, 500});
    fake.screens.arrange(first);
    EXPECT_TRUE(isIdle());
}

TEST_F(TextExtractorTest, TheBoxIsClearAndTheRestDimmed)
{
    fake.screenCapture.color = [](std::uint32_t, int, int) { return 0xFFFFFFu; };
    begin();
    (void)send(EventType::leftMouseDown, {100, 700});
    (void)send(EventType::leftMouseDragged, {300, 600});
    QWidget* window = QApplication::topLevelWidgets().value(0);
    QImage image(window->size(), QImage::Format_RGB32);
    window->render(&image);
    EXPECT_EQ(image.pixel(200, 250), 0xFFFFFFFF);
    EXPECT_NEAR(qRed(image.pixel(50, 250)), 255 * 0.65, 1);
    EXPECT_NEAR(qRed(image.pixel(720, 600)), 255 * 0.65, 1);
    const QColor edge = image.pixelColor(200, 200);
    EXPECT_NE(edge, QColor(Qt::white)) << "the outline";
}

TEST_F(TextExtractorTest, ThePaneTellsTheLanguages)
{
    fake.textRecognition.setLanguages(
        {{QStringLiteral("English")}, {{QStringLiteral("Deutsch"), QStringLiteral("tesseract-ocr-deu")}}});
    const AnyView pane = TextExtractorSettingsPane::make(controller);
    read();
    const auto sections = pane.all<OrvaSection>();
    ASSERT_EQ(sections.size(), 2);
    EXPECT_EQ(sections[0]->title, QStringLiteral("Output"));
    EXPECT_EQ(sections[0]->systemImage, QStringLiteral("text.alignleft"));
    const auto toggles = pane.all<OrvaToggleRow>();
    ASSERT_EQ(toggles.size(), 1);
    const auto inUse = pane.all<OrvaValueRow>();
    ASSERT_EQ(inUse.size(), 1);
    EXPECT_EQ(inUse[0]->value.get(), QStringLiteral("English"));
    const auto missing = pane.all<OrvaIf>();
    ASSERT_EQ(missing.size(), 1);
    EXPECT_TRUE(missing[0]->condition.get());
    const auto packages = pane.all<OrvaCaptionRow>();
    ASSERT_EQ(packages.size(), 1);
    EXPECT_EQ(packages[0]->text.get(),
              QStringLiteral("To read Deutsch, install the package tesseract-ocr-deu."));

    fake.textRecognition.setLanguages({});
    controller->findLanguages();
    read();
    EXPECT_EQ(inUse[0]->value.get(), QStringLiteral("None: no text can be read"));
    EXPECT_FALSE(missing[0]->condition.get());
}

TEST_F(TextExtractorTest, TheCapabilitySaysWhatItIs)
{
    const CapabilityMetadata& metadata = TextExtractorCapability::metadata();
    EXPECT_EQ(metadata.id.rawValue, id);
    EXPECT_EQ(metadata.displayName, QStringLiteral("Text Extractor"));
    EXPECT_EQ(metadata.symbolName, QStringLiteral("text.viewfinder"));
    EXPECT_EQ(metadata.category, CapabilityCategory::system);
    const auto capability = std::make_shared<TextExtractorCapability>();
    EXPECT_TRUE(capability->menuBarContributions().isEmpty()) << "there is no controller yet";
    const auto actions = capability->hotkeyActions();
    ASSERT_EQ(actions.size(), 1);
    EXPECT_EQ(actions[0].title, QStringLiteral("Extract Text from Screen"));
    const auto requirements = capability->permissionRequirements();
    ASSERT_EQ(requirements.size(), 1);
    EXPECT_EQ(requirements[0].permission, SystemPermission::screenRecording);
    EXPECT_EQ(requirements[0].level, PermissionRequirement::Level::required);
}

} // namespace orvane
