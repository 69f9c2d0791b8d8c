#include "OrvaneCore/Input/EventTapService.h"
#include "Fakes/FakePlatform.h"
#include "OrvaneCore/Input/SyntheticEvent.h"

#include <gtest/gtest.h>

using namespace orvane;
using namespace std::chrono_literals;

namespace {

constexpr EventMask keyMask = 7168;
constexpr EventMask flagsMask = 4096;

class Subscriber : public EventTapSubscriber {
public:
    explicit Subscriber(EventMask mask, QString subscriberName = {}, QStringList* journal = nullptr,
                        EventTapRank rank = EventTapRank::keyRemapping)
        : name(std::move(subscriberName)), calls(journal), m_mask(mask), m_rank(rank)
    {
    }
    [[nodiscard]] EventTapRank rank() const override { return m_rank; }
    [[nodiscard]] EventMask eventMask() const override { return m_mask; }
    EventTapDecision handle(EventType type, Event& event) override
    {
        if (calls)
            calls->append(name);
        seen.push_back({type, event});
        if (onHandle)
            onHandle(event);
        return decision;
    }
    void setMask(EventMask mask) { m_mask = mask; }

    struct Seen {
        EventType type;
        Event event;
    };
    QString name;
    QStringList* calls;
    std::vector<Seen> seen;
    EventTapDecision decision = EventTapDecision::pass;
    std::function<void(Event&)> onHandle;

private:
    EventMask m_mask;
    EventTapRank m_rank;
};

class Listener : public EventTapListener {
public:
    Listener(EventMask mask, QString listenerName, QStringList& journal)
        : name(std::move(listenerName)), calls(journal), m_mask(mask)
    {
    }
    [[nodiscard]] EventMask eventMask() const override { return m_mask; }
    void hear(EventType, const Event& event) override
    {
        calls.append(name);
        heard.push_back(event);
        if (onHear)
            onHear();
    }

    QString name;
    QStringList& calls;
    std::vector<Event> heard;
    std::function<void()> onHear;

private:
    EventMask m_mask;
};

struct EventTapServiceTest : testing::Test {
    std::shared_ptr<Subscriber> add(EventMask mask, const char* name = "")
    {
        auto subscriber = std::make_shared<Subscriber>(mask, QLatin1String(name), &walked);
        service.addSubscriber(subscriber);
        return subscriber;
    }
    std::shared_ptr<Subscriber> add(EventTapRank rank, const char* name)
    {
        auto subscriber = std::make_shared<Subscriber>(keyMask, QLatin1String(name), &walked, rank);
        service.addSubscriber(subscriber);
        return subscriber;
    }
    std::shared_ptr<Listener> listen(EventMask mask, const char* name = "")
    {
        auto listener = std::make_shared<Listener>(mask, QLatin1String(name), walked);
        service.addListener(listener);
        return listener;
    }
    static Event key(std::int64_t code, EventType type = EventType::keyDown)
    {
        Event event;
        event.type = type;
        event.keycode = code;
        return event;
    }
    FakeEventTap& tap() { return *fake.eventTaps.taps.at(0); }
    [[nodiscard]] std::size_t tapCount() const { return fake.eventTaps.taps.size(); }
    [[nodiscard]] std::vector<FakeLogSink::Entry> logged() const { return fake.log.entries(); }

    FakePlatform fake;
    QStringList walked;
    EventTapService service{Log::make(QStringLiteral("EventTap"))};
};

QStringList list(std::initializer_list<const char*> words)
{
    QStringList result;
    for (const char* word : words)
        result.append(QLatin1String(word));
    return result;
}

FakeLogSink::Entry entry(LogLevel level, const char* message)
{
    return {level, QStringLiteral("net.lindenrow.orvane"), QStringLiteral("EventTap"),
            QString::fromUtf8(message)};
}

} // namespace

TEST_F(EventTapServiceTest, ArmedWithoutSubscribersThereIsNoTapAndNoTimer)
{
    service.start();
    EXPECT_TRUE(fake.eventTaps.calls.isEmpty());
    EXPECT_EQ(fake.runLoop.timerCount(), 0u);
}

TEST_F(EventTapServiceTest, IdleWithSubscribersThereIsNoTapEither)
{
    add(keyMask);
    EXPECT_TRUE(fake.eventTaps.calls.isEmpty());
    service.start();
    EXPECT_EQ(tapCount(), 1u);
}

TEST_F(EventTapServiceTest, TheFirstSubscriberMakesTheTapInOrder)
{
    service.start();
    add(keyMask);
    EXPECT_EQ(fake.eventTaps.calls, list({"create session head 7168", "add", "enable"}));
    EXPECT_TRUE(tap().delivers());
    EXPECT_EQ(fake.runLoop.timerIntervals(), std::vector<std::chrono::milliseconds>{1500ms});
    EXPECT_EQ(logged(), std::vector{entry(LogLevel::info, "Event tap active with mask 7168")});
}

TEST_F(EventTapServiceTest, ASecondSubscriberRemakesTheTapWithTheOrOfBoth)
{
    service.start();
    add(1024);
    fake.eventTaps.calls.clear();
    add(flagsMask);
    EXPECT_EQ(fake.eventTaps.calls,
              list({"remove", "disable", "invalidate", "end", "create session head 5120", "add", "enable"}));
    EXPECT_EQ(tapCount(), 1u);
    EXPECT_EQ(fake.runLoop.timerCount(), 1u);
}

TEST_F(EventTapServiceTest, TheTapIsRemadeAlsoWhenTheMaskStaysTheSameAndMasksAreReadAnew)
{
    service.start();
    const auto first = add(keyMask);
    add(keyMask);
    EXPECT_EQ(fake.eventTaps.calls.count(QStringLiteral("create session head 7168")), 2);
    first->setMask(1 << 22);
    const auto third = add(1024);
    EXPECT_EQ(tap().mask(), keyMask | (1 << 22));
    service.removeSubscriber(third);
    EXPECT_EQ(tapCount(), 1u);
}

TEST_F(EventTapServiceTest, RemovingTheLastSubscriberRemovesTapAndTimer)
{
    service.start();
    const auto subscriber = add(keyMask);
    fake.eventTaps.calls.clear();
    service.removeSubscriber(subscriber);
    EXPECT_EQ(fake.eventTaps.calls, list({"remove", "disable", "invalidate", "end"}));
    EXPECT_EQ(fake.runLoop.timerCount(), 0u);
    EXPECT_EQ(tapCount(), 0u);
}

TEST_F(EventTapServiceTest, ASubscriberAddedTwiceIsRemovedByOneRemovalAndTheOthersKeepTheirOrder)
{
    service.start();
    const auto twice = add(keyMask, "twice");
    add(keyMask, "b");
    service.addSubscriber(twice);
    add(keyMask, "c");
    fake.eventTaps.send(key(0));
    EXPECT_EQ(walked, list({"twice", "b", "twice", "c"}));
    walked.clear();
    service.removeSubscriber(twice);
    fake.eventTaps.send(key(0));
    EXPECT_EQ(walked, list({"b", "c"}));
}

TEST_F(EventTapServiceTest, RemovingAStrangerRebuildsAndHarmsNothing)
{
    service.start();
    add(keyMask);
    service.removeSubscriber(std::make_shared<Subscriber>(keyMask));
    EXPECT_EQ(tapCount(), 1u);
}

TEST_F(EventTapServiceTest, ARefusedTapIsLoggedOnceAndTriedAgainAtTheNextChangeOnly)
{
    fake.eventTaps.refuses = true;
    service.start();
    const auto first = add(keyMask);
    EXPECT_EQ(logged(),
              std::vector{entry(LogLevel::error,
                                "Failed to create event tap — is Accessibility/Input Monitoring granted?")});
    EXPECT_EQ(fake.runLoop.timerCount(), 0u);
    fake.runLoop.advance(1min);
    EXPECT_EQ(fake.eventTaps.calls.size(), 1);

    fake.eventTaps.refuses = false;
    add(flagsMask);
    EXPECT_EQ(tapCount(), 1u);
    EXPECT_EQ(fake.runLoop.timerCount(), 1u);
}

TEST_F(EventTapServiceTest, StopTakesEverythingAwayAndStartBringsItBack)
{
    service.start();
    add(keyMask);
    service.stop();
    EXPECT_EQ(tapCount(), 0u);
    EXPECT_EQ(fake.runLoop.timerCount(), 0u);
    fake.workspace.notificationCenter().post(Workspace::didWakeNotification());
    add(flagsMask);
    EXPECT_EQ(tapCount(), 0u);
    service.start();
    EXPECT_EQ(tap().mask(), keyMask | flagsMask);
}

// The way of an event through the callback.

TEST_F(EventTapServiceTest, ARankIsAskedBeforeTheNextWhicheverWasAddedFirst)
{
    service.start();
    add(EventTapRank::keyRemapping, "remapping");
    add(EventTapRank::clipboardKeys, "clipboard");
    const auto third = add(EventTapRank::keyRemapping, "remapping 2");
    add(EventTapRank::clipboardKeys, "clipboard 2");
    fake.eventTaps.send(key(8));
    EXPECT_EQ(walked, list({"clipboard", "clipboard 2", "remapping", "remapping 2"}));
    walked.clear();
    service.removeSubscriber(third);
    service.addSubscriber(third);
    fake.eventTaps.send(key(8));
    EXPECT_EQ(walked, list({"clipboard", "clipboard 2", "remapping", "remapping 2"}));
}

TEST_F(EventTapServiceTest, AllAreAskedInOrderOfAddingWhateverTheirOwnMask)
{
    service.start();
    const auto onlyFlags = add(flagsMask, "flags");
    add(keyMask, "keys");
    const auto passed = fake.eventTaps.send(key(8));
    EXPECT_EQ(walked, list({"flags", "keys"}));
    EXPECT_EQ(onlyFlags->seen.front().type, EventType::keyDown);
    ASSERT_TRUE(passed);
    EXPECT_EQ(passed->keycode, 8);
}

TEST_F(EventTapServiceTest, TheFirstConsumeEndsTheWalkAndTheEvent)
{
    service.start();
    add(keyMask, "a")->decision = EventTapDecision::consume;
    add(keyMask, "b");
    EXPECT_FALSE(fake.eventTaps.send(key(8)));
    EXPECT_EQ(walked, list({"a"}));
    EXPECT_TRUE(fake.eventTaps.delivered.empty());
}

TEST_F(EventTapServiceTest, ALaterSubscriberSeesWhatAnEarlierOneChanged)
{
    service.start();
    add(keyMask)->onHandle = [](Event& event) { event.flags = eventFlag::command; };
    const auto second = add(keyMask);
    second->onHandle = [](Event& event) { event.keycode = 9; };
    const auto passed = fake.eventTaps.send(key(8));
    EXPECT_EQ(second->seen.front().event.flags, eventFlag::command);
    EXPECT_EQ(passed->flags, eventFlag::command);
    EXPECT_EQ(passed->keycode, 9);
}

TEST_F(EventTapServiceTest, ASubscriberRemovedDuringAWalkStillGetsItsCallInIt)
{
    service.start();
    auto first = add(keyMask, "first");
    auto second = add(keyMask, "second");
    first->onHandle = [&](Event&) { service.removeSubscriber(second); };
    fake.eventTaps.send(key(8));
    EXPECT_EQ(walked, list({"first", "second"}));
    walked.clear();
    first->onHandle = nullptr;
    fake.eventTaps.send(key(8));
    EXPECT_EQ(walked, list({"first"}));
}

TEST_F(EventTapServiceTest, ASubscriberMayRemoveItselfAndWithItTheTap)
{
    service.start();
    auto only = add(keyMask, "only");
    only->onHandle = [&](Event&) { service.removeSubscriber(only); };
    EXPECT_TRUE(fake.eventTaps.send(key(8)));
    EXPECT_EQ(tapCount(), 0u);
    only->onHandle = nullptr;
}

TEST_F(EventTapServiceTest, OneAddedDuringAWalkIsAskedFromTheNextEventOn)
{
    service.start();
    const auto first = add(keyMask, "first");
    first->onHandle = [&](Event&) {
        first->onHandle = nullptr;
        add(keyMask, "late");
    };
    fake.eventTaps.send(key(8));
    EXPECT_EQ(walked, list({"first"}));
    fake.eventTaps.send(key(8));
    EXPECT_EQ(walked, list({"first", "first", "late"}));
}

// Subscribers that only listen.

TEST_F(EventTapServiceTest, AListenerAloneHasATapThatOnlyListensAndTakesNoKeyboard)
{
    service.start();
    const auto listener = listen(flagsMask);
    EXPECT_EQ(fake.eventTaps.calls, list({"create session tail 4096 listening", "add", "enable"}));
    EXPECT_FALSE(fake.eventTaps.holdsKeyboards());
    EXPECT_EQ(fake.runLoop.timerCount(), 1u);
    fake.eventTaps.send(key(59, EventType::flagsChanged));
    EXPECT_EQ(listener->heard.size(), 1u);
    service.removeListener(listener);
    EXPECT_EQ(tapCount(), 0u);
    EXPECT_EQ(fake.runLoop.timerCount(), 0u);
}

TEST_F(EventTapServiceTest, AListenersTapStaysAsItIsWhileASubscriberComesAndGoes)
{
    service.start();
    const auto listener = listen(keyMask, "listener");
    fake.eventTaps.calls.clear();
    const auto subscriber = add(keyMask, "subscriber");
    EXPECT_TRUE(fake.eventTaps.holdsKeyboards());
    fake.eventTaps.send(key(8));
    EXPECT_EQ(walked, list({"subscriber", "listener"}));
    service.removeSubscriber(subscriber);
    EXPECT_FALSE(fake.eventTaps.holdsKeyboards());
    EXPECT_EQ(fake.eventTaps.calls,
              list({"create session head 7168", "add", "enable", "remove", "disable", "invalidate", "end"}));
    EXPECT_EQ(fake.runLoop.timerCount(), 1u);
}

TEST_F(EventTapServiceTest, AListenerHearsWhatSubscribersMakeOfAnEventAndNothingOfWhatTheyConsume)
{
    service.start();
    const auto listener = listen(keyMask);
    const auto subscriber = add(keyMask);
    subscriber->onHandle = [](Event& event) { event.flags = eventFlag::command; };
    fake.eventTaps.send(key(8));
    ASSERT_EQ(listener->heard.size(), 1u);
    EXPECT_EQ(listener->heard[0].flags, eventFlag::command);
    subscriber->decision = EventTapDecision::consume;
    fake.eventTaps.send(key(8));
    EXPECT_EQ(listener->heard.size(), 1u);
}

TEST_F(EventTapServiceTest, AListenerMayRemoveItselfAndTheOthersStillHearThatEvent)
{
    service.start();
    const auto first = listen(keyMask, "first");
    listen(keyMask, "second");
    first->onHear = [&] { service.removeListener(first); };
    fake.eventTaps.send(key(8));
    fake.eventTaps.send(key(8));
    EXPECT_EQ(walked, list({"first", "second", "second"}));
}

TEST_F(EventTapServiceTest, ADisabledListeningTapIsEnabledAgainByTheWatchdog)
{
    service.start();
    listen(keyMask);
    tap().enable(false);
    fake.runLoop.advance(1500ms);
    EXPECT_TRUE(tap().isEnabled());
    service.stop();
    EXPECT_EQ(tapCount(), 0u);
    EXPECT_EQ(fake.runLoop.timerCount(), 0u);
}

// Bringing a disabled tap back.

TEST_F(EventTapServiceTest, ADisabledTapIsEnabledAgainAndLoggedOnceAndNobodyIsAsked)
{
    service.start();
    const auto subscriber = add(keyMask);
    tap().disableByTimeout();
    EXPECT_TRUE(tap().delivers());
    EXPECT_TRUE(subscriber->seen.empty());
    EXPECT_EQ(logged().back(), entry(LogLevel::notice, "Re-enabled a disabled event tap"));
    const auto lines = logged().size();
    service.reenableIfNeeded();
    fake.runLoop.advance(10s);
    EXPECT_EQ(logged().size(), lines);
}

TEST_F(EventTapServiceTest, DisabledByUserInputIsTreatedTheSame)
{
    service.start();
    const auto subscriber = add(keyMask);
    tap().enable(false);
    Event event;
    event.type = EventType::tapDisabledByUserInput;
    EXPECT_EQ(tap().call(event), EventTapDecision::pass);
    EXPECT_TRUE(tap().isEnabled());
    EXPECT_TRUE(subscriber->seen.empty());
}

TEST_F(EventTapServiceTest, TheWatchdogFindsASilentlyDisabledTapWithinItsPeriod)
{
    service.start();
    add(keyMask);
    tap().enable(false);
    fake.runLoop.advance(1499ms);
    EXPECT_FALSE(tap().isEnabled());
    fake.runLoop.advance(1ms);
    EXPECT_TRUE(tap().isEnabled());
}

TEST_F(EventTapServiceTest, ARemadeTapHasAWholePeriodOfTheWatchdogBeforeIt)
{
    service.start();
    add(keyMask);
    fake.runLoop.advance(1s);
    add(flagsMask);
    tap().enable(false);
    fake.runLoop.advance(1499ms);
    EXPECT_FALSE(tap().isEnabled());
    fake.runLoop.advance(1ms);
    EXPECT_TRUE(tap().isEnabled());
    EXPECT_EQ(fake.runLoop.timerCount(), 1u);
}

TEST_F(EventTapServiceTest, TheWatchdogStartsAnewWithEachTapAndGoesOnForTheOneThatStays)
{
    service.start();
    listen(keyMask);
    fake.runLoop.advance(1s);
    const auto subscriber = add(keyMask);
    fake.runLoop.advance(1s);
    service.removeSubscriber(subscriber);
    tap().enable(false);
    fake.runLoop.advance(1499ms);
    EXPECT_FALSE(tap().isEnabled());
    fake.runLoop.advance(1ms);
    EXPECT_TRUE(tap().isEnabled());
}

TEST_F(EventTapServiceTest, ATapThatCanNotBeEnabledIsTriedAgainAndAgainAndSaidToBeSoOnceItIs)
{
    service.start();
    add(keyMask);
    const auto lines = logged().size();
    fake.eventTaps.refuses = true;
    tap().disableByTimeout();
    fake.runLoop.advance(6s);
    EXPECT_FALSE(tap().isEnabled());
    EXPECT_EQ(logged().size(), lines);
    fake.eventTaps.refuses = false;
    fake.runLoop.advance(1500ms);
    EXPECT_TRUE(tap().isEnabled());
    ASSERT_EQ(logged().size(), lines + 1);
    EXPECT_EQ(logged().back(), entry(LogLevel::notice, "Re-enabled a disabled event tap"));
}

TEST_F(EventTapServiceTest, WakingUpChecksTheTap)
{
    service.start();
    add(keyMask);
    tap().enable(false);
    fake.workspace.notificationCenter().post(Workspace::didWakeNotification());
    EXPECT_TRUE(tap().isEnabled());
}

TEST_F(EventTapServiceTest, WithoutATapThereIsNothingToEnable)
{
    service.start();
    service.reenableIfNeeded();
    fake.workspace.notificationCenter().post(Workspace::didWakeNotification());
    EXPECT_TRUE(fake.eventTaps.calls.isEmpty());
    EXPECT_TRUE(logged().empty());
}

TEST(SyntheticEvent, OnlyTheMarkedEventIsOurs)
{
    Event event;
    EXPECT_FALSE(SyntheticEvent::isOurs(event));
    event.setIntegerValueField(EventField::eventSourceUserData, 0x4F525640);
    EXPECT_FALSE(SyntheticEvent::isOurs(event));
    SyntheticEvent::mark(event);
    EXPECT_TRUE(SyntheticEvent::isOurs(event));
    EXPECT_EQ(event.integerValueField(EventField::eventSourceUserData), 0x4F525641);
}

TEST_F(EventTapServiceTest, AMarkedEventGoesThroughTheWholeChainLikeAnyOther)
{
    service.start();
    add(keyMask, "a");
    add(keyMask, "b");
    Event event = key(9);
    SyntheticEvent::mark(event);
    fake.eventTaps.post(EventTaps::Location::hid, event);
    EXPECT_EQ(walked, list({"a", "b"}));
    EXPECT_TRUE(SyntheticEvent::isOurs(fake.eventTaps.delivered.at(0)));
}
