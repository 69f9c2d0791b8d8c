// The first run as widgets: keys, focus, motion, polling, and what assistive technology is told.
#include "Orvane/Onboarding/OnboardingFlowView.h"
#include "Unit/Orvane/OnboardingFixture.h"
#include "Unit/OrvaneKit/OrvaWidgetSupport.h"

#include <QAccessible>
#include <QCheckBox>
#include <QProxyStyle>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

#include <cstdlib>

#include <gmock/gmock.h>

namespace orvane::tests {

using namespace std::chrono_literals;

namespace {

/// A desktop style that asks for still controls, or for moving ones.
class MotionStyle : public QProxyStyle {
public:
    explicit MotionStyle(int milliseconds) : m_milliseconds(milliseconds) {}
    [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                                QStyleHintReturn* data) const override
    {
        return hint == SH_Widget_Animation_Duration ? m_milliseconds
                                                    : QProxyStyle::styleHint(hint, option, widget, data);
    }

private:
    int m_milliseconds;
};

class OnboardingWidgetTest : public OnboardingFixture {
protected:
    OnboardingWidgetTest()
    {
        QApplication::setStyle(new MotionStyle(0));
        window.resize(940, 640);
        auto* layout = new QVBoxLayout(&window);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(view = makeFlow().makeWidget());
        showActive(window);
    }
    ~OnboardingWidgetTest() override { QApplication::setStyle(QString()); }

    QPushButton* pushButton(const char* name)
    {
        for (QPushButton* candidate : all<QPushButton>(*view)) {
            if (candidate->accessibleName() == QLatin1String(name) && candidate->isVisible())
                return candidate;
        }
        return nullptr;
    }
    /// Returns the widget with this accessible name.
    QWidget* labelled(const char* name)
    {
        for (QWidget* widget : all<QWidget>(*view)) {
            const QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(widget);
            if (accessible->role() == QAccessible::StaticText &&
                accessible->text(QAccessible::Name) == QLatin1String(name))
                return widget;
        }
        return nullptr;
    }
    bool shows(const QString& text) { return shownTexts(*view).contains(text); }
    void pressKey(Qt::Key key) { tests::press(*QApplication::focusWidget(), key); }
    void continueTimes(int times)
    {
        for (int time = 0; time < times; ++time)
            pushButton("Continue")->click();
        // The previous page is deleted in a later turn.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    void tab() { tests::press(*QApplication::focusWidget(), Qt::Key_Tab); }

    QWidget window;
    QWidget* view = nullptr;
};

} // namespace

TEST_F(OnboardingWidgetTest, ReturnGoesForwardWhereverTheFocusIs)
{
    pressKey(Qt::Key_Return);
    EXPECT_TRUE(shows(QStringLiteral("Permissions")));
    pushButton("Grant")->setFocus(Qt::TabFocusReason);
    pressKey(Qt::Key_Return);
    EXPECT_TRUE(shows(QStringLiteral("Choose your features")));
    EXPECT_TRUE(fake.permissions.requests.isEmpty());
    all<QCheckBox>(*view).first()->setFocus(Qt::TabFocusReason);
    pressKey(Qt::Key_Enter);
    EXPECT_TRUE(flag->hasOnboarded.get());
}

TEST_F(OnboardingWidgetTest, TheForwardButtonIsTheDefaultOneAndHasTheFocusAtFirst)
{
    EXPECT_TRUE(pushButton("Continue")->isDefault());
    EXPECT_EQ(QApplication::focusWidget(), pushButton("Continue"));
    pressKey(Qt::Key_Space);
    EXPECT_TRUE(shows(QStringLiteral("Permissions")));
    EXPECT_EQ(QApplication::focusWidget(), pushButton("Continue"));
}

TEST_F(OnboardingWidgetTest, TabGoesThroughThePageThenToBackAndForward)
{
    fake.permissions.screenRecording = true;
    permissions->refresh();
    continueTimes(1);
    QStringList order;
    QWidget* const first = QApplication::focusWidget();
    do {
        const QWidget* focus = QApplication::focusWidget();
        order.append(focus->accessibleName() + QLatin1Char('/') + focus->accessibleDescription());
        tab();
    } while (QApplication::focusWidget() != first && order.size() < 30);
    EXPECT_EQ(order, (QStringList{QStringLiteral("Continue/"), QStringLiteral("Grant/Accessibility"),
                                  QStringLiteral("Open System Settings/Accessibility"),
                                  QStringLiteral("Grant/Input Monitoring"),
                                  QStringLiteral("Open System Settings/Input Monitoring"),
                                  QStringLiteral("Grant/Automation"),
                                  QStringLiteral("Open System Settings/Automation"),
                                  QStringLiteral("Quit & Reopen/"), QStringLiteral("Back/")}));
}

TEST_F(OnboardingWidgetTest, BackToTheWelcomeLeavesTheFocusOnTheForwardButton)
{
    continueTimes(1);
    pushButton("Back")->setFocus(Qt::TabFocusReason);
    pressKey(Qt::Key_Space);
    EXPECT_EQ(pushButton("Back"), nullptr);
    EXPECT_EQ(QApplication::focusWidget(), pushButton("Continue"));
}

TEST_F(OnboardingWidgetTest, APermissionGrantedMeanwhileShowsWithinTwoSeconds)
{
    continueTimes(1);
    const auto marks = [&] {
        int count = 0;
        for (const OrvaTextView* text : all<OrvaTextView>(*view))
            count += text->text() == QStringLiteral("Granted") && text->isVisible() ? 1 : 0;
        return count;
    };
    EXPECT_EQ(marks(), 0);
    fake.permissions.inputMonitoring = true;
    EXPECT_EQ(marks(), 0) << "nothing tells the process";
    fake.runLoop.advance(2s);
    EXPECT_EQ(marks(), 1);
}

TEST_F(OnboardingWidgetTest, OnlyTheChecklistPollsAndOnlyWhileItIsInSight)
{
    EXPECT_EQ(fake.runLoop.timerCount(), 0u);
    int reads = 0;
    fake.permissions.onRead = [&] { ++reads; };
    continueTimes(1);
    EXPECT_EQ(reads, 1) << "it reads on appearing";
    EXPECT_THAT(fake.runLoop.timerIntervals(), testing::ElementsAre(2s));
    fake.runLoop.advance(4s);
    EXPECT_EQ(reads, 3);
    window.hide();
    EXPECT_EQ(fake.runLoop.timerCount(), 0u);
    window.show();
    EXPECT_EQ(fake.runLoop.timerCount(), 1u);
    continueTimes(1);
    EXPECT_EQ(fake.runLoop.timerCount(), 0u);
}

TEST_F(OnboardingWidgetTest, StillControlsChangeThePageAtOnce)
{
    continueTimes(1);
    EXPECT_TRUE(all<OnboardingStageView>(*view).first()->page()->isVisible());
    EXPECT_FALSE(all<OnboardingStageView>(*view).first()->isMoving());
}

TEST_F(OnboardingWidgetTest, WhileAPageComesItIsThereAndWorks)
{
    QApplication::setStyle(new MotionStyle(200));
    auto& stage = *all<OnboardingStageView>(*view).first();
    pushButton("Continue")->click();
    EXPECT_TRUE(stage.isMoving());
    pushButton("Grant")->click();
    EXPECT_EQ(fake.permissions.requests, QStringList{QStringLiteral("accessibility")});
    pushButton("Continue")->click();
    EXPECT_TRUE(shows(QStringLiteral("Choose your features")));
    EXPECT_TRUE(waitUntil([&] { return !stage.isMoving(); }));
    EXPECT_EQ(stage.page()->geometry(), stage.rect());
}

TEST_F(OnboardingWidgetTest, APageFitsTheSmallestWindowWithoutASidewaysCut)
{
    window.resize(820, 560);
    for (int page = 0; page < 3; ++page) {
        QCoreApplication::processEvents();
        for (const OrvaTextView* text : all<OrvaTextView>(*view)) {
            if (!text->isVisible())
                continue;
            EXPECT_LE(text->heightForWidth(text->width()), text->height()) << qPrintable(text->text());
        }
        const auto* area = all<QScrollArea>(*view).last();
        EXPECT_LE(area->widget()->width(), area->viewport()->width());
        if (page < 2)
            continueTimes(1);
    }
}

TEST_F(OnboardingWidgetTest, TheDotsSayWhichPageItIs)
{
    EXPECT_TRUE(labelled("Page 1 of 3"));
    continueTimes(1);
    EXPECT_TRUE(labelled("Page 2 of 3"));
    EXPECT_FALSE(labelled("Page 1 of 3"));
}

TEST_F(OnboardingWidgetTest, TheDotsStandStillInTheMiddleOfEveryPage)
{
    for (const char* page : {"Page 1 of 3", "Page 2 of 3", "Page 3 of 3"}) {
        QCoreApplication::processEvents();
        QWidget* dots = labelled(page);
        ASSERT_TRUE(dots);
        const int left = dots->mapTo(&window, QPoint()).x();
        const int right = window.width() - left - dots->width();
        EXPECT_LE(std::abs(left - right), 1) << page;
        if (pushButton("Continue"))
            continueTimes(1);
    }
}

} // namespace orvane::tests
