#include "Capabilities/SnapZones/FocusedWindow.h"
#include "Fakes/FakePlatform.h"
#include "OrvaneCore/Windows/AXAttr.h"

#include <gtest/gtest.h>

namespace orvane::tests {

namespace {

using Seconds = std::chrono::duration<float>;

class FocusedWindowTest : public testing::Test {
protected:
    AXUIElement application()
    {
        const auto& attributes = FakeAccessibility::node(fake.accessibility.systemWide).attributes;
        return std::get<AXUIElement>(attributes.at(AXAttr::focusedApplication));
    }

    FakePlatform fake;
    AXUIElement window = fake.accessibility.focusNewWindow({10, 20}, {300, 200});
};

} // namespace

TEST_F(FocusedWindowTest, IsTheFocusedOneOfTheFocusedApplication)
{
    EXPECT_EQ(FocusedWindow::current(), window);
}

TEST_F(FocusedWindowTest, TakesThreeReadsInOrder)
{
    FocusedWindow::current();
    QStringList reads;
    for (const auto& call : fake.accessibility.calls) {
        EXPECT_EQ(call.kind, FakeAccessibility::Call::Kind::copy);
        reads.append(call.name);
    }
    EXPECT_EQ(reads, (QStringList{AXAttr::focusedApplication, AXAttr::focusedWindow, AXAttr::fullScreen}));
}

TEST_F(FocusedWindowTest, WaitsHalfASecondAtMostForEachOfItsReads)
{
    FocusedWindow::current();
    for (const AXUIElement& element : {fake.accessibility.systemWide, application(), window})
        EXPECT_EQ(FakeAccessibility::node(element).timeout, Seconds(0.5F));
}

TEST_F(FocusedWindowTest, IsAbsentWithoutAFocusedApplication)
{
    FakeAccessibility::node(fake.accessibility.systemWide).attributes.clear();
    EXPECT_EQ(FocusedWindow::current(), std::nullopt);
}

TEST_F(FocusedWindowTest, IsAbsentWhenTheApplicationHasNoFocusedWindow)
{
    FakeAccessibility::node(application()).attributes.clear();
    EXPECT_EQ(FocusedWindow::current(), std::nullopt);
}

TEST_F(FocusedWindowTest, IsAbsentWithoutThePermission)
{
    FakeAccessibility::node(fake.accessibility.systemWide).failure = AXError::apiDisabled;
    EXPECT_EQ(FocusedWindow::current(), std::nullopt);
}

TEST_F(FocusedWindowTest, IsAbsentWhenTheApplicationDoesNotAnswer)
{
    FakeAccessibility::node(application()).failure = AXError::cannotComplete;
    EXPECT_EQ(FocusedWindow::current(), std::nullopt);
}

TEST_F(FocusedWindowTest, IsAbsentForAFullScreenWindow)
{
    FakeAccessibility::node(window).attributes.insert_or_assign(AXAttr::fullScreen, true);
    EXPECT_EQ(FocusedWindow::current(), std::nullopt);
}

TEST_F(FocusedWindowTest, CountsAsNotFullScreenWhenThatCanNotBeRead)
{
    FakeAccessibility::node(window).attributes.erase(AXAttr::fullScreen);
    EXPECT_EQ(FocusedWindow::current(), window);
    FakeAccessibility::node(window).attributes.insert_or_assign(AXAttr::fullScreen, QStringLiteral("yes"));
    EXPECT_EQ(FocusedWindow::current(), window);
    FakeAccessibility::node(window).failure = AXError::cannotComplete;
    EXPECT_EQ(FocusedWindow::current(), window);
}

} // namespace orvane::tests
