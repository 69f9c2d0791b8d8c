#include "Fakes/FakePlatform.h"
#include "OrvaneCore/Base/Log.h"
#include "OrvaneCore/Base/OrvaNotifications.h"
#include "OrvaneCore/Base/Task.h"

#include <gtest/gtest.h>

using namespace orvane;

TEST(Log, TwoLoggersOfOneCategoryAreAlike)
{
    FakePlatform fake;
    const Logger first = Log::make(QStringLiteral("x"));
    const Logger second = Log::make(QStringLiteral("x"));
    first.info(QStringLiteral("a"));
    second.fault(QStringLiteral("b"));
    const QString subsystem = QStringLiteral("net.lindenrow.orvane");
    const std::vector<FakeLogSink::Entry> expected{
        {LogLevel::info, subsystem, QStringLiteral("x"), QStringLiteral("a")},
        {LogLevel::fault, subsystem, QStringLiteral("x"), QStringLiteral("b")}};
    EXPECT_EQ(fake.log.entries(), expected);
}

TEST(Log, EachLevelIsItsOwn)
{
    FakePlatform fake;
    const Logger log = Log::make(QStringLiteral("x"));
    log.info({});
    log.notice({});
    log.error({});
    log.fault({});
    std::vector<LogLevel> levels;
    for (const auto& entry : fake.log.entries())
        levels.push_back(entry.level);
    EXPECT_EQ(levels, (std::vector{LogLevel::info, LogLevel::notice, LogLevel::error, LogLevel::fault}));
}

TEST(OrvaNotifications, TheNameOfOpenHome)
{
    EXPECT_EQ(OrvaNotifications::openHome, QStringLiteral("net.lindenrow.orvane.openHome"));
}

TEST(Task, BeginsAfterItsCallerHasReturned)
{
    FakePlatform fake;
    int runs = 0;
    startTask([&runs]() -> Task<> {
        ++runs;
        co_return;
    });
    EXPECT_EQ(runs, 0);
    fake.runLoop.drain();
    EXPECT_EQ(runs, 1);
}

TEST(Task, KeepsTheCapturesOfItsBodyWhileItIsSuspended)
{
    FakePlatform fake;
    struct Pause {
        std::coroutine_handle<>& waiting;
        [[nodiscard]] bool await_ready() const noexcept { return false; }
        void await_suspend(std::coroutine_handle<> handle) noexcept { waiting = handle; }
        void await_resume() const noexcept {}
    };
    std::coroutine_handle<> waiting;
    QString result;
    startTask([&waiting, &result, text = QStringLiteral("kept until the end")]() -> Task<> {
        co_await Pause{waiting};
        result = text;
    });
    fake.runLoop.drain();
    ASSERT_TRUE(waiting);
    waiting.resume();
    EXPECT_EQ(result, QStringLiteral("kept until the end"));
}

TEST(Task, AnErrorThatLeavesItIsAFaultInTheLog)
{
    FakePlatform fake;
    startTask([]() -> Task<> {
        throw std::runtime_error("lost");
        co_return;
    });
    fake.runLoop.drain();
    ASSERT_EQ(fake.log.entries().size(), 1u);
    EXPECT_EQ(fake.log.entries().front().level, LogLevel::fault);
    EXPECT_EQ(fake.log.entries().front().message, QStringLiteral("A task ended with an error: lost"));
}
