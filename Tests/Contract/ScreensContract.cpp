#include "Contract/Support/PluggedMonitor.h"
#include "Fakes/FakeScreens.h"
#include "PlatformLinux/Screens/X11Screens.h"
#include "Support/Eventually.h"
#include "Support/PrintGeometry.h"

#include <gmock/gmock.h>

#include <memory>
#include <set>

namespace orvane::tests {

namespace {

constexpr auto deadline = 15s;

/// A desktop with one display, and another one that can be connected.
class Displays {
public:
    virtual ~Displays() = default;
    virtual Screens& screens() = 0;
    NotificationCenter& center() { return m_center; }
    virtual void plugIn() = 0;
    virtual void unplug() = 0;

private:
    NotificationCenter m_center;
};

class FakeDisplays : public Displays {
public:
    Screens& screens() override { return m_screens; }
    void plugIn() override
    {
        m_screens.arrange(m_screens.list +
                          QList<orvane::Screen>{FakeScreens::screen(2, {{1440, -100}, {1280, 1000}},
                                                                    {{1440, -100}, {1280, 1000}})});
    }
    void unplug() override { m_screens.arrange(m_screens.list.first(1)); }

private:
    FakeScreens m_screens{center()};
};

class LinuxDisplays : public Displays {
public:
    Screens& screens() override { return m_screens; }
    void plugIn() override { m_second.emplace(); }
    void unplug() override { m_second.reset(); }

private:
    X11Screens m_screens{center()};
    std::optional<PluggedMonitor> m_second;
};

std::uint32_t numberOf(const orvane::Screen& screen)
{
    return screen.deviceDescription.value(orvane::Screen::screenNumberKey()).toUInt();
}

template <typename Subject>
class ScreensContract : public ::testing::Test {
protected:
    Screens& screens() { return displays.screens(); }

    bool becomes(qsizetype count)
    {
        return eventually(deadline, [&] { return screens().screens().size() == count; });
    }

    Subject displays;
};

using Subjects = ::testing::Types<FakeDisplays, LinuxDisplays>;
TYPED_TEST_SUITE(ScreensContract, Subjects);

} // namespace

TYPED_TEST(ScreensContract, ThePrimaryDisplayComesFirstAndHoldsTheOrigin)
{
    this->displays.plugIn();
    ASSERT_TRUE(this->becomes(2));
    EXPECT_EQ(this->screens().screens()[0].frame, (Rect{{0, 0}, {1440, 900}}));
    EXPECT_EQ(this->screens().screens()[1].frame.size, (Size{1280, 1000}));
}

TYPED_TEST(ScreensContract, TheOtherDisplaysTopIsLevelWithThePrimaryOnesAndItsFootIsBelowTheOrigin)
{
    this->displays.plugIn();
    ASSERT_TRUE(this->becomes(2));
    EXPECT_EQ(this->screens().screens()[1].frame, (Rect{{1440, -100}, {1280, 1000}}));
}

TYPED_TEST(ScreensContract, AVisibleFrameIsAPartOfItsFrame)
{
    this->displays.plugIn();
    ASSERT_TRUE(this->becomes(2));
    for (const orvane::Screen& screen : this->screens().screens()) {
        const Rect& all = screen.frame;
        const Rect& part = screen.visibleFrame;
        EXPECT_TRUE(part.minX() >= all.minX() && part.maxX() <= all.maxX() && part.minY() >= all.minY() &&
                    part.maxY() <= all.maxY())
            << ::testing::PrintToString(part);
        EXPECT_GT(part.width(), 0);
        EXPECT_GT(part.height(), 0);
    }
}

TYPED_TEST(ScreensContract, ADisplayThatComesOrGoesIsAnnouncedWhenTheListHasIt)
{
    ASSERT_TRUE(this->becomes(1));
    std::vector<qsizetype> counts;
    const auto token = this->displays.center().addObserver(
        Screens::didChangeScreenParametersNotification(),
        [&](const Notification&) { counts.push_back(this->screens().screens().size()); });
    this->displays.plugIn();
    EXPECT_TRUE(eventually(deadline, [&] { return !counts.empty() && counts.back() == 2; }));
    this->displays.unplug();
    EXPECT_TRUE(eventually(deadline, [&] { return counts.back() == 1; }));
}

TYPED_TEST(ScreensContract, EachDisplayHasANumberOfItsOwnAndKeepsIt)
{
    this->displays.plugIn();
    ASSERT_TRUE(this->becomes(2));
    const std::uint32_t first = numberOf(this->screens().screens()[0]);
    const std::uint32_t second = numberOf(this->screens().screens()[1]);
    EXPECT_EQ((std::set<std::uint32_t>{0, first, second}).size(), 3u);
    this->displays.unplug();
    ASSERT_TRUE(this->becomes(1));
    EXPECT_EQ(numberOf(this->screens().screens()[0]), first);
}

TYPED_TEST(ScreensContract, AFrameAndTheGeometryOfItsWindowMirrorEachOther)
{
    const Rect frame{{100, 200}, {300, 50}};
    const QRectF geometry = this->screens().windowGeometry(frame);
    EXPECT_EQ(geometry, QRectF(100, 900 - 250, 300, 50));
    EXPECT_EQ(this->screens().frameOfWindow(geometry), frame);
}

TYPED_TEST(ScreensContract, TheMainScreenIsOneOfTheList)
{
    this->displays.plugIn();
    ASSERT_TRUE(this->becomes(2));
    const auto main = this->screens().mainScreen();
    ASSERT_TRUE(main);
    EXPECT_TRUE(this->screens().screens().contains(*main));
}

} // namespace orvane::tests
