// Floating panels: their requests to the desktop, their place, and their look with and without a compositor.
#include "OrvaneKit/Panels/OrvaPanelWindow.h"
#include "Fakes/FakePlatform.h"
#include "OrvaWidgetSupport.h"
#include "OrvaneKit/Theme/OrvaTheme.h"

#include <QApplication>
#include <QCloseEvent>
#include <QImage>
#include <QPointer>
#include <QWindow>

#include <gtest/gtest.h>

namespace {

using namespace orvane;
using orvane::tests::waitUntil;
using Style = OrvaPanelWindow::Style;

constexpr Rect frame{{100, 300}, {360, 420}};

class OrvaPanelWindowTest : public testing::Test {
protected:
    FakePlatform fake;

    QRect frameOf(const OrvaPanelWindow& panel)
    {
        return platform().screens.windowGeometry(panel.frame()).toRect();
    }
    static QImage picture(OrvaPanelWindow& panel)
    {
        QImage image(panel.size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        panel.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
        return image;
    }
};

TEST_F(OrvaPanelWindowTest, APanelIsAToolThatStaysOnTopAndNeverTakesTheFocus)
{
    OrvaPanelWindow panel{Style{}};
    EXPECT_EQ(panel.windowFlags() & Qt::WindowType_Mask, Qt::Tool);
    EXPECT_TRUE(panel.windowFlags() & Qt::FramelessWindowHint);
    EXPECT_TRUE(panel.windowFlags() & Qt::WindowStaysOnTopHint);
    EXPECT_TRUE(panel.windowFlags() & Qt::WindowDoesNotAcceptFocus);
    EXPECT_TRUE(panel.testAttribute(Qt::WA_ShowWithoutActivating));
    EXPECT_FALSE(panel.windowFlags() & Qt::WindowTransparentForInput);
}

TEST_F(OrvaPanelWindowTest, AKeyablePanelTakesTheFocusWhenItIsMadeKey)
{
    KeyablePanel panel;
    EXPECT_FALSE(panel.windowFlags() & Qt::WindowDoesNotAcceptFocus);
    EXPECT_FALSE(panel.testAttribute(Qt::WA_ShowWithoutActivating));
    panel.setFrame(frame);
    panel.orderFront();
    EXPECT_EQ(fake.panels.keyRequests, 0);
    panel.makeKeyAndOrderFront();
    EXPECT_EQ(fake.panels.keyRequests, 1);
    EXPECT_EQ(fake.panels.keyWindow, panel.windowHandle());
}

TEST_F(OrvaPanelWindowTest, ClicksGoThroughOnlyWhereThatIsAskedFor)
{
    OrvaPanelWindow panel(Style{.mouse = OrvaPanelWindow::Mouse::passesThrough});
    EXPECT_TRUE(panel.windowFlags() & Qt::WindowTransparentForInput);
}

TEST_F(OrvaPanelWindowTest, TheShadowStandsOutsideOfTheFrame)
{
    OrvaPanelWindow panel{Style{}};
    auto* content = new QWidget;
    panel.setContentView(content);
    panel.setFrame(frame);
    panel.orderFront();
    EXPECT_EQ(frameOf(panel), QRect(100, 180, 360, 420));
    EXPECT_FALSE(fake.panels.shadowMargins.isNull());
    EXPECT_EQ(panel.geometry(), frameOf(panel).marginsAdded(fake.panels.shadowMargins));
    EXPECT_EQ(content->geometry().translated(panel.pos()), frameOf(panel));
}

TEST_F(OrvaPanelWindowTest, APanelWithoutShadowIsItsFrame)
{
    OrvaPanelWindow panel(Style{.shadow = OrvaPanelWindow::Shadow::none});
    panel.setFrame(frame);
    panel.orderFront();
    EXPECT_EQ(panel.geometry(), frameOf(panel));
    EXPECT_TRUE(fake.panels.shadowMargins.isNull());
}

TEST_F(OrvaPanelWindowTest, TheCornersAreRoundWhereACompositorRuns)
{
    OrvaPanelWindow panel(Style{.shadow = OrvaPanelWindow::Shadow::none});
    panel.setFrame(frame);
    panel.orderFront();
    const QImage image = picture(panel);
    EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
    EXPECT_EQ(image.pixelColor(180, 200), orvaColor(OrvaColor::window));
}

TEST_F(OrvaPanelWindowTest, ItIsAnOpaqueRectangleWithABorderWhereNoneRuns)
{
    fake.panels.setCompositing(false);
    OrvaPanelWindow panel{Style{}};
    panel.setFrame(frame);
    panel.orderFront();
    EXPECT_EQ(panel.geometry(), frameOf(panel));
    const QImage image = picture(panel);
    EXPECT_EQ(image.pixelColor(0, 0).alpha(), 255);
    EXPECT_NE(image.pixelColor(0, 200), orvaColor(OrvaColor::window));
    EXPECT_EQ(image.pixelColor(1, 1), orvaColor(OrvaColor::window));
    EXPECT_EQ(image.pixelColor(180, 200), orvaColor(OrvaColor::window));
}

TEST_F(OrvaPanelWindowTest, ItFollowsACompositorThatEndsAndOneThatStarts)
{
    OrvaPanelWindow panel{Style{}};
    auto* content = new QWidget;
    panel.setContentView(content);
    panel.setFrame(frame);
    panel.orderFront();
    fake.panels.setCompositing(false);
    EXPECT_FALSE(panel.translucency().get());
    EXPECT_EQ(panel.geometry(), frameOf(panel));
    EXPECT_TRUE(fake.panels.shadowMargins.isNull());
    EXPECT_EQ(content->geometry().translated(panel.pos()), frameOf(panel));
    fake.panels.setCompositing(true);
    EXPECT_TRUE(panel.translucency().get());
    EXPECT_NE(panel.geometry(), frameOf(panel));
    EXPECT_EQ(content->geometry().translated(panel.pos()), frameOf(panel));
}

TEST_F(OrvaPanelWindowTest, TheContentStaysInsideOfTheRoundCorners)
{
    OrvaPanelWindow panel{Style{}};
    auto* content = new QWidget;
    panel.setContentView(content);
    panel.setFrame(frame);
    EXPECT_FALSE(content->mask().contains(QPoint(2, 2)));
    EXPECT_TRUE(content->mask().contains(QPoint(180, 1)));
    fake.panels.setCompositing(false);
    EXPECT_TRUE(content->mask().contains(QPoint(2, 2)));
}

TEST_F(OrvaPanelWindowTest, AClearPanelPaintsNothingBehindItsContent)
{
    OrvaPanelWindow panel(
        Style{.ground = OrvaPanelWindow::Ground::clear, .shadow = OrvaPanelWindow::Shadow::none});
    auto* content = new QWidget;
    panel.setContentView(content);
    panel.setFrame(frame);
    panel.orderFront();
    EXPECT_EQ(picture(panel).pixelColor(180, 200).alpha(), 0);
    EXPECT_TRUE(content->mask().isEmpty());
}

TEST_F(OrvaPanelWindowTest, ItJoinsAllSpacesAnewAtEachShowing)
{
    OrvaPanelWindow panel{Style{}};
    panel.setFrame(frame);
    panel.orderFront();
    panel.orderFront();
    EXPECT_EQ(fake.panels.joins, 1);
    ASSERT_TRUE(waitUntil([&] { return panel.windowHandle()->isExposed(); }));
    panel.orderOut();
    EXPECT_FALSE(panel.isVisible());
    panel.orderFront();
    EXPECT_EQ(fake.panels.joins, 2);
    EXPECT_TRUE(panel.isVisible());
}

TEST_F(OrvaPanelWindowTest, OrderedOutBeforeItHasComeUpItIsHiddenOnceItHas)
{
    OrvaPanelWindow panel{Style{}};
    const QWidget& window = panel;
    panel.setFrame(frame);
    panel.orderFront();
    ASSERT_FALSE(panel.windowHandle()->isExposed());
    panel.orderOut();
    EXPECT_FALSE(panel.isVisible());
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(waitUntil([&] { return !window.isVisible(); }));
}

TEST_F(OrvaPanelWindowTest, OrderedOutAndInBeforeItHasComeUpItStays)
{
    OrvaPanelWindow panel{Style{}};
    const QWidget& window = panel;
    panel.setFrame(frame);
    panel.orderFront();
    panel.orderOut();
    panel.orderFront();
    ASSERT_TRUE(waitUntil([&] { return panel.windowHandle()->isExposed(); }));
    QApplication::processEvents();
    EXPECT_TRUE(panel.isVisible());
    EXPECT_TRUE(window.isVisible());
}

TEST_F(OrvaPanelWindowTest, AnotherContentEndsTheOneBefore)
{
    OrvaPanelWindow panel{Style{}};
    const QPointer<QWidget> first = new QWidget;
    panel.setContentView(first);
    panel.setContentView(new QWidget);
    EXPECT_TRUE(first.isNull());
}

TEST_F(OrvaPanelWindowTest, TheDesktopsWishToCloseItIsOnlyTold)
{
    KeyablePanel panel;
    panel.setFrame(frame);
    panel.orderFront();
    panel.close();
    EXPECT_TRUE(panel.isVisible());
    int requests = 0;
    panel.onCloseRequest = [&] { ++requests; };
    panel.close();
    EXPECT_EQ(requests, 1);
}

} // namespace
