// Colours of two monitors side by side: 1440 by 900, and 1280 by 1000 to the right of it.
#include "Desktop/Support/ColorPickerFixture.h"
#include "Desktop/Support/Monitors.h"
#include "Desktop/Support/OtherClient.h"
#include "Desktop/Support/Peer.h"
#include "Support/Eventually.h"

namespace orvane::tests {
namespace {

constexpr QRect left(100, 100, 900, 700);
constexpr QRect right(1500, 50, 1000, 900);
constexpr int picksForEach = 15;

class ColorPickerTwoMonitorsTest : public ColorPickerFixture,
                                   public testing::WithParamInterface<const char*> {};

} // namespace

TEST_P(ColorPickerTwoMonitorsTest, EachPixelOfBothIsCopiedExactly)
{
    startPicker(QString::fromLatin1(GetParam()));
    for (const QRect pattern : {left, right}) {
        const PatternWindow window(pattern);
        pickAtRandom(window, pattern, picksForEach);
    }
}

TEST_P(ColorPickerTwoMonitorsTest, AClickOnTheOtherMonitorCopiesTheLastSample)
{
    startPicker(QString::fromLatin1(GetParam()));
    const PatternWindow window(left);
    ASSERT_TRUE(isOnScreen(window, {500, 400}));
    m_hardware.movePointer({500, 400});
    pressPick();
    ASSERT_TRUE(overlayComes());
    m_hardware.click({2000, 500});
    ASSERT_TRUE(overlayGoes());
    EXPECT_TRUE(eventually(15s, [&] { return clipboardText() == window.hex({500, 400}); }));
}

TEST_P(ColorPickerTwoMonitorsTest, TheMonitorThatIsUnpluggedTakesThePickWithIt)
{
    startPicker(QString::fromLatin1(GetParam()));
    m_hardware.movePointer({2000, 500});
    pressPick();
    ASSERT_TRUE(overlayComes());
    EXPECT_EQ(overlay(), QRect(1440, 0, 1280, 1000));
    SecondMonitor second;
    second.unplug();
    EXPECT_TRUE(overlayGoes());
    OtherClient other;
    EXPECT_TRUE(eventually(15s, [&] { return !other.isKeyboardGrabbed(); }));
}

INSTANTIATE_TEST_SUITE_P(Scales, ColorPickerTwoMonitorsTest, testing::Values("1", "2"));

} // namespace orvane::tests
