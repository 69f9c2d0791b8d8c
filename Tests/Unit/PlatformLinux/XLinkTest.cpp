#include "FakeXServer.h"
#include "PlatformLinux/X11/XExchange.h"

#include <array>
#include <chrono>
#include <future>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <poll.h>

#include <xcb/xinput.h>

using namespace orvane;
using namespace std::chrono_literals;

namespace {

using Atoms = std::vector<xcb_atom_t>;

/// Where a test would hang rather than fail; far longer than anything here takes.
constexpr auto never = 1h;
constexpr auto soon = 30s;

class XLinkTest : public testing::Test {
protected:
    std::unique_ptr<XLink> open()
    {
        static const std::array extensions{&xcb_input_id};
        return XLink::open({.extensions = extensions, .display = server.display().c_str()}, within(soon))
            .link;
    }

    static bool isReadable(const XLink& link, int milliseconds = 0)
    {
        pollfd wait{link.descriptor(), POLLIN, 0};
        return ::poll(&wait, 1, milliseconds) == 1;
    }

    static Atoms takeAll(XLink& link)
    {
        Atoms atoms;
        while (const auto event = link.nextEvent())
            atoms.push_back(reinterpret_cast<const xcb_property_notify_event_t&>(*event).atom);
        return atoms;
    }

    static XOutcome ask(XLink& link, Deadline deadline = within(soon))
    {
        return XExchange(link, deadline).synchronize();
    }

    /// After a late answer.
    void askUntilTheServerIsBack(XLink& link)
    {
        server.hold();
        ASSERT_EQ(ask(link, within(20ms)), XOutcome::late);
        server.release();
        XOutcome outcome = XOutcome::late;
        for (const Deadline end = within(soon); outcome == XOutcome::late && Deadline::clock::now() < end;)
            outcome = ask(link);
        ASSERT_EQ(outcome, XOutcome::answered);
    }

    FakeXServer server;
};

TEST_F(XLinkTest, KnowsItsAtomsAndExtensionsWhenItIsOpen)
{
    const auto link = open();
    ASSERT_TRUE(link);
    EXPECT_NE(link->atoms().utf8String, link->atoms().state);
    ASSERT_NE(link->extension(xcb_input_id), nullptr);
    EXPECT_EQ(link->extension(xcb_input_id)->major_opcode, FakeXServer::xinputOpcode);
}

TEST_F(XLinkTest, EventsThatCameWithAnAnswerAreGivenInOrder)
{
    const auto link = open();
    server.sendWithNextAnswer(3);
    ASSERT_EQ(ask(*link), XOutcome::answered);
    EXPECT_TRUE(isReadable(*link)) << "the socket is silent about them";
    EXPECT_EQ(takeAll(*link), (Atoms{1, 2, 3}));
    EXPECT_FALSE(isReadable(*link));
}

TEST_F(XLinkTest, TheDescriptorTellsOfTheEventsThatAReaderHasLeft)
{
    const auto link = open();
    server.send(2);
    ASSERT_TRUE(isReadable(*link, 30'000));
    ASSERT_EQ(ask(*link), XOutcome::answered);
    ASSERT_TRUE(link->nextEvent());
    EXPECT_TRUE(isReadable(*link));
    EXPECT_EQ(takeAll(*link), Atoms{2});
}

TEST_F(XLinkTest, EventsThatAFlushHasReadInAreTold)
{
    const auto link = open();
    server.send(2);
    ASSERT_TRUE(isReadable(*link, 30'000));
    const XSelection selection = link->select(link->root(), XCB_EVENT_MASK_PROPERTY_CHANGE);
    std::thread([&] { link->flush(); }).join();
    EXPECT_TRUE(isReadable(*link));
    EXPECT_EQ(takeAll(*link), (Atoms{1, 2}));
}

TEST_F(XLinkTest, TakesTheWantedEventsAndLeavesTheOthersInOrder)
{
    const auto link = open();
    server.sendWithNextAnswer(4);
    ASSERT_EQ(ask(*link), XOutcome::answered);
    Atoms taken;
    link->takeEvents([&](const xcb_generic_event_t& event) {
        const xcb_atom_t atom = reinterpret_cast<const xcb_property_notify_event_t&>(event).atom;
        if (atom % 2 == 0)
            taken.push_back(atom);
        return atom % 2 == 0;
    });
    EXPECT_EQ(taken, (Atoms{2, 4}));
    EXPECT_TRUE(isReadable(*link));
    EXPECT_EQ(takeAll(*link), (Atoms{1, 3}));
}

TEST_F(XLinkTest, AnAnswerThatTheReaderHasReadInReachesTheThreadThatWaits)
{
    const auto link = open();
    for (int round = 0; round < 300; ++round) {
        std::atomic<bool> isAnswered = false;
        auto waiter = std::async(std::launch::async, [&] {
            const XOutcome outcome = ask(*link, within(never));
            isAnswered = true;
            return outcome;
        });
        while (!isAnswered)
            (void)link->nextEvent();
        ASSERT_EQ(waiter.get(), XOutcome::answered);
    }
}

TEST_F(XLinkTest, TheDescriptorTellsOfAnExpectedAnswerWhoeverHasReadItIn)
{
    const auto link = open();
    const unsigned expected = xcb_get_input_focus(link->xcb()).sequence;
    link->expect(expected);
    ASSERT_EQ(ask(*link), XOutcome::answered);
    EXPECT_TRUE(isReadable(*link));
    const auto answer = link->takeExpected(expected);
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->outcome, XOutcome::answered);
    EXPECT_FALSE(isReadable(*link));
}

TEST_F(XLinkTest, AnAnswerThatIsExpectedNoMoreIsForgotten)
{
    const auto link = open();
    const unsigned expected = xcb_get_input_focus(link->xcb()).sequence;
    link->expect(expected);
    link->expectNoMore(expected);
    ASSERT_EQ(ask(*link), XOutcome::answered);
    EXPECT_FALSE(isReadable(*link));
    EXPECT_FALSE(link->takeExpected(expected));
}

TEST_F(XLinkTest, AnAnswerThatALookForAnotherHasReadInReachesTheThreadThatWaits)
{
    const auto link = open();
    for (int round = 0; round < 300; ++round) {
        server.hold();
        const unsigned expected = xcb_get_input_focus(link->xcb()).sequence;
        link->expect(expected);
        std::atomic<bool> isAnswered = false;
        auto waiter = std::async(std::launch::async, [&] {
            const XOutcome outcome = ask(*link, within(never));
            isAnswered = true;
            return outcome;
        });
        server.release();
        while (!isAnswered)
            (void)link->takeExpected(expected);
        ASSERT_EQ(waiter.get(), XOutcome::answered);
    }
}

TEST_F(XLinkTest, AServerThatDoesNotLetAnybodyInIsLate)
{
    server.hold();
    const auto opened = XLink::open({.extensions = {}, .display = server.display().c_str()}, within(50ms));
    EXPECT_FALSE(opened.link);
    EXPECT_EQ(opened.outcome, XOutcome::late);
}

TEST_F(XLinkTest, AnOpeningThatIsCancelledEnds)
{
    server.hold();
    EventSignal cancellation;
    cancellation.raise();
    const auto opened = XLink::open(
        {.extensions = {}, .display = server.display().c_str(), .cancellation = cancellation.descriptor()},
        within(never));
    EXPECT_EQ(opened.outcome, XOutcome::late);
}

TEST_F(XLinkTest, WhereThereIsNoServerNoneIsWaitedFor)
{
    const auto opened = XLink::open({.extensions = {}, .display = ":19999"}, within(never));
    EXPECT_FALSE(opened.link);
    EXPECT_EQ(opened.outcome, XOutcome::lost);
}

TEST_F(XLinkTest, AfterALateAnswerNothingIsWaitedForUntilTheServerIsBack)
{
    const auto link = open();
    server.hold();
    EXPECT_EQ(ask(*link, within(20ms)), XOutcome::late);
    EXPECT_EQ(ask(*link, within(never)), XOutcome::late);
    server.release();
    XOutcome outcome = XOutcome::late;
    for (const Deadline end = within(soon); outcome == XOutcome::late && Deadline::clock::now() < end;)
        outcome = ask(*link);
    EXPECT_EQ(outcome, XOutcome::answered);
}

TEST_F(XLinkTest, AServerThatGoesAwayIsLost)
{
    const auto link = open();
    server.hold();
    auto waiter = std::async(std::launch::async, [&] { return ask(*link, within(never)); });
    server.hangUp();
    EXPECT_EQ(waiter.get(), XOutcome::lost);
    EXPECT_TRUE(link->isLost());
    EXPECT_EQ(ask(*link, within(never)), XOutcome::lost);
}

TEST_F(XLinkTest, AThreadThatWaitsCanBeStopped)
{
    EventSignal cancellation;
    const auto link = XLink::open({.extensions = {},
                                   .display = server.display().c_str(),
                                   .cancellation = cancellation.descriptor()},
                                  within(soon))
                          .link;
    ASSERT_TRUE(link);
    server.hold();
    auto waiter = std::async(std::launch::async, [&] { return ask(*link, within(never)); });
    cancellation.raise();
    EXPECT_EQ(waiter.get(), XOutcome::late);
}

TEST_F(XLinkTest, TellsOnceThatALateServerIsBack)
{
    const auto link = open();
    server.hold();
    ASSERT_EQ(ask(*link, within(20ms)), XOutcome::late);
    EXPECT_FALSE(link->nextEvent());
    EXPECT_FALSE(link->takeRecovery());
    server.release();
    bool isBack = false; // the late answers may come one by one
    while (!isBack && isReadable(*link, 30'000)) {
        EXPECT_FALSE(link->nextEvent());
        isBack = link->takeRecovery();
    }
    EXPECT_TRUE(isBack);
    EXPECT_FALSE(link->takeRecovery());
    EXPECT_FALSE(isReadable(*link));
    EXPECT_EQ(ask(*link), XOutcome::answered);
}

TEST_F(XLinkTest, TellsTheReaderThatAQuestionHasFoundTheServerBack)
{
    const auto link = open();
    askUntilTheServerIsBack(*link);
    EXPECT_TRUE(isReadable(*link));
    EXPECT_TRUE(link->takeRecovery());
    EXPECT_FALSE(isReadable(*link));
}

TEST_F(XLinkTest, AReaderThatDoesNotTakeTheRecoveryIsWokenByItOnce)
{
    const auto link = open();
    askUntilTheServerIsBack(*link);
    EXPECT_FALSE(link->nextEvent());
    EXPECT_FALSE(isReadable(*link));
    EXPECT_TRUE(link->takeRecovery());
}

TEST_F(XLinkTest, TwoOwnersOfASelectionHearWhatAnyOfThemWants)
{
    const auto link = open();
    XSelection first = link->select(0x10, XCB_EVENT_MASK_PROPERTY_CHANGE);
    XSelection second = link->select(0x10, XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    first.reset();
    second.reset();
    ASSERT_EQ(ask(*link), XOutcome::answered);
    const std::uint32_t property = XCB_EVENT_MASK_PROPERTY_CHANGE;
    const std::uint32_t both = property | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    EXPECT_EQ(server.coreMasks(), (std::vector<std::uint32_t>{property, both, 0}));
}

TEST_F(XLinkTest, TheEndOfASelectionLeavesTheOthersBits)
{
    const auto link = open();
    XSelection keys = link->selectInput(0x10, XCB_INPUT_DEVICE_ALL, XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS);
    XSelection motion = link->selectInput(0x10, XCB_INPUT_DEVICE_ALL, XCB_INPUT_XI_EVENT_MASK_RAW_MOTION);
    const XSelection elsewhere =
        link->selectInput(0x10, XCB_INPUT_DEVICE_ALL_MASTER, XCB_INPUT_XI_EVENT_MASK_RAW_MOTION);
    keys.reset();
    ASSERT_EQ(ask(*link), XOutcome::answered);
    const std::uint32_t key = XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS;
    const std::uint32_t move = XCB_INPUT_XI_EVENT_MASK_RAW_MOTION;
    EXPECT_EQ(server.inputMasks(), (std::vector<std::uint32_t>{key, key | move, move, move}));
}

TEST_F(XLinkTest, ASelectionMayOutliveItsLink)
{
    auto link = open();
    XSelection selection = link->select(0x10, XCB_EVENT_MASK_PROPERTY_CHANGE);
    link.reset();
    selection.reset();
    EXPECT_FALSE(selection);
}

} // namespace
