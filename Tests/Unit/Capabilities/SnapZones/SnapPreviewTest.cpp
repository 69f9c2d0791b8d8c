#include "Capabilities/SnapZones/Preview/SnapPreviewPanelController.h"
#include "Fakes/FakePlatform.h"
#include "OrvaneKit/Panels/OrvaPanelWindow.h"

#include <gtest/gtest.h>

using namespace orvane;

namespace {

struct SnapPreviewTest : testing::Test {
    void show() { preview.show({{0, 70}, {200, 120}}); }
    OrvaPanelWindow& panel() { return *preview.panel(); }
    /// Returns the preview with its mask, as it is on the screen.
    QImage picture()
    {
        QImage image(panel().size(), QImage::Format_ARGB32);
        image.fill(Qt::transparent);
        panel().render(&image, {}, panel().mask(), QWidget::DrawChildren);
        return image;
    }

    FakePlatform fake;
    SnapPreviewPanelController preview;
};

} // namespace

TEST_F(SnapPreviewTest, ThePanelIsMadeAtItsFirstUse)
{
    EXPECT_EQ(preview.panel(), nullptr);
    preview.hide();
    EXPECT_EQ(preview.panel(), nullptr);
    show();
    EXPECT_TRUE(panel().isVisible());
    preview.hide();
    EXPECT_FALSE(panel().isVisible());
}

TEST_F(SnapPreviewTest, ItCoversItsFrame)
{
    show();
    EXPECT_EQ(panel().geometry(), QRect(0, 900 - 190, 200, 120));
    preview.show({{300, 300}, {400, 100}});
    EXPECT_EQ(panel().geometry(), QRect(300, 500, 400, 100));
    EXPECT_EQ(panel().findChildren<QWidget*>().first()->size(), QSize(400, 100));
}

TEST_F(SnapPreviewTest, ClicksGoThroughItAndItTakesNoKeyboard)
{
    show();
    EXPECT_TRUE(panel().windowFlags().testFlag(Qt::WindowTransparentForInput));
    EXPECT_TRUE(panel().windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus));
}

TEST_F(SnapPreviewTest, ItIsATintWithABorderInsideItsFrame)
{
    show();
    const QColor accent = orvaColor(OrvaColor::accent);
    const QImage image = picture();
    EXPECT_EQ(image.pixelColor(100, 60).alpha(), qRound(0.25 * 255));
    // The border lies over the tint.
    const double border = 0.8 + 0.2 * 0.25;
    for (const QPoint at : {QPoint(100, 0), QPoint(100, 1), QPoint(0, 60), QPoint(199, 60), QPoint(100, 119)})
        EXPECT_NEAR(image.pixelColor(at).alphaF(), border, 0.01) << at.x() << ", " << at.y();
    EXPECT_EQ(image.pixelColor(100, 2).alpha(), qRound(0.25 * 255));
    EXPECT_NEAR(image.pixelColor(100, 0).red(), accent.red(), 2);
    EXPECT_NEAR(image.pixelColor(100, 0).blue(), accent.blue(), 2);
    for (const QPoint corner : {QPoint(0, 0), QPoint(199, 0), QPoint(0, 119), QPoint(199, 119)})
        EXPECT_EQ(image.pixelColor(corner).alpha(), 0);
}

TEST_F(SnapPreviewTest, ItIsTintedInTheDesktopsOwnAccentWhereThatIsTold)
{
    const QPalette before = QGuiApplication::palette();
    QPalette palette = before;
    palette.setColor(QPalette::Highlight, QColor(200, 60, 40));
    QGuiApplication::setPalette(palette);
    show();
    const QColor border = picture().pixelColor(100, 0);
    QGuiApplication::setPalette(before);
    EXPECT_NEAR(border.red(), 200, 2);
    EXPECT_NEAR(border.green(), 60, 2);
    EXPECT_NEAR(border.blue(), 40, 2);
}

TEST_F(SnapPreviewTest, WithoutACompositorOnlyTheBorderIsLeft)
{
    show();
    EXPECT_TRUE(panel().mask().isEmpty());
    fake.panels.setCompositing(false);
    const QRegion left = panel().mask();
    EXPECT_FALSE(left.contains(QPoint(100, 60)));
    EXPECT_FALSE(left.contains(QPoint(100, 2)));
    for (const QPoint at : {QPoint(100, 0), QPoint(100, 1), QPoint(0, 60), QPoint(199, 60), QPoint(100, 119)})
        EXPECT_TRUE(left.contains(at)) << at.x() << ", " << at.y();
    EXPECT_EQ(picture().pixelColor(100, 0), orvaColor(OrvaColor::accent));

    fake.panels.setCompositing(true);
    EXPECT_TRUE(panel().mask().isEmpty());
    EXPECT_EQ(picture().pixelColor(100, 60).alpha(), qRound(0.25 * 255));
}

TEST_F(SnapPreviewTest, WithoutACompositorTheBorderKeepsUpWithTheSize)
{
    fake.panels.setCompositing(false);
    show();
    preview.show({{0, 70}, {300, 180}});
    EXPECT_FALSE(panel().mask().contains(QPoint(199, 60)));
    EXPECT_TRUE(panel().mask().contains(QPoint(299, 60)));
}
