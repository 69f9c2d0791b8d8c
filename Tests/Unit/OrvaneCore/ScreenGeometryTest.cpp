#include "OrvaneCore/Windows/ScreenGeometry.h"
#include "Fakes/FakePlatform.h"

#include <gtest/gtest.h>

#include <random>

namespace orvane::tests {

namespace {

Screen screen(std::uint32_t number, const Rect& frame)
{
    return FakeScreens::screen(number, frame, frame);
}

std::uint32_t numberAt(Point axPoint)
{
    const std::optional<Screen> found = ScreenGeometry::screenForAXPoint(axPoint);
    return found ? ScreenGeometry::displayID(*found) : 0;
}

Screen described(const QVariant& number)
{
    Screen screen;
    screen.deviceDescription.insert(Screen::screenNumberKey(), number);
    return screen;
}

} // namespace

TEST(PrimaryHeight, IsThatOfTheScreenAtTheOrigin)
{
    FakePlatform fake;
    fake.screens.list = {screen(2, {{-800, 0}, {800, 600}}), screen(1, {{0, 0}, {1440, 900}}),
                         screen(3, {{0, 900}, {640, 480}})};
    EXPECT_EQ(ScreenGeometry::primaryHeight(), 900);
}

TEST(PrimaryHeight, IsThatOfTheFirstOfTwoScreensThatMirrorEachOther)
{
    FakePlatform fake;
    fake.screens.list = {screen(1, {{0, 0}, {800, 600}}), screen(2, {{0, 0}, {1024, 768}})};
    EXPECT_EQ(ScreenGeometry::primaryHeight(), 600);
}

TEST(PrimaryHeight, DoesNotDependOnWhichScreenHasTheFocus)
{
    FakePlatform fake;
    const Screen first = screen(1, {{0, 0}, {1440, 900}});
    const Screen second = screen(2, {{1440, 0}, {1920, 1080}});
    fake.screens.list = {first, second};
    for (const Screen& focused : {first, second}) {
        fake.screens.main = focused;
        EXPECT_EQ(ScreenGeometry::primaryHeight(), 900);
    }
}

TEST(PrimaryHeight, IsThatOfTheMainScreenWhenNoneIsExactlyAtTheOrigin)
{
    FakePlatform fake;
    const Screen first = screen(1, {{0, 0.5}, {1440, 900}});
    const Screen second = screen(2, {{1440, 0}, {1920, 1080}});
    fake.screens.list = {first, second};
    fake.screens.main = second;
    EXPECT_EQ(ScreenGeometry::primaryHeight(), 1080);
}

TEST(PrimaryHeight, IsZeroWithoutAnyScreen)
{
    FakePlatform fake;
    fake.screens.list = {};
    EXPECT_EQ(ScreenGeometry::primaryHeight(), 0);
    EXPECT_EQ(ScreenGeometry::cocoaPointFromAX({3, 4}), (Point{3, -4}));
}

TEST(PrimaryHeight, FollowsADisplayThatChangesItsSize)
{
    FakePlatform fake;
    EXPECT_EQ(ScreenGeometry::primaryHeight(), 900);
    fake.screens.arrange({screen(1, {{0, 0}, {1024, 768}})});
    EXPECT_EQ(ScreenGeometry::primaryHeight(), 768);
    EXPECT_EQ(ScreenGeometry::axPointFromCocoa({0, 768}), (Point{0, 0}));
}

TEST(ScreenGeometryFlip, MapsPoints)
{
    FakePlatform fake;
    struct Row {
        Point ax;
        Point cocoa;
    };
    for (const Row& row : {Row{{0, 0}, {0, 900}}, Row{{0, 900}, {0, 0}}, Row{{10.5, 100.25}, {10.5, 799.75}},
                           Row{{-200, -300}, {-200, 1200}}, Row{{2000, 1000}, {2000, -100}}}) {
        EXPECT_EQ(ScreenGeometry::cocoaPointFromAX(row.ax), row.cocoa);
        EXPECT_EQ(ScreenGeometry::axPointFromCocoa(row.cocoa), row.ax);
    }
}

TEST(ScreenGeometryFlip, PutsARectanglesOriginAtItsFarCornersMirror)
{
    FakePlatform fake;
    const Rect ax{{100, 24}, {300, 200}};
    const Rect cocoa{{100, 676}, {300, 200}};
    EXPECT_EQ(ScreenGeometry::cocoaRectFromAX(ax), cocoa);
    EXPECT_EQ(ScreenGeometry::axRectFromCocoa(cocoa), ax);
}

TEST(ScreenGeometryFlip, OfARectangleIsItsOwnInverse)
{
    FakePlatform fake;
    std::mt19937 random(4711);
    // Quarters of a point are exact in binary, so no tolerance is needed.
    const auto quarters = [&random](int least, int most) {
        return 0.25 * std::uniform_int_distribution(4 * least, 4 * most)(random);
    };
    for (int i = 0; i < 1000; ++i) {
        fake.screens.list = {screen(1, {{0, 0}, {quarters(1, 9000), quarters(1, 9000)}})};
        const Rect rect{{quarters(-9000, 9000), quarters(-9000, 9000)},
                        {quarters(0, 9000), quarters(0, 9000)}};
        ASSERT_EQ(ScreenGeometry::cocoaRectFromAX(ScreenGeometry::axRectFromCocoa(rect)), rect);
        ASSERT_EQ(ScreenGeometry::axRectFromCocoa(ScreenGeometry::cocoaRectFromAX(rect)), rect);
        ASSERT_EQ(ScreenGeometry::cocoaPointFromAX(ScreenGeometry::axPointFromCocoa(rect.origin)),
                  rect.origin);
    }
}

TEST(ScreenForAXPoint, FindsASecondDisplayAboveThePrimaryOne)
{
    FakePlatform fake;
    fake.screens.list = {screen(1, {{0, 0}, {1440, 900}}), screen(2, {{100, 900}, {1280, 720}})};
    EXPECT_EQ(numberAt({200, -10}), 2u);
    EXPECT_EQ(numberAt({200, -719}), 2u);
    EXPECT_EQ(numberAt({200, 10}), 1u);
    EXPECT_EQ(numberAt({99, -10}), 0u);
}

TEST(ScreenForAXPoint, LeavesTheFarEdgesOutside)
{
    FakePlatform fake;
    // The bottom edge of the accessibility space belongs to the frame and the top edge doesn't.
    EXPECT_EQ(numberAt({0, 900}), 1u);
    EXPECT_EQ(numberAt({0, 0}), 0u);
    EXPECT_EQ(numberAt({0, 0.5}), 1u);
    EXPECT_EQ(numberAt({1440, 450}), 0u);
    EXPECT_EQ(numberAt({1439.5, 450}), 1u);
}

TEST(ScreenForAXPoint, IsAbsentBetweenDisplays)
{
    FakePlatform fake;
    fake.screens.list = {screen(1, {{0, 0}, {1440, 900}}), screen(2, {{1500, 0}, {1280, 720}})};
    EXPECT_EQ(numberAt({1470, 400}), 0u);
    EXPECT_EQ(numberAt({1600, 400}), 2u);
}

TEST(ScreenForAXPoint, IsTheFirstOfThoseThatOverlap)
{
    FakePlatform fake;
    fake.screens.list = {screen(7, {{0, 0}, {1440, 900}}), screen(8, {{0, 0}, {1440, 900}})};
    EXPECT_EQ(numberAt({10, 10}), 7u);
}

TEST(DisplayID, IsTheNumberOfTheScreensDescription)
{
    EXPECT_EQ(Screen::screenNumberKey(), QStringLiteral("NSScreenNumber"));
    EXPECT_EQ(ScreenGeometry::displayID(described(0xFFFFFFFFu)), 0xFFFFFFFFu);
    EXPECT_EQ(ScreenGeometry::displayID(described(69733382)), 69733382u);
    EXPECT_EQ(ScreenGeometry::displayID(described(QVariant::fromValue(qulonglong{5}))), 5u);
    EXPECT_EQ(ScreenGeometry::displayID(described(QVariant::fromValue(5.0F))), 5u);
    EXPECT_EQ(ScreenGeometry::displayID(described(QVariant::fromValue(ushort{5}))), 5u);
}

TEST(DisplayID, IsZeroWithoutANumber)
{
    EXPECT_EQ(ScreenGeometry::displayID(Screen()), 0u);
    for (const QVariant& other : {QVariant(QStringLiteral("5")), QVariant(QStringList{}), QVariant()})
        EXPECT_EQ(ScreenGeometry::displayID(described(other)), 0u);
}

} // namespace orvane::tests
