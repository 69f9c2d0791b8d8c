// Colours as a person picks them: by the shortcut, the pointer and a click.
#include "Desktop/Support/ColorPickerFixture.h"
#include "Desktop/Support/OtherClient.h"
#include "Desktop/Support/Peer.h"
#include "Support/Eventually.h"

#include <gmock/gmock.h>

namespace orvane::tests {
namespace {

constexpr auto deadline = 15s;
constexpr int picksForEach = 25;
constexpr QRect pattern(200, 150, 900, 600);

class ColorPickerDesktopTest : public ColorPickerFixture {
protected:
    void begin()
    {
        m_hardware.movePointer({640, 480});
        pressPick();
        ASSERT_TRUE(overlayComes());
    }
    [[nodiscard]] bool keyboardIsFree()
    {
        return eventually(deadline, [this] { return !m_other.isKeyboardGrabbed(); });
    }

    OtherClient m_other;
};

} // namespace

TEST_F(ColorPickerDesktopTest, EachPixelIsCopiedExactly)
{
    startPicker();
    const PatternWindow window(pattern);
    pickAtRandom(window, pattern, picksForEach);
}

TEST_F(ColorPickerDesktopTest, EachPixelIsCopiedExactlyWithTwoPixelsForAPoint)
{
    startPicker(QStringLiteral("2"));
    const PatternWindow window(pattern);
    pickAtRandom(window, pattern, picksForEach);
}

TEST_F(ColorPickerDesktopTest, EachPixelIsCopiedExactlyWithOneAndAHalf)
{
    startPicker(QStringLiteral("1.5"));
    const PatternWindow window(pattern);
    pickAtRandom(window, pattern, picksForEach);
}

TEST_F(ColorPickerDesktopTest, TheCornersAndEdgesOfTheDisplayAreCopiedExactly)
{
    startPicker();
    constexpr QRect all(0, 0, 1440, 900);
    const PatternWindow window(all);
    ASSERT_TRUE(isOnScreen(window, all.center()));
    for (const QPoint pixel : {all.topLeft(), all.topRight(), all.bottomLeft(), all.bottomRight(),
                               QPoint(700, 0), QPoint(700, 1), QPoint(0, 400)})
        EXPECT_TRUE(picks(window, pixel));
}

TEST_F(ColorPickerDesktopTest, NothingReachesTheWindowBelow)
{
    startPicker();
    PatternWindow window(pattern);
    ASSERT_TRUE(isOnScreen(window, pattern.center()));
    begin();
    m_hardware.click(Button::left);
    ASSERT_TRUE(overlayGoes());
    ASSERT_TRUE(keyboardIsFree());
    begin();
    m_hardware.click(Button::right);
    ASSERT_TRUE(overlayGoes());
    ASSERT_TRUE(keyboardIsFree());
    begin();
    m_hardware.tap("Escape");
    ASSERT_TRUE(overlayGoes());
    ASSERT_TRUE(keyboardIsFree());
    m_hardware.tap("a");
    constexpr int keyA = 38;
    constexpr int keyC = 54;
    constexpr int keyEscape = 9;
    const auto key = [](int code) { return QStringLiteral("key %1").arg(code); };
    ASSERT_TRUE(eventually(deadline, [&] { return window.noted().contains(key(keyA)); }));
    // Of the shortcut only the modifiers go to the window, as with any.
    EXPECT_FALSE(window.noted().contains(key(keyC)));
    EXPECT_FALSE(window.noted().contains(key(keyEscape)));
    EXPECT_FALSE(window.noted().contains(QStringLiteral("press")));
    EXPECT_FALSE(window.noted().contains(QStringLiteral("release")));
}

TEST_F(ColorPickerDesktopTest, TheShortcutDuringAPickDoesNothing)
{
    startPicker();
    const PatternWindow window(pattern);
    ASSERT_TRUE(isOnScreen(window, pattern.center()));
    begin();
    pressPick();
    m_hardware.movePointer({300, 300});
    m_hardware.click(Button::left);
    ASSERT_TRUE(overlayGoes());
    EXPECT_TRUE(eventually(deadline, [&] { return clipboardText() == window.hex({300, 300}); }));
}

TEST_F(ColorPickerDesktopTest, TheLoupeIsAboveThePointer)
{
    startPicker();
    const PatternWindow window(pattern);
    ASSERT_TRUE(isOnScreen(window, pattern.center()));
    begin();
    m_hardware.movePointer({640, 480});
    // The middle of the loupe is 84 points above the pointer and shows its pixel, in a white square.
    const QColor wanted(QRgb(0xFF000000 | window.color({640, 480})));
    EXPECT_TRUE(eventually(deadline, [&] {
        const QImage picture = m_screen.picture(QRect(560, 310, 160, 180));
        return picture.pixelColor(80, 86) == wanted && picture.pixelColor(80 - 66, 86) == QColor(Qt::white);
    }));
    // Elsewhere the overlay looks like the screen.
    const QImage beside = m_screen.picture(QRect(300, 500, 1, 1));
    EXPECT_EQ(beside.pixelColor(0, 0), QColor(QRgb(0xFF000000 | window.color({300, 500}))));
    m_hardware.tap("Escape");
    EXPECT_TRUE(overlayGoes());
}

TEST_F(ColorPickerDesktopTest, WhileAnotherProgramHasTheKeyboardNoPickIsShown)
{
    startPicker();
    auto menu = std::make_unique<OtherClient>();
    ASSERT_TRUE(eventually(deadline, [&] { return menu->grabKeyboard(); }));
    // The server gives the keys to the open menu alone, so the shortcut isn't seen.
    pressPick();
    menu.reset();
    pressPick();
    EXPECT_TRUE(overlayComes()) << "it works again once the menu is closed";
    m_hardware.tap("Escape");
    EXPECT_TRUE(overlayGoes());
}

TEST_F(ColorPickerDesktopTest, KilledWithTheOverlayUpItLeavesTheDesktopUsable)
{
    startPicker();
    PatternWindow window(pattern);
    ASSERT_TRUE(isOnScreen(window, pattern.center()));
    begin();
    program().kill9();
    ASSERT_TRUE(keyboardIsFree());
    EXPECT_TRUE(eventually(deadline, [&] {
        m_hardware.click({400, 400});
        return window.noted().contains(QStringLiteral("press"));
    }));
}

} // namespace orvane::tests
