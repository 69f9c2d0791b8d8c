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

/// A mailbox, the events that it has injected and the thread that did it last. Read these after
/// awaitAnswer().
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
        return mailbox.awaitAnswer();
    }

    struct Injected {
        Event event;
        EventTapDecision decision;
        bool operator==(const Injected&) const = default;
    };
    static Injected passed(std::int64_t keycode) { return {eventOf(keycode), EventTapDecision::pass}; }

    std::vector<Injected> injected;
    std::thread::id injector;
    TapMailbox mailbox{[this](const Event& event, EventTapDecision decision) {
        injected.push_back({event, decision});
        injector = std::this_thread::get_id();
    }};
};

TEST_F(TapMailboxTest, AnEventIsInjectedAsItWasAnsweredAndByTheThreadThatAnswers)
{
    auto tap = std::async(std::launch::async, [&] { return exchange(eventOf(8), longEnough); });
    const auto request = waitForRequest();
    EXPECT_EQ(request.event, eventOf(8));
    mailbox.answer(request.ticket, eventOf(9), EventTapDecision::pass);
    EXPECT_EQ(tap.get(), Outcome::answered);
    EXPECT_THAT(injected, ElementsAre(passed(9)));
    EXPECT_EQ(injector, std::this_thread::get_id());
}

TEST_F(TapMailboxTest, AConsumedEventIsInjectedAsSuch)
{
    auto tap = std::async(std::launch::async, [&] { return exchange(eventOf(8), longEnough); });
    mailbox.answer(waitForRequest().ticket, eventOf(8), EventTapDecision::consume);
    EXPECT_EQ(tap.get(), Outcome::answered);
    EXPECT_THAT(injected, ElementsAre(Injected{eventOf(8), EventTapDecision::consume}));
}

TEST_F(TapMailboxTest, AnAnswerThatCameBeforeTheTapAsksIsNotWaitedFor)
{
    mailbox.offer(eventOf(8), longEnough);
    mailbox.answer(waitForRequest().ticket, eventOf(9), EventTapDecision::pass);
    EXPECT_EQ(mailbox.awaitAnswer(), Outcome::answered);
    EXPECT_THAT(injected, ElementsAre(passed(9)));
}

TEST_F(TapMailboxTest, WithoutAnAnswerInTimeTheTapInjectsTheEventUnchanged)
{
    EXPECT_EQ(exchange(eventOf(8), 0ms), Outcome::timedOut);
    EXPECT_THAT(injected, ElementsAre(passed(8)));
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
    EXPECT_EQ(mailbox.awaitAnswer(), Outcome::timedOut);
    mailbox.answer(abandoned.ticket, eventOf(1), EventTapDecision::consume);

    mailbox.offer(eventOf(2), longEnough);
    const auto present = waitForRequest();
    mailbox.answer(abandoned.ticket, eventOf(1), EventTapDecision::consume);
    mailbox.answer(present.ticket, present.event, EventTapDecision::pass);
    EXPECT_EQ(mailbox.awaitAnswer(), Outcome::answered);
    EXPECT_THAT(injected, ElementsAre(passed(1), passed(2)));
}

TEST_F(TapMailboxTest, ClosingEndsTheWait)
{
    auto tap = std::async(std::launch::async, [&] { return exchange(eventOf(8), longEnough); });
    const auto request = waitForRequest();
    mailbox.close();
    EXPECT_EQ(tap.get(), Outcome::closed);
    mailbox.answer(request.ticket, eventOf(9), EventTapDecision::pass);
    EXPECT_THAT(injected, ElementsAre(passed(8)));
}

TEST_F(TapMailboxTest, AClosedOneTakesNoEvents)
{
    mailbox.close();
    EXPECT_EQ(exchange(eventOf(8), longEnough), Outcome::closed);
    EXPECT_FALSE(mailbox.take());
    EXPECT_THAT(injected, ElementsAre(passed(8)));
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
            EXPECT_EQ(injected.back(), passed(-i));
        }
    });
    for (int i = 0; i < count; ++i) {
        const auto request = waitForRequest();
        EXPECT_EQ(request.event.keycode, i);
        mailbox.answer(request.ticket, eventOf(-i), EventTapDecision::pass);
    }
    tap.join();
    EXPECT_EQ(injected.size(), static_cast<std::size_t>(count));
}

} // namespace
} // namespace orvane::tests
