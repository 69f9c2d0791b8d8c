#include "Fakes/FakeApplication.h"
#include "Fakes/FakeLogSink.h"
#include "PlatformLinux/Session/QtApplication.h"

#include <QTimer>
#include <QWidget>

#include <gmock/gmock.h>

#include <csignal>
#include <functional>
#include <memory>
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

/// The arguments of a program that has none.
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

    /// Runs the loop, and in it `act` once the program has launched.
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
