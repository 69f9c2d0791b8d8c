#include "OrvaneCore/Base/Pool.h"
#include "Fakes/FakePlatform.h"
#include "OrvaneCore/Base/Task.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>

using namespace orvane;

namespace {

struct PoolTest : testing::Test {
    UnownedTask answer(std::weak_ptr<int> owner)
    {
        const int value = co_await onPool([] { return 42; });
        if (const auto kept = owner.lock())
            *kept = value;
        ++ends;
    }

    /// Waits for the pool, and holds `held` meanwhile.
    static UnownedTask hold(std::shared_ptr<int> held)
    {
        co_await onPool([] {});
        ++*held;
    }

    FakePlatform fake;
    int ends = 0;
};

} // namespace

TEST_F(PoolTest, TheWorkIsDoneOnThePoolAndItsResultComesInALaterTurn)
{
    const auto result = std::make_shared<int>(0);
    answer(result);
    fake.runLoop.drain();
    EXPECT_EQ(*result, 0) << "the pool has done nothing yet";
    fake.runLoop.drainDetached();
    EXPECT_EQ(*result, 0) << "the main thread has had no turn since";
    fake.runLoop.drain();
    EXPECT_EQ(*result, 42);
}

TEST_F(PoolTest, AnOwnerThatHasEndedIsNotTouched)
{
    auto owner = std::make_shared<int>(0);
    answer(owner);
    owner.reset();
    fake.runLoop.drainDetached();
    fake.runLoop.drain();
    EXPECT_EQ(ends, 1);
}

TEST_F(PoolTest, TheCoroutineGoesOnOnTheMainThread)
{
    std::thread::id ofWork;
    std::thread::id ofRest;
    const auto note = [](std::thread::id& work, std::thread::id& rest) -> UnownedTask {
        work = co_await onPool([] { return std::this_thread::get_id(); });
        rest = std::this_thread::get_id();
    };
    note(ofWork, ofRest);
    std::thread([this] { fake.runLoop.drainDetached(); }).join();
    fake.runLoop.drain();
    EXPECT_NE(ofWork, std::thread::id());
    EXPECT_NE(ofWork, std::this_thread::get_id());
    EXPECT_EQ(ofRest, std::this_thread::get_id());
}

TEST_F(PoolTest, AnErrorOfTheWorkIsThrownWhereItIsAwaited)
{
    QString text;
    startTask([&text]() -> Task<> {
        try {
            co_await onPool([]() -> int { throw std::runtime_error("no room"); });
        } catch (const std::runtime_error& error) {
            text = QString::fromUtf8(error.what());
        }
    });
    fake.runLoop.drain();
    fake.runLoop.drainDetached();
    fake.runLoop.drain();
    EXPECT_EQ(text, QStringLiteral("no room"));
}

TEST_F(PoolTest, AnErrorThatLeavesAnUnownedTaskIsLogged)
{
    const auto fail = []() -> UnownedTask { co_await onPool([] { throw std::runtime_error("no room"); }); };
    fail();
    fake.runLoop.drainDetached();
    fake.runLoop.drain();
    EXPECT_EQ(fake.log.messages(), QStringList{QStringLiteral("A task ended with an error: no room")});
}

TEST_F(PoolTest, WhatTheWorkHoldsIsReleasedBeforeTheResultComes)
{
    const auto held = std::make_shared<int>(0);
    const auto run = [](std::shared_ptr<int> captured) -> UnownedTask {
        auto work = [captured = std::move(captured)] { ++*captured; };
        co_await onPool(work);
    };
    run(held);
    EXPECT_EQ(held.use_count(), 2);
    fake.runLoop.drainDetached();
    EXPECT_EQ(*held, 1);
    EXPECT_EQ(held.use_count(), 1);
    fake.runLoop.drain();
}

TEST_F(PoolTest, AResultThatCanOnlyBeMovedComesThrough)
{
    std::unique_ptr<int> result;
    const auto make = [](std::unique_ptr<int>& made) -> UnownedTask {
        made = co_await onPool([] { return std::make_unique<int>(7); });
    };
    make(result);
    fake.runLoop.drainDetached();
    fake.runLoop.drain();
    ASSERT_TRUE(result);
    EXPECT_EQ(*result, 7);
}

TEST_F(PoolTest, AnUnownedTaskIsDestroyedWithTheQueueThatShouldHaveResumedIt)
{
    const auto held = std::make_shared<int>(0);
    hold(held);
    EXPECT_EQ(held.use_count(), 2);
    fake.runLoop.discardQueued(); // before the work
    EXPECT_EQ(held.use_count(), 1);
    hold(held);
    fake.runLoop.drainDetached();
    fake.runLoop.discardQueued(); // between the work and its result
    EXPECT_EQ(held.use_count(), 1);
    EXPECT_EQ(*held, 0);
}

TEST_F(PoolTest, AnExecutorGetsTheWorkInPlaceOfThePool)
{
    std::vector<std::function<void()>> queue;
    int result = 0;
    const auto run = [](Executor executor, int& value) -> UnownedTask {
        value = co_await onExecutor(std::move(executor), [] { return 5; });
    };
    run([&queue](std::function<void()> work) { queue.push_back(std::move(work)); }, result);
    fake.runLoop.drainDetached();
    fake.runLoop.drain();
    EXPECT_EQ(result, 0);
    ASSERT_EQ(queue.size(), 1u);
    queue.front()();
    fake.runLoop.drain();
    EXPECT_EQ(result, 5);
}
