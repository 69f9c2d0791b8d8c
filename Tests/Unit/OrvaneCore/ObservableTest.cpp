#include "OrvaneCore/Base/Observable.h"

#include <gtest/gtest.h>

using namespace orvane;

TEST(Observable, ASubscriberGetsThePresentValueAndEachNewOne)
{
    Observable<int> number(1);
    std::vector<int> seen;
    const auto subscription = number.subscribe([&](int value) { seen.push_back(value); });
    number.set(2);
    number.set(2);
    EXPECT_EQ(seen, (std::vector{1, 2, 2}));
}

TEST(Observable, ASubscriberToChangesIsSparedThePresentValue)
{
    Observable<int> number(1);
    std::vector<int> seen;
    const auto subscription = number.subscribeToChanges([&](int value) { seen.push_back(value); });
    EXPECT_TRUE(seen.empty());
    number.set(5);
    EXPECT_EQ(seen, std::vector{5});
}

TEST(Observable, AnEndedSubscriptionHearsNothing)
{
    Observable<int> number;
    int calls = 0;
    auto subscription = number.subscribeToChanges([&](int) { ++calls; });
    subscription = Subscription();
    number.set(1);
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(number.observerCount(), 0u);
}

TEST(Observable, SubscribersAreCalledInOrderAndOneRemovedByAnEarlierOneIsNot)
{
    Observable<int> number;
    std::vector<char> seen;
    Subscription second;
    const auto first = number.subscribeToChanges([&](int) {
        seen.push_back('a');
        second = Subscription();
    });
    second = number.subscribeToChanges([&](int) { seen.push_back('b'); });
    const auto third = number.subscribeToChanges([&](int) { seen.push_back('c'); });
    number.set(1);
    EXPECT_EQ(seen, (std::vector{'a', 'c'}));
}

TEST(Observable, OneAddedDuringAnAnnouncementHearsTheNextValueOnly)
{
    Observable<int> number;
    int late = 0;
    Subscription added;
    const auto first = number.subscribeToChanges([&](int) {
        if (!added)
            added = number.subscribeToChanges([&](int) { ++late; });
    });
    number.set(1);
    EXPECT_EQ(late, 0);
    number.set(2);
    EXPECT_EQ(late, 1);
}

TEST(Observable, ASubscriberMayEndTheObservable)
{
    auto number = std::make_unique<Observable<int>>();
    int later = 0;
    const auto first = number->onChange([&] { number.reset(); });
    const auto second = number->onChange([&] { ++later; });
    number->set(1);
    EXPECT_EQ(number, nullptr);
    EXPECT_EQ(later, 1);
}

TEST(Observable, ASubscriptionMayOutliveItsObservable)
{
    Subscription subscription;
    {
        Observable<int> number;
        subscription = number.onChange([] {});
    }
    EXPECT_TRUE(static_cast<bool>(subscription));
}
