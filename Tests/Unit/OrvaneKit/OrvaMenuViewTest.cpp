// The kit's menu: its look, with and without a compositor.
#include "OrvaneKit/Controls/OrvaMenuView.h"
#include "Fakes/FakePlatform.h"

#include <QAction>
#include <QImage>

#include <gtest/gtest.h>

namespace {

using namespace orvane;

QImage picture(OrvaMenuView& menu)
{
    menu.resize(menu.sizeHint());
    QImage image(menu.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    menu.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

int redPixels(const QImage& image, const QRect& area)
{
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            const QColor color = image.pixelColor(x, y);
            count += color.red() > color.green() + 60 && color.red() > color.blue() + 60 ? 1 : 0;
        }
    }
    return count;
}

TEST(OrvaMenuView, OnlyADestructiveEntryIsWrittenInRed)
{
    const FakePlatform fake;
    OrvaMenuView menu;
    QAction* plain = menu.addAction(QStringLiteral("Remove"));
    QAction* destructive = menu.addAction(QStringLiteral("Delete"));
    menu.setDestructive(*destructive);
    const QImage image = picture(menu);
    EXPECT_EQ(redPixels(image, menu.actionGeometry(plain)), 0);
    EXPECT_GT(redPixels(image, menu.actionGeometry(destructive)), 10);
}

TEST(OrvaMenuView, TheCornersAreRoundOnlyWhereACompositorRuns)
{
    FakePlatform fake;
    OrvaMenuView menu;
    menu.addAction(QStringLiteral("Entry"));
    EXPECT_EQ(picture(menu).pixelColor(0, 0).alpha(), 0);
    fake.panels.setCompositing(false);
    EXPECT_EQ(picture(menu).pixelColor(0, 0).alpha(), 255);
}

} // namespace
