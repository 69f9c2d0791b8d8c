// The helpers that the kit's views share: bound values, the order of Tab, the soft shadow, elided text.
#include "OrvaneKit/Controls/OrvaSwitchView.h"
#include "OrvaneKit/Model/OrvaBindings.h"
#include "OrvaneKit/Theme/OrvaFocus.h"
#include "OrvaneKit/Theme/OrvaSoftShadow.h"
#include "Unit/OrvaneKit/OrvaWidgetSupport.h"

#include <QImage>
#include <QLineEdit>
#include <QPainter>

#include <gtest/gtest.h>

namespace {

using namespace orvane;
using namespace orvane::tests;

struct Lamp {
    Observable<int> glow{1};
};

struct OrvaBoundValueTest : testing::Test {
    std::shared_ptr<Lamp> lamp = std::make_shared<Lamp>();
    QObject control;
    std::vector<int> shown;
};

TEST_F(OrvaBoundValueTest, ShowsEachValueOfItsBinding)
{
    OrvaBoundValue<int> value(bind(lamp, &Lamp::glow));
    value.follow(control, [&](int glow) { shown.push_back(glow); });
    lamp->glow.set(4);
    EXPECT_EQ(shown, (std::vector{1, 4}));
}

TEST_F(OrvaBoundValueTest, ShowsThePresentValueAgainWhenASetIsRefused)
{
    OrvaBoundValue<int> value(Binding<int>([] { return 1; }, [](int) {}, {}));
    value.follow(control, [&](int glow) { shown.push_back(glow); });
    EXPECT_TRUE(value.set(7));
    EXPECT_EQ(shown, (std::vector{1, 1}));
}

TEST_F(OrvaBoundValueTest, ShowsNothingMoreWhenASetEndsItsControl)
{
    auto owner = std::make_unique<QObject>();
    OrvaBoundValue<int> value(Binding<int>([] { return 1; }, [&](int) { owner.reset(); }, {}));
    value.follow(*owner, [&](int glow) { shown.push_back(glow); });
    EXPECT_FALSE(value.set(7));
    EXPECT_EQ(shown, std::vector{1});
}

TEST_F(OrvaBoundValueTest, SaysThatItShowsOnlyWhileItDoes)
{
    OrvaBoundValue<int> value(bind(lamp, &Lamp::glow));
    bool whileShowing = false;
    value.follow(control, [&](int) { whileShowing = value.isShowing(); });
    EXPECT_TRUE(whileShowing);
    EXPECT_FALSE(value.isShowing());
}

struct OrvaFocusTest : testing::Test {
    QWidget window;
    QLineEdit first{&window};
    QWidget group{&window};
    QLineEdit inside{&group};
    QLineEdit disabled{&group};
    QLineEdit last{&window};

    OrvaFocusTest()
    {
        disabled.setEnabled(false);
        window.show();
    }
};

TEST_F(OrvaFocusTest, TabStopsAtWhatCanBeUsed)
{
    EXPECT_EQ(tabStops(window), (QList<QWidget*>{&first, &inside, &last}));
    EXPECT_EQ(tabStops(group), QList<QWidget*>{&inside});
    EXPECT_EQ(firstTabStop(group), &inside);
    inside.hide();
    EXPECT_EQ(firstTabStop(group), nullptr);
}

TEST_F(OrvaFocusTest, WhatIsDisabledKeepsItsPlace)
{
    EXPECT_EQ(focusPlaces(group), (QList<QWidget*>{&inside, &disabled}));
}

TEST_F(OrvaFocusTest, AChainIsTheOrderOfTab)
{
    EXPECT_EQ(chainTabs(nullptr, {&last, &inside}), &inside);
    EXPECT_EQ(tabStops(window), (QList<QWidget*>{&first, &last, &inside}));
    EXPECT_EQ(chainTabs(&last, {}), &last);
}

TEST(OrvaFocusHanding, TheRingGoesWithTheFocusOfAControlThatIsUsedByKeyboard)
{
    QWidget window;
    OrvaSwitchView from(Binding<bool>([] { return false; }, [](bool) {}, {}), QStringLiteral("From"));
    OrvaSwitchView to(Binding<bool>([] { return false; }, [](bool) {}, {}), QStringLiteral("To"));
    from.setParent(&window);
    to.setParent(&window);
    showActive(window);
    handFocusOn(&from, to);
    EXPECT_FALSE(isUsedByKeyboard(&to));
    press(from, Qt::Key_Tab);
    ASSERT_TRUE(isUsedByKeyboard(&from));
    from.setFocus();
    handFocusOn(&from, to);
    EXPECT_TRUE(isUsedByKeyboard(&to));
    EXPECT_FALSE(isUsedByKeyboard(nullptr));
}

TEST(OrvaSoftShadow, FadesToNothingInsideItsRoom)
{
    OrvaSoftShadow shadow({.corner = 8,
                           .room = 20,
                           .fall = 4,
                           .inset = 2,
                           .power = 2,
                           .strengthOnLight = 0.5,
                           .strengthOnDark = 0.5});
    QImage image(200, 160, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const QRect box(40, 40, 120, 80);
    {
        QPainter painter(&image);
        shadow.paint(painter, box);
    }
    for (int x = 0; x < image.width(); ++x) {
        EXPECT_EQ(qAlpha(image.pixel(x, box.bottom() + 1 + 20)), 0) << x;
        EXPECT_EQ(qAlpha(image.pixel(x, box.top() - 21)), 0) << x;
    }
    EXPECT_EQ(qAlpha(image.pixel(100, 80)), 128);
    const auto below = [&](int distance) { return qAlpha(image.pixel(100, box.bottom() + distance)); };
    for (int distance = 1; distance < 20; ++distance)
        EXPECT_GE(below(distance), below(distance + 1)) << distance;
    EXPECT_GT(below(8), qAlpha(image.pixel(100, box.top() - 8))) << "it falls downwards";
}

TEST(OrvaElidedText, EndsWhereItsRoomDoes)
{
    QImage image(200, 40, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    {
        QPainter painter(&image);
        painter.setPen(Qt::black);
        paintOrvaElidedText(painter, QRectF(10, 0, 80, 40), Qt::LeftToRight,
                            QStringLiteral("A text that needs much more room than this"));
    }
    bool anyInside = false;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const bool inked = qGray(image.pixel(x, y)) < 128;
            anyInside = anyInside || inked;
            EXPECT_FALSE(inked && (x < 9 || x > 91)) << x;
        }
    }
    EXPECT_TRUE(anyInside);
}

} // namespace
