#include "Contract/EventMonitorsFixture.h"
#include "Contract/HotKeysSupport.h"
#include "Contract/Support/UnmanagedWindow.h"
#include "Fakes/FakeClock.h"
#include "Fakes/FakeOverlays.h"
#include "Fakes/FakeRunLoop.h"
#include "PlatformLinux/HotKeys/X11HotKeys.h"
#include "PlatformLinux/Keys/ServerKeymap.h"
#include "PlatformLinux/Overlays/X11Overlays.h"
#include "PlatformLinux/Shortcuts/DesktopShortcuts.h"

#include <QWindow>

#include <gmock/gmock.h>

#include <memory>
#include <optional>
#include <vector>

namespace orvane::tests {

namespace {

constexpr auto deadline = std::chrono::seconds(15);

/// The keyboard and the pointer, and another program that may take them.
class Stage {
public:
    virtual ~Stage() = default;
    virtual Overlays& overlays() = 0;
    virtual void turn() = 0;
    virtual void openMenuOfAnother() = 0;
    virtual void closeMenuOfAnother() = 0;
    /// True if this program has them.
    virtual bool isHeld() = 0;
};

class FakeStage : public Stage {
public:
    Overlays& overlays() override { return m_overlays; }
    void turn() override { m_runLoop.drain(); }
    void openMenuOfAnother() override { m_overlays.otherHasInput = true; }
    void closeMenuOfAnother() override { m_overlays.otherHasInput = false; }
    bool isHeld() override { return m_overlays.isInputHeld(); }

private:
    FakeClock m_clock;
    FakeRunLoop m_runLoop{m_clock};
    FakeOverlays m_overlays{m_runLoop};
};

class LinuxStage : public Stage {
public:
    Overlays& overlays() override { return m_overlays; }
    void turn() override {}
    void openMenuOfAnother() override
    {
        m_menu.emplace();
        // The test before may have left a grab that is about to end.
        ASSERT_TRUE(eventually(deadline, [this] { return m_menu->grabKeyboard(); }));
    }
    void closeMenuOfAnother() override { m_menu.reset(); }
    bool isHeld() override { return !m_menu && m_other.isKeyboardGrabbed(); }

private:
    OtherClient m_other;
    std::optional<OtherClient> m_menu;
    X11Overlays m_overlays{[] {}};
};

template <typename Subject>
class OverlaysContract : public ::testing::Test {
protected:
    std::unique_ptr<InputHold> hold()
    {
        return stage.overlays().holdInput([this](bool isHeld) { answers.push_back(isHeld); });
    }
    bool answersCome(std::size_t count)
    {
        return eventually(deadline, [&] {
            stage.turn();
            return answers.size() >= count;
        });
    }
    bool becomesHeld(bool isHeld)
    {
        return eventually(deadline, [&] { return stage.isHeld() == isHeld; });
    }

    Subject stage;
    std::vector<bool> answers;
};

using Subjects = ::testing::Types<FakeStage, LinuxStage>;
TYPED_TEST_SUITE(OverlaysContract, Subjects);

} // namespace

TYPED_TEST(OverlaysContract, InputIsHeldUntilTheObjectEnds)
{
    auto hold = this->hold();
    EXPECT_TRUE(this->answers.empty()) << "the answer comes later";
    ASSERT_TRUE(this->answersCome(1));
    EXPECT_TRUE(this->answers[0]);
    EXPECT_TRUE(this->becomesHeld(true));
    hold.reset();
    EXPECT_TRUE(this->becomesHeld(false));
}

TYPED_TEST(OverlaysContract, WhileAnotherProgramHasItTheAnswerIsNo)
{
    this->stage.openMenuOfAnother();
    const auto hold = this->hold();
    ASSERT_TRUE(this->answersCome(1));
    EXPECT_FALSE(this->answers[0]);
    EXPECT_FALSE(this->stage.isHeld());
}

TYPED_TEST(OverlaysContract, AfterANoItCanBeAskedForAgain)
{
    this->stage.openMenuOfAnother();
    auto first = this->hold();
    ASSERT_TRUE(this->answersCome(1));
    first.reset();
    this->stage.closeMenuOfAnother();
    const auto second = this->hold();
    ASSERT_TRUE(this->answersCome(2));
    EXPECT_TRUE(this->answers[1]);
}

TYPED_TEST(OverlaysContract, ASecondHoldIsRefusedAndTakesNothingFromTheFirst)
{
    auto first = this->hold();
    ASSERT_TRUE(this->answersCome(1));
    auto second = this->hold();
    ASSERT_TRUE(this->answersCome(2));
    EXPECT_THAT(this->answers, ::testing::ElementsAre(true, false));
    second.reset();
    EXPECT_TRUE(this->becomesHeld(true));
    first.reset();
    const auto third = this->hold();
    ASSERT_TRUE(this->answersCome(3));
    EXPECT_TRUE(this->answers[2]);
}

TYPED_TEST(OverlaysContract, AWithdrawnQuestionIsNotAnswered)
{
    auto withdrawn = this->stage.overlays().holdInput([](bool) { ADD_FAILURE() << "it was answered"; });
    withdrawn.reset();
    const auto other = this->hold();
    ASSERT_TRUE(this->answersCome(1));
    EXPECT_TRUE(this->answers[0]);
}

namespace {

/// A window of this program with the focus, and an overlay over a part of the display.
class OverlaysLiveTest : public EventMonitorsFixture {
protected:
    static constexpr QRect place{700, 300, 300, 200};

    /// Counts what its window gets.
    class Overlay : public QWidget {
    public:
        int keys = 0;
        int clicks = 0;

    protected:
        void keyPressEvent(QKeyEvent*) override { ++keys; }
        void mousePressEvent(QMouseEvent*) override { ++clicks; }
    };

    void show(Overlays::Input input)
    {
        overlay.setGeometry(place);
        overlay.setAttribute(Qt::WA_ShowWithoutActivating);
        (void)overlay.winId();
        overlays.prepare(*overlay.windowHandle(), input);
        overlay.show();
    }
    bool hold()
    {
        std::optional<bool> answer;
        held = overlays.holdInput([&](bool isHeld) { answer = isHeld; });
        return eventually(deadline, [&] { return answer.has_value(); }) && *answer;
    }
    static bool isOnTop(const QWidget& widget)
    {
        return eventually(deadline, [&] {
            const auto pointer = ApplicationLink::get()->pointer();
            return pointer && pointer->child == widget.winId();
        });
    }

    ServerKeymap keymap;
    DesktopShortcuts desktopShortcuts{keymap};
    X11HotKeys hotKeys{log, desktopShortcuts};
    X11Overlays overlays{[this] { hotKeys.letGoOfKeyboard(); }};
    NotingWindow window;
    Overlay overlay;
    std::unique_ptr<InputHold> held;
};

} // namespace

TEST_F(OverlaysLiveTest, KeysAndClicksGoToTheOverlayWhereverThePointerIs)
{
    ASSERT_TRUE(hold());
    show(Overlays::Input::takes);
    held->deliverTo(*overlay.windowHandle());
    hardware.click({1200, 700});
    hardware.click(window.mapToGlobal(window.edit.geometry().center()));
    hardware.tap("a");
    EXPECT_TRUE(eventually(deadline, [&] { return overlay.clicks == 2 && overlay.keys == 1; }))
        << overlay.clicks << ' ' << overlay.keys;
    EXPECT_EQ(window.edit.noted, QStringList());
}

TEST_F(OverlaysLiveTest, WithoutAWindowInputGoesNowhere)
{
    ASSERT_TRUE(hold());
    hardware.click(window.mapToGlobal(window.edit.geometry().center()));
    hardware.tap("a");
    held.reset();
    hardware.tap("b");
    EXPECT_TRUE(eventually(deadline, [&] { return window.edit.text() == u"b"_qs; }));
    EXPECT_FALSE(window.edit.noted.join(u' ').contains(u"mouse"_qs));
}

TEST_F(OverlaysLiveTest, TheFocusIsWhereItWas)
{
    ASSERT_TRUE(hold());
    show(Overlays::Input::takes);
    held->deliverTo(*overlay.windowHandle());
    hardware.tap("x");
    ASSERT_TRUE(eventually(deadline, [&] { return overlay.keys == 1; }));
    held.reset();
    overlay.hide();
    hardware.tap("b");
    EXPECT_TRUE(eventually(deadline, [&] { return window.edit.text() == u"b"_qs; }));
}

TEST_F(OverlaysLiveTest, TheReleaseOfWhatEndsItGoesToNobodyElse)
{
    const QPoint middle = window.mapToGlobal(window.edit.geometry().center());
    hardware.movePointer(middle);
    ASSERT_TRUE(hold());
    show(Overlays::Input::takes);
    held->deliverTo(*overlay.windowHandle());
    hardware.press(Button::left);
    hardware.press("x");
    ASSERT_TRUE(eventually(deadline, [&] { return overlay.clicks == 1 && overlay.keys >= 1; }));
    held.reset();
    overlay.hide();
    hardware.release(Button::left);
    hardware.release("x");
    ASSERT_TRUE(eventually(deadline, [&] { return !other.isKeyboardGrabbed(); }));
    hardware.tap("b");
    ASSERT_TRUE(eventually(deadline, [&] { return window.edit.noted.contains(u"up"_qs); }));
    EXPECT_EQ(window.edit.noted, QStringList({u"down"_qs, u"up"_qs}));
}

TEST_F(OverlaysLiveTest, AHeldHotKeyDoesNotKeepTheKeyboardFromIt)
{
    const auto registration = hotKeys.registerEventHotKey(virtualKey::k, controlOption, hotKeyId(1));
    ASSERT_EQ(registration.status, noErr);
    HotKeyLog noted(hotKeys);
    hardware.press("Control_L");
    hardware.press("Alt_L");
    hardware.press("k");
    ASSERT_TRUE(eventually(deadline, [&] { return noted.text() == u"+1"_qs; }));
    EXPECT_TRUE(hold());
    hardware.release("k");
    hardware.release("Alt_L");
    hardware.release("Control_L");
    EXPECT_TRUE(eventually(deadline, [&] { return noted.text() == u"+1 -1"_qs; }));
}

TEST_F(OverlaysLiveTest, ItLiesAboveAMenuAndAWindowThatComesLater)
{
    const UnmanagedWindow menu(place.adjusted(20, 20, -20, -20));
    show(Overlays::Input::takes);
    hardware.movePointer(place.center());
    EXPECT_TRUE(isOnTop(overlay));
    const UnmanagedWindow later(place.adjusted(20, 20, -20, -20));
    EXPECT_TRUE(isOnTop(overlay));
}

TEST_F(OverlaysLiveTest, TwoOverlaysLeaveEachOtherInPeace)
{
    show(Overlays::Input::takes);
    Overlay second;
    second.setGeometry(place);
    (void)second.winId();
    overlays.prepare(*second.windowHandle(), Overlays::Input::takes);
    second.show();
    hardware.movePointer(place.center());
    EXPECT_TRUE(isOnTop(second));
}

TEST_F(OverlaysLiveTest, OneThatLetsInputThroughGetsNoClick)
{
    window.move(place.topLeft());
    ASSERT_TRUE(eventually(
        deadline, [&] { return (window.mapToGlobal(QPoint()) - place.topLeft()).manhattanLength() < 60; }));
    show(Overlays::Input::passesThrough);
    hardware.click(window.mapToGlobal(window.edit.geometry().center()));
    EXPECT_TRUE(
        eventually(deadline, [&] { return window.edit.noted.join(u' ').contains(u"mouse down"_qs); }));
    EXPECT_EQ(overlay.clicks, 0);
}

} // namespace orvane::tests
