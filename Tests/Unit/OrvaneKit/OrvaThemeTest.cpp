// Colours, type and symbols of the view kit.
#include "OrvaneKit/Theme/OrvaTheme.h"
#include "Fakes/FakePlatform.h"
#include "OrvaneKit/Theme/OrvaSymbol.h"
#include "OrvaneKit/Theme/OrvaTint.h"
#include "OrvaneKit/Theme/SystemSymbol.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFontInfo>
#include <QPalette>

#include <gtest/gtest.h>

#include <cmath>

namespace {

using namespace orvane;

double linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color)
{
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor& a, const QColor& b)
{
    const double brighter = std::max(luminance(a), luminance(b));
    const double darker = std::min(luminance(a), luminance(b));
    return (brighter + 0.05) / (darker + 0.05);
}

QColor over(const QColor& top, const QColor& ground)
{
    const double a = top.alphaF();
    const auto mix = [a](double t, double g) { return static_cast<float>(t * a + g * (1 - a)); };
    return QColor::fromRgbF(mix(top.redF(), ground.redF()), mix(top.greenF(), ground.greenF()),
                            mix(top.blueF(), ground.blueF()));
}

class OrvaTextContrast : public testing::TestWithParam<OrvaScheme> {
protected:
    [[nodiscard]] QColor token(OrvaColor color) const { return orvaColor(color, GetParam()); }
    void expectReadable(const QColor& text, const QColor& ground, const char* where) const
    {
        EXPECT_GE(contrast(text, ground), 4.5) << where;
    }
};

TEST_P(OrvaTextContrast, OfPlainTextReachesFourAndAHalf)
{
    for (const OrvaColor ground : {OrvaColor::window, OrvaColor::cardFill}) {
        for (const OrvaColor text : {OrvaColor::primary, OrvaColor::secondary})
            expectReadable(token(text), token(ground), "page or card");
        for (const double tint : {OrvaTint::chip, OrvaTint::hoveredChip, OrvaTint::pressedChip}) {
            const QColor chip = over(faded(token(OrvaColor::primary), tint), token(ground));
            expectReadable(token(OrvaColor::primary), chip, "prominent chip");
            expectReadable(token(OrvaColor::secondary), chip, "chip");
        }
    }
    for (const OrvaColor ground : {OrvaColor::window, OrvaColor::cardFill})
        expectReadable(token(OrvaColor::link), token(ground), "link");
    const QColor row =
        over(faded(token(OrvaColor::primary), orvaChosenOpacity(GetParam())), token(OrvaColor::sidebar));
    expectReadable(token(OrvaColor::primary), row, "chosen row of the sidebar");
    expectReadable(token(OrvaColor::secondary), token(OrvaColor::sidebar), "heading of the sidebar");
    expectReadable(token(OrvaColor::primary), token(OrvaColor::controlFill), "button, picker, stepper");
    const QColor pressed =
        over(faded(token(OrvaColor::primary), OrvaTint::pressedButton), token(OrvaColor::controlFill));
    expectReadable(token(OrvaColor::primary), pressed, "pressed button");
    const QColor hovered =
        over(faded(token(OrvaColor::primary), OrvaTint::hoveredRow), token(OrvaColor::window));
    expectReadable(token(OrvaColor::primary), hovered, "row under the pointer");
    expectReadable(token(OrvaColor::onAccent), token(OrvaColor::accent), "chosen menu item");
}

TEST_P(OrvaTextContrast, OfTheWordmarkReachesFourAndAHalf)
{
    // Its tail is in the colour of links.
    for (const OrvaColor ground : {OrvaColor::window, OrvaColor::sidebar, OrvaColor::cardFill})
        expectReadable(token(OrvaColor::link), token(ground), "wordmark");
}

TEST_P(OrvaTextContrast, OfBadgesAndBannersReachesFourAndAHalf)
{
    for (const OrvaColor ground : {OrvaColor::window, OrvaColor::cardFill}) {
        for (const OrvaColor color :
             {OrvaColor::green, OrvaColor::orange, OrvaColor::red, OrvaColor::secondary}) {
            const QColor badge = over(faded(token(color), OrvaTint::badge), token(ground));
            expectReadable(token(color), badge, "badge");
            const QColor banner = over(faded(token(color), OrvaTint::banner), token(ground));
            expectReadable(token(OrvaColor::primary), banner, "banner");
        }
    }
}

TEST_P(OrvaTextContrast, OfControlsAndTileSymbolsReachesThree)
{
    for (const OrvaColor ground : {OrvaColor::window, OrvaColor::cardFill}) {
        EXPECT_GE(contrast(token(OrvaColor::accent), token(ground)), 3);
        EXPECT_GE(contrast(token(OrvaColor::controlTrack), token(ground)), 3);
    }
    for (const OrvaColor dot : {OrvaColor::green, OrvaColor::orange, OrvaColor::red}) {
        const QColor row =
            over(faded(token(OrvaColor::primary), orvaChosenOpacity(GetParam())), token(OrvaColor::sidebar));
        EXPECT_GE(contrast(orvaLightColor(dot, GetParam()), row), 3);
    }
    // Tiles keep the light scheme's colours; at its lower end their gradient is nearly transparent.
    for (const OrvaColor color : {OrvaColor::accent, OrvaColor::green, OrvaColor::orange, OrvaColor::red}) {
        for (const double tint : {OrvaTint::tileTop, OrvaTint::tileBottom}) {
            const QColor tile =
                over(faded(orvaColor(color, OrvaScheme::light), tint), token(OrvaColor::window));
            EXPECT_GE(contrast(Qt::white, tile), 3);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(BothSchemes, OrvaTextContrast, testing::Values(OrvaScheme::light, OrvaScheme::dark),
                         [](const auto& scheme) {
                             return scheme.param == OrvaScheme::dark ? "Dark" : "Light";
                         });

/// Restores the application's palette and font.
class OrvaThemeTest : public testing::Test {
protected:
    ~OrvaThemeTest() override
    {
        QApplication::setPalette(m_palette);
        QApplication::setFont(m_font);
    }

private:
    QPalette m_palette = QApplication::palette();
    QFont m_font = QApplication::font();
};

TEST_F(OrvaThemeTest, TheSchemeFollowsTheApplicationPalette)
{
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(20, 20, 20));
    palette.setColor(QPalette::WindowText, Qt::white);
    QApplication::setPalette(palette);
    EXPECT_EQ(orvaScheme(), OrvaScheme::dark);
    EXPECT_EQ(orvaColor(OrvaColor::window), orvaColor(OrvaColor::window, OrvaScheme::dark));

    palette.setColor(QPalette::Window, QColor(240, 240, 240));
    palette.setColor(QPalette::WindowText, Qt::black);
    QApplication::setPalette(palette);
    EXPECT_EQ(orvaScheme(), OrvaScheme::light);
}

TEST_F(OrvaThemeTest, TheCardOutlineIsThePrimaryColourAtSevenPercent)
{
    for (const OrvaScheme scheme : {OrvaScheme::light, OrvaScheme::dark}) {
        const QColor stroke = orvaColor(OrvaColor::cardStroke, scheme);
        EXPECT_NEAR(stroke.alphaF(), 0.07, 0.005);
        EXPECT_EQ(stroke.rgb() & 0xffffffu, orvaColor(OrvaColor::primary, scheme).rgb() & 0xffffffu);
    }
}

TEST_F(OrvaThemeTest, TypeScalesWithTheApplicationFont)
{
    QFont font = QApplication::font();
    font.setPointSizeF(20);
    QApplication::setFont(font);
    EXPECT_DOUBLE_EQ(orvaFont(OrvaFont::body).pointSizeF(), 20);
    EXPECT_GT(orvaFont(OrvaFont::title).pointSizeF(), 30);
    EXPECT_LT(orvaFont(OrvaFont::caption).pointSizeF(), orvaFont(OrvaFont::callout).pointSizeF());
    EXPECT_EQ(orvaFont(OrvaFont::title).weight(), QFont::Bold);
    EXPECT_EQ(orvaFont(OrvaFont::smallCaptionSemibold).weight(), QFont::DemiBold);

    font.setPixelSize(30);
    QApplication::setFont(font);
    EXPECT_EQ(orvaFont(OrvaFont::body).pixelSize(), 30);
    EXPECT_EQ(orvaFont(OrvaFont::caption).pixelSize(), 26);
}

int inkedPixels(const QImage& image)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            count += qAlpha(image.pixel(x, y)) > 127 ? 1 : 0;
    return count;
}

TEST(SystemSymbols, AreOneFamilyOnOneGridWithoutForeignReferences)
{
    ASSERT_TRUE(SystemSymbol::exists(QStringLiteral("eye")));
    const QStringList files = QDir(QStringLiteral(":/symbols")).entryList(QDir::Files);
    ASSERT_GE(files.size(), 21);
    for (const QString& name : files) {
        QFile file(QStringLiteral(":/symbols/") + name);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QString source = QString::fromUtf8(file.readAll());
        EXPECT_TRUE(source.contains(QStringLiteral("viewBox=\"0 0 24 24\""))) << qPrintable(name);
        EXPECT_TRUE(source.contains(QStringLiteral("stroke-width=\"1.75\""))) << qPrintable(name);
        EXPECT_FALSE(source.contains(QStringLiteral("href"))) << qPrintable(name);
    }
}

TEST(SystemSymbols, EveryOneDrawsSomethingInTheColourAskedFor)
{
    for (const QString& file : QDir(QStringLiteral(":/symbols")).entryList(QDir::Files)) {
        const QImage image = orvaSymbolPixmap(file.chopped(4), 22, Qt::red, 2)
                                 .toImage()
                                 .convertToFormat(QImage::Format_ARGB32);
        EXPECT_EQ(image.size(), QSize(44, 44));
        EXPECT_GT(inkedPixels(image), 60) << qPrintable(file);
        bool allRed = true;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QRgb pixel = image.pixel(x, y);
                allRed = allRed && (qAlpha(pixel) < 200 || (qRed(pixel) > 250 && qGreen(pixel) < 5));
            }
        }
        EXPECT_TRUE(allRed) << qPrintable(file);
    }
}

TEST(SystemSymbols, ASemiboldOneHasMoreInk)
{
    const auto ink = [](SystemSymbol::Weight weight) {
        return inkedPixels(orvaSymbolPixmap(QStringLiteral("gearshape"), 96, Qt::black, 1, weight).toImage());
    };
    EXPECT_GT(ink(SystemSymbol::Weight::semibold), ink(SystemSymbol::Weight::regular));
}

TEST(SystemSymbols, AnImageKeepsNameDescriptionAndSize)
{
    const TemplateImage image = SystemSymbol::image(QStringLiteral("eye.fill"), QStringLiteral("Awake"), 22);
    EXPECT_EQ(image.symbolName, QStringLiteral("eye.fill"));
    EXPECT_EQ(image.accessibilityDescription, QStringLiteral("Awake"));
    EXPECT_EQ(image.size, QSizeF(22, 22));
    EXPECT_TRUE(static_cast<bool>(image.draw));
}

TEST(SystemSymbols, AMissingOneDrawsNothingAndIsLoggedOnce)
{
    const FakePlatform platform;
    const QString name = QStringLiteral("no.such.symbol");
    EXPECT_FALSE(SystemSymbol::exists(name));
    EXPECT_EQ(inkedPixels(orvaSymbolPixmap(name, 22, Qt::black, 1).toImage()), 0);
    EXPECT_EQ(inkedPixels(orvaSymbolPixmap(name, 22, Qt::black, 2).toImage()), 0);
    ASSERT_EQ(platform.log.entries().size(), 1u);
    EXPECT_EQ(platform.log.entries().front().category, QStringLiteral("Symbols"));
    EXPECT_TRUE(platform.log.messages().first().contains(name));
}

TEST(AppIcon, IsPartOfTheResources)
{
    EXPECT_TRUE(QFile::exists(QStringLiteral(":/icons/net.lindenrow.orvane.svg")));
}

} // namespace
