// The product's colour, word and mark, as they are drawn.
#include "Orvane/Brand/OrvaneBrand.h"
#include "Fakes/FakePlatform.h"
#include "Orvane/Menus/MenuBarIcon.h"
#include "Unit/OrvaneKit/OrvaWidgetSupport.h"

#include <QAccessible>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QUrl>

#include <gmock/gmock.h>

namespace {

using namespace orvane;
using namespace orvane::tests;

template <class Paint>
QImage drawn(QSize size, Paint paint)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    paint(painter);
    painter.end();
    return image.convertToFormat(QImage::Format_ARGB32);
}

/// Returns the number of pixels with a colour, from one column up to another.
int inked(const QImage& image, const QColor& color, int fromX, int toX)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = fromX; x < toX; ++x) {
            const QColor pixel = image.pixelColor(x, y);
            count += pixel.alpha() > 200 && qAbs(pixel.red() - color.red()) < 6 &&
                             qAbs(pixel.green() - color.green()) < 6 && qAbs(pixel.blue() - color.blue()) < 6
                         ? 1
                         : 0;
        }
    }
    return count;
}

} // namespace

TEST(OrvaneBrandTest, TheAccentOfTheIconIsTheProductsBlue)
{
    EXPECT_NEAR(OrvaneBrand::accent.redF(), 0.22, 0.001);
    EXPECT_NEAR(OrvaneBrand::accent.greenF(), 0.51, 0.001);
    EXPECT_NEAR(OrvaneBrand::accent.blueF(), 1.0, 0.001);
    EXPECT_EQ(OrvaneBrand::accent.alpha(), 255);
}

TEST(OrvaneBrandTest, TheAddressesAreSafeOnesOfOneSite)
{
    for (const QString& address :
         {OrvaneBrand::websiteURL, OrvaneBrand::privacyURL, OrvaneBrand::supportURL}) {
        const QUrl url(address, QUrl::StrictMode);
        EXPECT_TRUE(url.isValid()) << qPrintable(address);
        EXPECT_EQ(url.scheme(), QStringLiteral("https"));
        EXPECT_EQ(url.host(), OrvaneBrand::siteName);
    }
}

TEST(OrvaneBrandTest, ALinkOpensItsAddress)
{
    FakePlatform fake;
    OrvaneBrand::link(QStringLiteral("Privacy"), OrvaneBrand::privacyURL).action();
    EXPECT_EQ(fake.workspace.openedURLs, QStringList{OrvaneBrand::privacyURL});
}

TEST(OrvaneWordmarkTest, ItsTailIsInTheKitsBlueForTextOnEachGround)
{
    EXPECT_EQ(OrvaneBrand::WordmarkColors{.head = Qt::black}.tail(),
              orvaColor(OrvaColor::link, OrvaScheme::light));
    EXPECT_EQ(OrvaneBrand::WordmarkColors{.head = Qt::white}.tail(),
              orvaColor(OrvaColor::link, OrvaScheme::dark));
}

TEST(OrvaneWordmarkTest, ItsHeadIsInTheTextsColourAndItsTailInTheKitsBlue)
{
    const QSizeF size = OrvaneBrand::wordmarkSize(60);
    const QSize pixels(static_cast<int>(size.width()) + 2, static_cast<int>(size.height()) + 2);
    const QImage image = drawn(pixels, [&](QPainter& painter) {
        OrvaneBrand::paintWordmark(painter, QRectF(QPointF(), pixels), 60, {.head = Qt::black});
    });
    const QColor blue = orvaColor(OrvaColor::link, OrvaScheme::light);
    const int third = pixels.width() / 4;
    EXPECT_GT(inked(image, Qt::black, 0, third), 60);
    EXPECT_EQ(inked(image, blue, 0, third), 0);
    EXPECT_GT(inked(image, blue, 2 * third, pixels.width()), 60);
    EXPECT_EQ(inked(image, Qt::black, 2 * third, pixels.width()), 0);
}

TEST(OrvaneWordmarkTest, ItsLettersAreAFifthOfAPointApart)
{
    QFont font = QGuiApplication::font();
    font.setPixelSize(17);
    font.setWeight(QFont::DemiBold);
    const QFontMetricsF metrics(font);
    const double unkerned =
        metrics.horizontalAdvance(OrvaneBrand::wordHead) + metrics.horizontalAdvance(OrvaneBrand::wordTail);
    EXPECT_NEAR(OrvaneBrand::wordmarkSize(17).width(), unkerned + 6 * 0.2,
                0.1); // text is placed in 64ths of a point
}

TEST(OrvaneWordmarkTest, KeepsItsSizeWhateverTheUsersFontSize)
{
    const QSizeF before = OrvaneBrand::wordmarkSize(17);
    const QFont font = QGuiApplication::font();
    QFont large = font;
    large.setPointSizeF(30);
    QGuiApplication::setFont(large);
    const QSizeF after = OrvaneBrand::wordmarkSize(17);
    QGuiApplication::setFont(font);
    EXPECT_EQ(after, before);
}

TEST(OrvaneWordmarkTest, IsReadOutAsOneWord)
{
    const auto widget = rendered(OrvaneWordmark{.size = 17, .lead = QStringLiteral("Welcome to ")});
    const QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(widget.get());
    EXPECT_EQ(accessible->role(), QAccessible::StaticText);
    EXPECT_EQ(accessible->text(QAccessible::Name), QStringLiteral("Welcome to Orvane"));
}

TEST(AppIconBadgeTest, HasTheFourCellsOfTheMenuBarIconOnARoundedGround)
{
    constexpr int side = 200;
    const QImage image = drawn(QSize(side, side), [](QPainter& painter) {
        OrvaneBrand::paintAppIconBadge(painter, QRectF(0, 0, side, side));
    });
    EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
    EXPECT_EQ(image.pixelColor(side - 1, side - 1).alpha(), 0);

    QRectF mark(0, 0, OrvaneBrand::markShare * side, OrvaneBrand::markShare * side);
    mark.moveCenter(QPointF(side, side) / 2);
    const MenuBarIcon::Shape shape = MenuBarIcon::shape(mark);
    const QColor gap = image.pixelColor(side / 2, side / 2);
    EXPECT_GT(gap.blue(), gap.red()) << "the ground shows between the cells";
    for (const QRectF& cell : shape.cells) {
        const QColor inside = image.pixelColor(cell.center().toPoint());
        EXPECT_GT(inside.red(), gap.red() + 40);
        const QColor corner = image.pixelColor((cell.topLeft() + QPointF(1, 1)).toPoint());
        EXPECT_LT(corner.red(), inside.red()) << "its corners are round";
    }
}

TEST(AppIconBadgeTest, ItsShadowTakesRoomAroundIt)
{
    EXPECT_EQ(rendered(AppIconBadge{84})->size(), QSize(84, 84));
    const QSize withShadow = rendered(AppIconBadge{84, BadgeShadow::soft})->size();
    EXPECT_GT(withShadow.width(), 84);
    EXPECT_EQ(withShadow.width(), withShadow.height());
}
