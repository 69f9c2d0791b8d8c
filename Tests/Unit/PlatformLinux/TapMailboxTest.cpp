#include "PlatformLinux/EventTap/TapMailbox.h"

#include <gtest/gtest.h>

#include <future>
#include <thread>

#include <poll.h>

namespace orvane::tests {
namespace {

using namespace std::chrono_literals;
using Outcome = TapMailbox::Outcome;

/// So long that only a failure reaches it.
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

TapMailbox::Request waitForRequest(TapMailbox& mailbox)
{
    for (;;) {
        rings(mailbox, -1);
        if (auto request = mailbox.take())
            return *request;
    }
}

TEST(TapMailboxTest, AnEventComesBackAsItWasAnswered)
{
    TapMailbox mailbox;
    auto answer = std::async(std::launch::async, [&] { return mailbox.exchange(eventOf(8), longEnough); });
    const auto request = waitForRequest(mailbox);
    EXPECT_EQ(request.event, eventOf(8));
    mailbox.answer(request.ticket, eventOf(9));
    EXPECT_EQ(answer.get().event, eventOf(9));
}

TEST(TapMailboxTest, ARemovedEventComesBackAsNothing)
{
    TapMailbox mailbox;
    auto waiting = std::async(std::launch::async, [&] { return mailbox.exchange(eventOf(8), longEnough); });
    mailbox.answer(waitForRequest(mailbox).ticket, std::nullopt);
    const auto answer = waiting.get();
    EXPECT_EQ(answer.outcome, Outcome::answered);
    EXPECT_EQ(answer.event, std::nullopt);
}

TEST(TapMailboxTest, WithoutAnAnswerInTimeTheEventComesBackUnchanged)
{
    TapMailbox mailbox;
    const auto answer = mailbox.exchange(eventOf(8), 0ms);
    EXPECT_EQ(answer.outcome, Outcome::timedOut);
    EXPECT_EQ(answer.event, eventOf(8));
}

TEST(TapMailboxTest, AnAbandonedEventCannotBeTakenAnyMore)
{
    TapMailbox mailbox;
    mailbox.exchange(eventOf(8), 0ms);
    EXPECT_TRUE(rings(mailbox));
    EXPECT_EQ(mailbox.take().has_value(), false);
    EXPECT_FALSE(rings(mailbox));
}

TEST(TapMailboxTest, TheLateAnswerToAnAbandonedEventIsNotTakenForTheNext)
{
    TapMailbox mailbox;
    auto first = std::async(std::launch::async, [&] { return mailbox.exchange(eventOf(1), 200ms); });
    const auto abandoned = waitForRequest(mailbox);
    EXPECT_EQ(first.get().outcome, Outcome::timedOut);

    auto second = std::async(std::launch::async, [&] { return mailbox.exchange(eventOf(2), longEnough); });
    const auto present = waitForRequest(mailbox);
    mailbox.answer(abandoned.ticket, std::nullopt);
    mailbox.answer(present.ticket, present.event);
    EXPECT_EQ(second.get().event, eventOf(2));
}

TEST(TapMailboxTest, ClosingEndsTheWait)
{
    TapMailbox mailbox;
    auto waiting = std::async(std::launch::async, [&] { return mailbox.exchange(eventOf(8), longEnough); });
    waitForRequest(mailbox);
    mailbox.close();
    const auto answer = waiting.get();
    EXPECT_EQ(answer.outcome, Outcome::closed);
    EXPECT_EQ(answer.event, eventOf(8));
}

TEST(TapMailboxTest, AClosedOneTakesNoEvents)
{
    TapMailbox mailbox;
    mailbox.close();
    EXPECT_EQ(mailbox.exchange(eventOf(8), longEnough).outcome, Outcome::closed);
    EXPECT_FALSE(rings(mailbox));
}

TEST(TapMailboxTest, RingingWakesWithoutAnEvent)
{
    TapMailbox mailbox;
    mailbox.ring();
    EXPECT_TRUE(rings(mailbox));
    EXPECT_FALSE(mailbox.take().has_value());
    EXPECT_FALSE(rings(mailbox));
}

TEST(TapMailboxTest, ManyEventsKeepTheirOrder)
{
    TapMailbox mailbox;
    constexpr int count = 20000;
    std::thread tap([&] {
        for (int i = 0; i < count; ++i)
            EXPECT_EQ(mailbox.exchange(eventOf(i), longEnough).event, eventOf(-i));
    });
    for (int i = 0; i < count; ++i) {
        const auto request = waitForRequest(mailbox);
        EXPECT_EQ(request.event.keycode, i);
        mailbox.answer(request.ticket, eventOf(-i));
    }
    tap.join();
}

} // namespace
} // namespace orvane::tests
