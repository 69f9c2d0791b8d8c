#include "Fakes/FakeApplication.h"
#include "Fakes/FakeLogSink.h"
#include "PlatformLinux/Session/QtApplication.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <gmock/gmock.h>

#include <csignal>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace orvane::tests {

namespace {

class Delegate : public ApplicationDelegate {
public:
    void applicationDidFinishLaunching() override
    {
        ++launches;
        launched();
    }

    bool applicationShouldHandleReopen(bool hasVisibleWindows) override
    {
        reopens.push_back(hasVisibleWindows);
        return true;
    }

    int launches = 0;
    std::vector<bool> reopens;
    std::function<void()> launched = [] {};
};

/// The arguments of a program that was started without any.
struct Arguments {
    int count = 1;
    char name[7] = "orvane";
    char* values[2] = {name, nullptr};
};

class QtSubject {
public:
    Application& application() { return m_application; }

private:
    FakeLogSink m_log;
    Arguments m_arguments;
    QtApplication m_application{m_arguments.count, m_arguments.values, m_log};
};

class FakeSubject {
public:
    Application& application() { return m_application; }

private:
    FakeApplication m_application;
};

template <typename Subject>
class ApplicationContract : public ::testing::Test {
protected:
    Application& application() { return m_subject.application(); }

    Subject m_subject;
};

class QtApplicationTest : public ::testing::Test {
protected:
    QtApplicationTest() { m_application.setDelegate(&m_delegate); }

    /// Runs the loop, and `act` in it once the program has launched.
    void afterLaunch(const std::function<void()>& act)
    {
        m_delegate.launched = [&] {
            QTimer::singleShot(0, [&] {
                act();
                m_application.terminate();
            });
        };
        m_application.run();
    }

    FakeLogSink m_log;
    Arguments m_arguments;
    QtApplication m_application{m_arguments.count, m_arguments.values, m_log};
    Delegate m_delegate;
};

using Subjects = ::testing::Types<FakeSubject, QtSubject>;
TYPED_TEST_SUITE(ApplicationContract, Subjects);

} // namespace

TYPED_TEST(ApplicationContract, IsAnAccessoryAtFirst)
{
    EXPECT_EQ(this->application().activationPolicy(), Application::ActivationPolicy::accessory);
}

TYPED_TEST(ApplicationContract, KeepsThePolicyThatWasSet)
{
    for (const auto policy :
         {Application::ActivationPolicy::regular, Application::ActivationPolicy::accessory}) {
        this->application().setActivationPolicy(policy);
        EXPECT_EQ(this->application().activationPolicy(), policy);
    }
}

TYPED_TEST(ApplicationContract, GivesTheMainMenuBackThatWasSet)
{
    EXPECT_EQ(this->application().mainMenu(), nullptr);
    const auto menu = std::make_shared<Menu>();
    menu->title = QStringLiteral("Main");
    this->application().setMainMenu(menu);
    EXPECT_EQ(this->application().mainMenu(), menu);
    this->application().setMainMenu(nullptr);
    EXPECT_EQ(this->application().mainMenu(), nullptr);
}

TEST_F(QtApplicationTest, HiddenWindowsComeBackWithTheProgram)
{
    QWidget first;
    QWidget second;
    QWidget never;
    first.show();
    second.show();
    m_application.hide();
    EXPECT_FALSE(first.isVisible());
    EXPECT_FALSE(second.isVisible());
    m_application.activateIgnoringOtherApps();
    EXPECT_TRUE(first.isVisible());
    EXPECT_TRUE(second.isVisible());
    EXPECT_FALSE(never.isVisible());
}

TEST_F(QtApplicationTest, AHiddenWindowThatWasDeletedIsForgotten)
{
    auto window = std::make_unique<QWidget>();
    QWidget other;
    window->show();
    other.show();
    m_application.hide();
    window.reset();
    m_application.activateIgnoringOtherApps();
    EXPECT_TRUE(other.isVisible());
}

TEST_F(QtApplicationTest, AFurtherStartBringsHiddenWindowsBackAndCountsThem)
{
    QWidget window;
    afterLaunch([&] {
        window.show();
        m_application.hide();
        m_application.reopen();
        EXPECT_TRUE(window.isVisible());
    });
    EXPECT_THAT(m_delegate.reopens, ::testing::ElementsAre(true));
}

QWidget* aboutPanel()
{
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (widget->windowTitle().startsWith(QStringLiteral("About")))
            return widget;
    }
    return nullptr;
}

TEST_F(QtApplicationTest, TheAboutPanelSaysNameAndVersionAndThereIsOne)
{
    m_application.orderFrontStandardAboutPanel();
    m_application.orderFrontStandardAboutPanel();
    QWidget* panel = aboutPanel();
    ASSERT_TRUE(panel);
    EXPECT_TRUE(panel->isVisible());
    QStringList texts;
    for (const QLabel* label : panel->findChildren<QLabel*>())
        texts.append(label->text());
    EXPECT_THAT(texts, ::testing::IsSupersetOf(
                           {QStringLiteral("Orvane"), QStringLiteral("Version " ORVANE_VERSION)}));
    EXPECT_EQ(QApplication::topLevelWidgets().size(), 1);
}

TEST_F(QtApplicationTest, TheToolkitAddsNothingToTheTitlesOfWindows)
{
    // It adds the display name if one is set; without one it gives the other name here.
    EXPECT_EQ(QGuiApplication::applicationDisplayName(), QCoreApplication::applicationName());
}

TEST_F(QtApplicationTest, EscapeAndControlWCloseTheAboutPanel)
{
    const std::pair<Qt::Key, Qt::KeyboardModifiers> keys[] = {{Qt::Key_Escape, Qt::NoModifier},
                                                              {Qt::Key_W, Qt::ControlModifier}};
    for (const auto& [key, modifiers] : keys) {
        m_application.orderFrontStandardAboutPanel();
        QPointer<QWidget> panel = aboutPanel();
        ASSERT_TRUE(panel);
        QKeyEvent press(QEvent::KeyPress, key, modifiers);
        QCoreApplication::sendEvent(panel, &press);
        EXPECT_FALSE(panel->isVisible());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_FALSE(panel);
    }
}

TEST_F(QtApplicationTest, CommandsOfTheApplicationAreSentToIt)
{
    QWidget window;
    window.show();
    EXPECT_TRUE(m_application.sendAction(u"hide:"));
    EXPECT_FALSE(window.isVisible());
    EXPECT_TRUE(m_application.sendAction(u"orderFrontStandardAboutPanel:"));
    EXPECT_TRUE(aboutPanel());
    EXPECT_FALSE(m_application.sendAction(u"nobody:"));
    EXPECT_FALSE(m_application.sendAction(u"copy:")) << "with nothing in focus";
    afterLaunch([this] { EXPECT_TRUE(m_application.sendAction(u"terminate:")); });
}

TEST_F(QtApplicationTest, TheRunningLoopTellsTheDelegateOnceAndTerminatingEndsIt)
{
    m_delegate.launched = [this] { m_application.terminate(); };
    EXPECT_EQ(m_delegate.launches, 0);
    EXPECT_EQ(m_application.run(), 0);
    EXPECT_EQ(m_delegate.launches, 1);
}

TEST_F(QtApplicationTest, ClosingTheLastWindowDoesNotEndTheProgram)
{
    auto window = std::make_unique<QWidget>();
    bool closed = false;
    bool ranOn = false;
    m_delegate.launched = [&] {
        window->show();
        window->close();
        closed = true;
        QTimer::singleShot(0, [&] {
            QTimer::singleShot(0, [&] {
                ranOn = true;
                m_application.terminate();
            });
        });
    };
    m_application.run();
    EXPECT_TRUE(closed);
    EXPECT_TRUE(ranOn);
}

TEST_F(QtApplicationTest, TheSignalsThatEndAProgramTerminateIt)
{
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        m_delegate.launched = [signal] { std::raise(signal); };
        EXPECT_EQ(m_application.run(), 0) << signal;
    }
    EXPECT_EQ(m_delegate.launches, 3);
}

TEST_F(QtApplicationTest, AFurtherStartTellsTheDelegateWhetherAWindowIsVisible)
{
    afterLaunch([this] {
        m_application.reopen();
        QWidget window;
        window.show();
        m_application.reopen();
        window.hide();
        m_application.reopen();
    });
    EXPECT_THAT(m_delegate.reopens, ::testing::ElementsAre(false, true, false));
}

TEST_F(QtApplicationTest, AFurtherStartBeforeTheLaunchWaitsForIt)
{
    m_application.reopen();
    m_delegate.launched = [this] {
        EXPECT_THAT(m_delegate.reopens, ::testing::IsEmpty());
        m_application.terminate();
    };
    m_application.run();
    EXPECT_THAT(m_delegate.reopens, ::testing::ElementsAre(false));
}

TEST_F(QtApplicationTest, AFurtherStartWithoutADelegateIsPassedOver)
{
    afterLaunch([this] {
        m_application.setDelegate(nullptr);
        m_application.reopen();
    });
    EXPECT_THAT(m_delegate.reopens, ::testing::IsEmpty());
}

} // namespace orvane::tests
