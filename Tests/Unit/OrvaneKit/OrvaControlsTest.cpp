// Each control of the view kit and the value that it is bound to.
#include "OrvaneKit/Controls/OrvaPickerView.h"
#include "OrvaneKit/Controls/OrvaSliderView.h"
#include "OrvaneKit/Controls/OrvaStepperView.h"
#include "OrvaneKit/Controls/OrvaSwitchView.h"
#include "OrvaneKit/Model/OrvaRows.h"
#include "Unit/OrvaneKit/OrvaWidgetSupport.h"

#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include <cmath>

namespace {

using namespace orvane;
using namespace orvane::tests;

/// A value that counts how often it is set, and may refuse.
template <class T>
struct Source {
    std::shared_ptr<Observable<T>> value = std::make_shared<Observable<T>>();
    int sets = 0;
    bool refuses = false;

    explicit Source(T first) { value->set(first); }
    Binding<T> binding()
    {
        return Binding<T>([kept = value] { return kept->get(); },
                          [this](T next) {
                              ++sets;
                              if (!refuses)
                                  value->set(next);
                          },
                          {value});
    }
};

const QList<OrvaPickerOption>& colours()
{
    static const QList<OrvaPickerOption> list{{QStringLiteral("Warm"), QStringLiteral("warm")},
                                              {QStringLiteral("Cold & blue"), QStringLiteral("cold")},
                                              {QStringLiteral("Red"), QStringLiteral("red")}};
    return list;
}

void turnWheel(QWidget& widget)
{
    QWheelEvent event(QPointF(5, 5), widget.mapToGlobal(QPointF(5, 5)), QPoint(), QPoint(0, 120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&widget, &event);
}

// Switch

TEST(OrvaSwitch, ClickAndSpaceSetTheBindingOnceEach)
{
    Source<bool> source(false);
    OrvaSwitchView view(source.binding(), QStringLiteral("Lit"));
    view.resize(view.sizeHint());
    click(view);
    EXPECT_TRUE(source.value->get());
    EXPECT_EQ(source.sets, 1);
    press(view, Qt::Key_Space);
    EXPECT_FALSE(source.value->get());
    EXPECT_EQ(source.sets, 2);
}

TEST(OrvaSwitch, AChangeFromOutsideShowsAndIsNotSetBack)
{
    Source<bool> source(false);
    const OrvaSwitchView view(source.binding(), QStringLiteral("Lit"));
    source.value->set(true);
    EXPECT_TRUE(view.isChecked());
    source.value->set(true);
    EXPECT_EQ(source.sets, 0);
}

TEST(OrvaSwitch, ToggledByAssistiveTechnologySetsTheBinding)
{
    Source<bool> source(false);
    OrvaSwitchView view(source.binding(), QStringLiteral("Lit"));
    view.toggle();
    EXPECT_TRUE(source.value->get());
    EXPECT_EQ(source.sets, 1);
    source.refuses = true;
    view.toggle();
    EXPECT_TRUE(view.isChecked());
}

TEST(OrvaSwitch, SpringsBackFromARefusedValue)
{
    Source<bool> source(false);
    source.refuses = true;
    OrvaSwitchView view(source.binding(), QStringLiteral("Lit"));
    view.resize(view.sizeHint());
    click(view);
    EXPECT_EQ(source.sets, 1);
    EXPECT_FALSE(view.isChecked());
}

TEST(OrvaSwitch, MovesItsKnobAndComesToRestWhereASwitchThatWasAlwaysOnIs)
{
    Source<bool> source(false);
    Source<bool> on(true);
    OrvaSwitchView view(source.binding(), QStringLiteral("Lit"));
    OrvaSwitchView rest(on.binding(), QStringLiteral("Lit"));
    for (QWidget* widget : {static_cast<QWidget*>(&view), static_cast<QWidget*>(&rest)}) {
        widget->resize(44, 28);
        widget->show();
    }
    const QImage goal = rest.grab().toImage();
    source.value->set(true);
    if (orvaAnimates()) {
        EXPECT_NE(view.grab().toImage(), goal) << "it doesn't jump";
    }
    EXPECT_TRUE(waitUntil([&] { return view.grab().toImage() == goal; }));
}

TEST(OrvaSwitch, MayBeEndedByTheValueThatItSets)
{
    const auto value = std::make_shared<Observable<bool>>(false);
    OrvaSwitchView* view = nullptr;
    const Binding<bool> binding([value] { return value->get(); },
                                [&view](bool) {
                                    delete view;
                                    view = nullptr;
                                },
                                {value});
    view = new OrvaSwitchView(binding, QStringLiteral("Lit"));
    view->click();
    EXPECT_EQ(view, nullptr);
    EXPECT_EQ(value->observerCount(), 0u);
}

TEST(OrvaSwitch, LetsItsSourceGoAtItsEnd)
{
    Source<bool> source(false);
    const std::weak_ptr<Observable<bool>> watched = source.value;
    {
        const OrvaSwitchView view(source.binding(), QStringLiteral("Lit"));
        EXPECT_EQ(source.value->observerCount(), 1u);
    }
    EXPECT_EQ(source.value->observerCount(), 0u);
    source.value.reset();
    EXPECT_TRUE(watched.expired()) << "nothing of the view keeps it";
}

TEST(OrvaSwitch, ShowsAFocusRingForTheKeyboardAndNoneForTheMouse)
{
    Source<bool> source(false);
    QWidget window;
    OrvaSwitchView view(source.binding(), QStringLiteral("Lit"));
    view.setParent(&window);
    view.setGeometry(20, 20, 44, 28);
    QLineEdit other(&window);
    window.resize(200, 100);
    showActive(window);
    other.setFocus();
    const QImage plain = view.grab().toImage();
    view.setFocus(Qt::MouseFocusReason);
    EXPECT_EQ(view.grab().toImage(), plain);
    other.setFocus();
    view.setFocus(Qt::TabFocusReason);
    EXPECT_NE(view.grab().toImage(), plain);
}

// Slider

TEST(OrvaSlider, StepsThroughItsRangeWithTheKeyboard)
{
    Source<double> source(0.5);
    OrvaSliderView view(source.binding(), 0, 1, 0.25, QStringLiteral("Glow"), QString());
    press(view, Qt::Key_Right);
    EXPECT_DOUBLE_EQ(source.value->get(), 0.75);
    press(view, Qt::Key_End);
    EXPECT_DOUBLE_EQ(source.value->get(), 1);
    press(view, Qt::Key_Right);
    EXPECT_DOUBLE_EQ(source.value->get(), 1);
    press(view, Qt::Key_Home);
    EXPECT_DOUBLE_EQ(source.value->get(), 0);
}

TEST(OrvaSlider, WithoutAStepMovesFreely)
{
    Source<double> source(0);
    OrvaSliderView view(source.binding(), 10, 20, std::nullopt, QStringLiteral("Glow"), QString());
    view.resize(324, 24);
    clickAt(view, QPointF(12 + 300.0 / 3, 12));
    EXPECT_NEAR(source.value->get(), 10 + 10 / 3.0, 0.01);
}

TEST(OrvaSlider, FollowsADragToItsEnds)
{
    Source<double> source(0.5);
    OrvaSliderView view(source.binding(), 0, 1, 0.1, QStringLiteral("Glow"), QString());
    view.resize(324, 24);
    mouse(view, QEvent::MouseButtonPress, QPointF(162, 12));
    mouse(view, QEvent::MouseMove, QPointF(900, 12));
    EXPECT_DOUBLE_EQ(source.value->get(), 1);
    mouse(view, QEvent::MouseMove, QPointF(-50, 12));
    EXPECT_DOUBLE_EQ(source.value->get(), 0);
    mouse(view, QEvent::MouseButtonRelease, QPointF(-50, 12));
    mouse(view, QEvent::MouseMove, QPointF(162, 12));
    EXPECT_DOUBLE_EQ(source.value->get(), 0);
}

TEST(OrvaSlider, ShowsValuesFromOutsideEvenOutOfRangeWithoutSettingThem)
{
    Source<double> source(0.5);
    const OrvaSliderView view(source.binding(), 0, 1, 0.1, QStringLiteral("Glow"), QString());
    EXPECT_EQ(view.value(), 5);
    source.value->set(7);
    EXPECT_EQ(view.value(), 10);
    source.value->set(std::nan(""));
    EXPECT_EQ(view.value(), 0);
    EXPECT_EQ(source.sets, 0);
}

TEST(OrvaSlider, SpringsBackFromARefusedValue)
{
    Source<double> source(0.5);
    source.refuses = true;
    OrvaSliderView view(source.binding(), 0, 1, 0.1, QStringLiteral("Glow"), QString());
    press(view, Qt::Key_Right);
    EXPECT_EQ(source.sets, 1);
    EXPECT_EQ(view.value(), 5);
}

TEST(OrvaSlider, AnEmptyRangeCanNotBeMoved)
{
    Source<double> source(3);
    OrvaSliderView view(source.binding(), 3, 3, std::nullopt, QStringLiteral("Glow"), QString());
    view.resize(300, 24);
    press(view, Qt::Key_Right);
    clickAt(view, QPointF(200, 12));
    EXPECT_FALSE(view.grab().isNull());
    EXPECT_EQ(source.sets, 0);
}

// Stepper

TEST(OrvaStepper, StepsByKeyAndByClickWithinItsRange)
{
    Source<int> source(2);
    OrvaStepperView view(source.binding(), 0, 6, 2, QStringLiteral("Bulbs"));
    view.resize(view.sizeHint());
    press(view, Qt::Key_Up);
    EXPECT_EQ(source.value->get(), 4);
    clickAt(view, QPointF(view.width() - 12, view.height() / 2.0 - 6));
    EXPECT_EQ(source.value->get(), 6);
    press(view, Qt::Key_Up);
    EXPECT_EQ(source.value->get(), 6);
    clickAt(view, QPointF(view.width() - 12, view.height() / 2.0 + 6));
    EXPECT_EQ(source.value->get(), 4);
}

TEST(OrvaStepper, SetsATypedNumberWhenItIsComplete)
{
    Source<int> source(2);
    OrvaStepperView view(source.binding(), 0, 60, 1, QStringLiteral("Bulbs"));
    view.selectAll();
    press(view, Qt::Key_4, QStringLiteral("4"));
    press(view, Qt::Key_2, QStringLiteral("2"));
    EXPECT_EQ(source.sets, 0);
    press(view, Qt::Key_Return);
    EXPECT_EQ(source.value->get(), 42);
    EXPECT_EQ(source.sets, 1);
}

TEST(OrvaStepper, FollowsItsSourceAndSpringsBack)
{
    Source<int> source(2);
    OrvaStepperView view(source.binding(), 0, 60, 1, QStringLiteral("Bulbs"));
    source.value->set(9);
    EXPECT_EQ(view.value(), 9);
    EXPECT_EQ(source.sets, 0);
    source.refuses = true;
    press(view, Qt::Key_Up);
    EXPECT_EQ(source.sets, 1);
    EXPECT_EQ(view.value(), 9);
}

// Picker

TEST(OrvaPicker, ShowsTheTitleOfTheSelectedTag)
{
    Source<QString> source(QStringLiteral("cold"));
    const OrvaPickerView view(source.binding(), colours(), QStringLiteral("Colour"));
    EXPECT_EQ(view.currentText(), QStringLiteral("Cold & blue"));
    source.value->set(QStringLiteral("red"));
    EXPECT_EQ(view.currentText(), QStringLiteral("Red"));
    EXPECT_EQ(source.sets, 0);
}

TEST(OrvaPicker, ASelectionWithoutOptionShowsAsNothingChosenAndStays)
{
    Source<QString> source(QStringLiteral("violet"));
    const OrvaPickerView view(source.binding(), colours(), QStringLiteral("Colour"));
    EXPECT_EQ(view.currentIndex(), -1);
    EXPECT_EQ(view.currentText(), QString());
    EXPECT_EQ(source.value->get(), QStringLiteral("violet"));
}

TEST(OrvaPicker, ChoosesWithTheArrowKeys)
{
    Source<QString> source(QStringLiteral("warm"));
    OrvaPickerView view(source.binding(), colours(), QStringLiteral("Colour"));
    press(view, Qt::Key_Down);
    EXPECT_EQ(source.value->get(), QStringLiteral("cold"));
    EXPECT_EQ(source.sets, 1);
}

TEST(OrvaPicker, OpensAMenuThatMarksThePresentChoiceAndSetsTheNextOne)
{
    Source<QString> source(QStringLiteral("cold"));
    OrvaPickerView view(source.binding(), colours(), QStringLiteral("Colour"));
    view.resize(view.sizeHint());
    view.show();
    view.showPopup();
    auto* menu = view.findChild<QMenu*>();
    ASSERT_TRUE(menu);
    EXPECT_TRUE(menu->isVisible());
    ASSERT_EQ(menu->actions().size(), 3);
    EXPECT_FALSE(menu->actions().at(0)->isChecked());
    EXPECT_TRUE(menu->actions().at(1)->isChecked());
    EXPECT_EQ(menu->activeAction(), menu->actions().at(1));
    EXPECT_FALSE(menu->grab().isNull());
    press(*menu, Qt::Key_Down);
    press(*menu, Qt::Key_Return);
    EXPECT_EQ(source.value->get(), QStringLiteral("red"));
    EXPECT_EQ(view.currentText(), QStringLiteral("Red"));
    EXPECT_EQ(source.sets, 1);
}

TEST(OrvaPicker, SpringsBackFromARefusedChoice)
{
    Source<QString> source(QStringLiteral("warm"));
    source.refuses = true;
    OrvaPickerView view(source.binding(), colours(), QStringLiteral("Colour"));
    press(view, Qt::Key_Down);
    EXPECT_EQ(source.sets, 1);
    EXPECT_EQ(view.currentText(), QStringLiteral("Warm"));
}

TEST(OrvaPicker, FollowsChangingOptionsAndKeepsTheSelection)
{
    Source<QString> source(QStringLiteral("red"));
    const auto options = std::make_shared<Observable<QList<OrvaPickerOption>>>(colours());
    const Live<QList<OrvaPickerOption>> live([options] { return options->get(); }, {options});
    const OrvaPickerView view(source.binding(), live, QStringLiteral("Colour"));
    options->set({{QStringLiteral("Crimson"), QStringLiteral("red")}});
    EXPECT_EQ(view.count(), 1);
    EXPECT_EQ(view.currentText(), QStringLiteral("Crimson"));
    options->set({});
    EXPECT_EQ(view.currentIndex(), -1);
    EXPECT_EQ(source.sets, 0);
}

// All

TEST(OrvaControls, LeaveTheWheelToThePage)
{
    Source<double> glow(0.5);
    Source<int> bulbs(2);
    Source<QString> colour(QStringLiteral("warm"));
    OrvaSliderView slider(glow.binding(), 0, 1, 0.1, QStringLiteral("Glow"), QString());
    OrvaStepperView stepper(bulbs.binding(), 0, 9, 1, QStringLiteral("Bulbs"));
    OrvaPickerView picker(colour.binding(), colours(), QStringLiteral("Colour"));
    turnWheel(slider);
    turnWheel(stepper);
    turnWheel(picker);
    EXPECT_EQ(glow.sets + bulbs.sets + colour.sets, 0);
    EXPECT_EQ(picker.currentText(), QStringLiteral("Warm"));
}

TEST(OrvaButtons, RunTheirActionOnlyWhileEnabled)
{
    int runs = 0;
    const auto enabled = std::make_shared<Observable<bool>>(true);
    const auto widget = rendered(OrvaButton{QStringLiteral("Order"), [&runs] { ++runs; }, std::nullopt,
                                            Live<bool>([enabled] { return enabled->get(); }, {enabled})});
    auto* button = dynamic_cast<QPushButton*>(widget.get());
    ASSERT_TRUE(button);
    EXPECT_EQ(button->accessibleName(), QStringLiteral("Order"));
    press(*button, Qt::Key_Space);
    EXPECT_EQ(runs, 1);
    enabled->set(false);
    press(*button, Qt::Key_Space);
    button->click();
    EXPECT_EQ(runs, 1);
}

} // namespace
