#include "Fakes/RecordingCapability.h"

#include <gtest/gtest.h>

using namespace orvane;

namespace {

struct ServiceHostTest : testing::Test {
    std::shared_ptr<RecordingService> makeService(const char* name)
    {
        return std::make_shared<RecordingService>(QLatin1String(name), journal);
    }

    std::shared_ptr<QStringList> journal = std::make_shared<QStringList>();
    ServiceHost host;
};

} // namespace

TEST_F(ServiceHostTest, RegisteringStartsTheService)
{
    host.registerService(makeService("a"));
    EXPECT_EQ(*journal, QStringList{QStringLiteral("start a")});
    EXPECT_EQ(host.runningCount(), 1);
}

TEST_F(ServiceHostTest, AServiceThatThrowsOnStartIsNotKept)
{
    const auto failing = makeService("bad");
    failing->error = QStringLiteral("no");
    host.registerService(makeService("a"));
    EXPECT_THROW(host.registerService(failing), std::runtime_error);
    EXPECT_EQ(host.runningCount(), 1);
    journal->clear();
    host.stopAll();
    EXPECT_EQ(*journal, QStringList{QStringLiteral("stop a")});
}

TEST_F(ServiceHostTest, StopAllStopsTheLaterRegisteredFirst)
{
    host.registerService(makeService("a"));
    host.registerService(makeService("b"));
    journal->clear();
    host.stopAll();
    EXPECT_EQ(*journal, (QStringList{QStringLiteral("stop b"), QStringLiteral("stop a")}));
}

TEST_F(ServiceHostTest, AfterStopAllNothingCountsWhateverTheServicesSay)
{
    const auto stubborn = makeService("a");
    stubborn->staysRunning = true;
    host.registerService(stubborn);
    host.stopAll();
    EXPECT_TRUE(stubborn->isRunning());
    EXPECT_EQ(host.runningCount(), 0);
}

TEST_F(ServiceHostTest, TheCountIsTakenFromTheServicesAtTheMoment)
{
    const auto service = makeService("a");
    host.registerService(service);
    service->stop();
    EXPECT_EQ(host.runningCount(), 0);
}

TEST_F(ServiceHostTest, OneServiceRegisteredTwiceIsHeldTwice)
{
    const auto service = makeService("a");
    host.registerService(service);
    host.registerService(service);
    EXPECT_EQ(host.runningCount(), 2);
}
