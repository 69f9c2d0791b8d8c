#include "PlatformLinux/EventTap/TapMailbox.h"

#include <gmock/gmock.h>

#include <future>
#include <optional>
#include <thread>
#include <vector>

#include <poll.h>

namespace orvane::tests {
namespace {

using namespace std::chrono_literals;
using Outcome = TapMailbox::Outcome;
using ::testing::ElementsAre;

/// Long enough that only a failure reaches it.
constexpr auto longEnough = 60s;

Event eventOf(std::int64_t keycode)
{
    Event event;
    event.type = EventType::keyDown;
    event.keycode = keycode;
    return event;
}

bool rings(TapMailbox& mailbox, int milliseconds = 0)
{
    pollfd wait{mailbox.descriptor(), POLLIN, 0};
    return ::poll(&wait, 1, milliseconds) == 1;
}

/// A mailbox, the events that it has delivered and the threads on which it did. To be read after settle().
class TapMailboxTest : public ::testing::Test {
protected:
    TapMailbox::Request waitForRequest()
    {
        for (;;) {
            rings(mailbox, -1);
            if (auto request = mailbox.take())
                return *request;
        }
    }
    Outcome exchange(const Event& event, std::chrono::nanoseconds patience)
    {
        mailbox.offer(event, patience);
        return mailbox.settle();
    }

    std::vector<std::optional<Event>> delivered;
    std::thread::id deliverer;
    TapMailbox mailbox{[this](const std::optional<Event>& event) {
        delivered.push_back(event);
        deliverer = std::this_thread::get_id();
    }};
};

TEST_F(TapMailboxTest, AnEventIsDeliveredAsItWasAnsweredAndByTheThreadThatAnswers)
{
    auto tap = std::async(std::launch::async, [&] { return exchange(eventOf(8), longEnough); });
    const auto request = waitForRequest();
    EXPECT_EQ(request.event, eventOf(8));
    mailbox.answer(request.ticket, eventOf(9));
    EXPECT_EQ(tap.get(), Outcome::answered);
    EXPECT_THAT(delivered, ElementsAre(eventOf(9)));
    EXPECT_EQ(deliverer, std::this_thread::get_id());
}

TEST_F(TapMailboxTest, ARemovedEventIsDeliveredAsNothing)
{
    auto tap = std::async(std::launch::async, [&] { return exchange(eventOf(8), longEnough); });
    mailbox.answer(waitForRequest().ticket, std::nullopt);
    EXPECT_EQ(tap.get(), Outcome::answered);
    EXPECT_THAT(delivered, ElementsAre(std::nullopt));
}

TEST_F(TapMailboxTest, AnAnswerThatCameBeforeTheTapAsksIsNotWaitedFor)
{
    mailbox.offer(eventOf(8), longEnough);
    mailbox.answer(waitForRequest().ticket, eventOf(9));
    EXPECT_EQ(mailbox.settle(), Outcome::answered);
    EXPECT_THAT(delivered, ElementsAre(eventOf(9)));
}

TEST_F(TapMailboxTest, WithoutAnAnswerInTimeTheTapDeliversTheEventUnchanged)
{
    EXPECT_EQ(exchange(eventOf(8), 0ms), Outcome::timedOut);
    EXPECT_THAT(delivered, ElementsAre(eventOf(8)));
}

TEST_F(TapMailboxTest, AnAbandonedEventCannotBeTakenAnyMore)
{
    exchange(eventOf(8), 0ms);
    EXPECT_TRUE(rings(mailbox));
    EXPECT_EQ(mailbox.take().has_value(), false);
    EXPECT_FALSE(rings(mailbox));
}

TEST_F(TapMailboxTest, TheLateAnswerToAnAbandonedEventIsNotTakenForTheNext)
{
    mailbox.offer(eventOf(1), 0ms);
    const auto abandoned = waitForRequest();
    EXPECT_EQ(mailbox.settle(), Outcome::timedOut);
    mailbox.answer(abandoned.ticket, std::nullopt);

    mailbox.offer(eventOf(2), longEnough);
    const auto present = waitForRequest();
    mailbox.answer(abandoned.ticket, std::nullopt);
    mailbox.answer(present.ticket, present.event);
    EXPECT_EQ(mailbox.settle(), Outcome::answered);
    EXPECT_THAT(delivered, ElementsAre(eventOf(1), eventOf(2)));
}

TEST_F(TapMailboxTest, ClosingEndsTheWait)
{
    auto tap = std::async(std::launch::async, [&] { return exchange(eventOf(8), longEnough); });
    const auto request = waitForRequest();
    mailbox.close();
    EXPECT_EQ(tap.get(), Outcome::closed);
    mailbox.answer(request.ticket, eventOf(9));
    EXPECT_THAT(delivered, ElementsAre(eventOf(8)));
}

TEST_F(TapMailboxTest, AClosedOneTakesNoEvents)
{
    mailbox.close();
    EXPECT_EQ(exchange(eventOf(8), longEnough), Outcome::closed);
    EXPECT_FALSE(mailbox.take());
    EXPECT_THAT(delivered, ElementsAre(eventOf(8)));
}

TEST_F(TapMailboxTest, RingingWakesWithoutAnEvent)
{
    mailbox.ring();
    EXPECT_TRUE(rings(mailbox));
    EXPECT_FALSE(mailbox.take().has_value());
    EXPECT_FALSE(rings(mailbox));
}

TEST_F(TapMailboxTest, ManyEventsKeepTheirOrder)
{
    constexpr int count = 20000;
    std::thread tap([&] {
        for (int i = 0; i < count; ++i) {
            EXPECT_EQ(exchange(eventOf(i), longEnough), Outcome::answered);
            EXPECT_EQ(delivered.back(), eventOf(-i));
        }
    });
    for (int i = 0; i < count; ++i) {
        const auto request = waitForRequest();
        EXPECT_EQ(request.event.keycode, i);
        mailbox.answer(request.ticket, eventOf(-i));
    }
    tap.join();
    EXPECT_EQ(delivered.size(), static_cast<std::size_t>(count));
}

} // namespace
} // namespace orvane::tests
