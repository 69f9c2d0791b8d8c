#include "Contract/EventTapFixture.h"
#include "Desktop/Support/Peer.h"

#include <QCoreApplication>
#include <QLineEdit>

#include <thread>

namespace orvane::tests {
namespace {

using ::testing::ElementsAre;
using namespace eventFlag;

class EventTapLiveTest : public EventTapFixture {};

constexpr const char* pangram = "thequickbrownfoxjumpsoverthelazydog";

TEST_F(EventTapLiveTest, TextTypedFasterThanByAnyHandArrivesWholeAndInOrder)
{
    LambdaTap tap(taps);
    QByteArray text;
    for (int i = 0; i < 30; ++i)
        text += pangram;
    std::thread typist([&] {
        Hardware keyboard;
        for (const char letter : text)
            keyboard.tap(std::string(1, letter).c_str());
    });
    EXPECT_TRUE(eventually(60s, [&] { return window.typed().size() >= text.size(); }));
    typist.join();
    EXPECT_EQ(window.typed(), text);
    EXPECT_EQ(tap.timeouts(), 0);
}

TEST_F(EventTapLiveTest, ALoneSuperReachesTheWindowManagerAsSuch)
{
    other.grabKey(key::superL);
    LambdaTap tap(taps);
    hardware.tap(key::superL);
    EXPECT_TRUE(eventually(10s, [&] { return other.grabbedKeys().size() == 2; }));
    EXPECT_EQ(other.grabbedKeys(), (QList<int>{key::superL, -key::superL}));
}

TEST_F(EventTapLiveTest, AHeldKeyRepeatsForTheApplicationAndForTheTap)
{
    const auto rate = other.repeatRate();
    other.setRepeatRate({100, 20});
    {
        LambdaTap tap(taps);
        hardware.press(key::a);
        EXPECT_TRUE(eventually(10s, [&] { return window.typed().size() >= 4 && tap.sawRepeat(); }));
        hardware.release(key::a);
        EXPECT_TRUE(eventually(10s, [&] { return window.keys().contains(QStringLiteral("-38")); }));
        EXPECT_EQ(window.typed(), QByteArray(window.typed().size(), 'a'));
        EXPECT_EQ(window.keys().count(QStringLiteral("-38")), 1);
    }
    other.setRepeatRate(rate);
}

TEST_F(EventTapLiveTest, ARewrittenChordArrivesWithItsNewModifiers)
{
    LambdaTap tap(taps, superCIsControlC);
    hardware.press(key::superL);
    hardware.tap(key::c);
    hardware.release(key::superL);
    EXPECT_THAT(keysOnce(6), ElementsAre(QStringLiteral("+133"), QStringLiteral("+37/super"),
                                         QStringLiteral("-133/control+super"), QStringLiteral("+54/control"),
                                         QStringLiteral("-54/control"), QStringLiteral("-37/control")));
}

TEST_F(EventTapLiveTest, CommandIsControlShiftWhereTheApplicationWantsThat)
{
    commandKeys = CommandKeys::controlShift;
    LambdaTap tap(taps, [](Event& event) {
        if (event.type != EventType::flagsChanged)
            event.flags = command;
        return true;
    });
    hardware.press(key::controlL);
    hardware.tap(key::c);
    hardware.release(key::controlL);
    const QStringList keys = keysOnce(6);
    EXPECT_THAT(keys, ::testing::Contains(QStringLiteral("+54/shift+control")));
}

TEST_F(EventTapLiveTest, ARemovedKeyReachesNobody)
{
    LambdaTap tap(taps, [](Event& event) { return event.keycode != 7; });
    hardware.tap(key::x);
    hardware.tap(key::a);
    EXPECT_THAT(keysOnce(2), ElementsAre(QStringLiteral("+38"), QStringLiteral("-38")));
}

TEST_F(EventTapLiveTest, CapsLockAndNumLockToggleOnceForEachPress)
{
    constexpr unsigned caps = 1 << 1, num = 1 << 4;
    const unsigned before = other.lockedModifiers();
    LambdaTap tap(taps);
    hardware.tap(key::capsLock);
    EXPECT_TRUE(eventually(10s, [&] { return other.lockedModifiers() == (before ^ caps); }));
    hardware.tap(key::a);
    EXPECT_TRUE(eventually(10s, [&] { return window.typed() == "A"; })) << window.typed().data();
    EXPECT_EQ(tap.seen().back().flags, alphaShift);
    hardware.tap(key::capsLock);
    EXPECT_TRUE(eventually(10s, [&] { return other.lockedModifiers() == before; }));
    hardware.tap(key::numLock);
    EXPECT_TRUE(eventually(10s, [&] { return other.lockedModifiers() == (before ^ num); }));
    hardware.tap(key::numLock);
    EXPECT_TRUE(eventually(10s, [&] { return other.lockedModifiers() == before; }));
}

TEST_F(EventTapLiveTest, CapsLockIsKnownWhenTheTapComesLater)
{
    hardware.tap(key::capsLock);
    {
        LambdaTap tap(taps);
        hardware.tap(key::a);
        EXPECT_TRUE(eventually(10s, [&] { return window.typed() == "A"; }));
        EXPECT_EQ(tap.seen().back().flags, alphaShift);
        hardware.tap(key::capsLock);
        EXPECT_TRUE(eventually(10s, [&] { return other.lockedModifiers() == 0; }));
    }
    hardware.tap(key::a);
    EXPECT_TRUE(eventually(10s, [&] { return window.typed() == "Aa"; })) << window.typed().data();
}

TEST_F(EventTapLiveTest, AKeyHeldWhenTheTapBeginsComesUpForTheWindowThatSawIt)
{
    hardware.press(key::shiftL);
    hardware.press(key::a);
    keysOnce(2);
    LambdaTap tap(taps);
    hardware.tap(key::b);
    hardware.release(key::a);
    hardware.release(key::shiftL);
    EXPECT_THAT(keysOnce(6), ElementsAre(QStringLiteral("+50"), QStringLiteral("+38/shift"),
                                         QStringLiteral("+56/shift"), QStringLiteral("-56/shift"),
                                         QStringLiteral("-38/shift"), QStringLiteral("-50/shift")));
    EXPECT_EQ(tap.seen().front().flags, shift);
}

TEST_F(EventTapLiveTest, AModifierHeldWhenTheTapEndsStillCounts)
{
    {
        LambdaTap tap(taps);
        hardware.press(key::shiftL);
        hardware.press(key::a);
        keysOnce(2);
    }
    EXPECT_TRUE(eventually(10s, [&] { return window.keys().contains(QStringLiteral("-38/shift")); }));
    EXPECT_TRUE(eventually(10s, [&] { return window.keys().count(QStringLiteral("+50")) == 2; }))
        << window.keys().join(QLatin1Char(' ')).toStdString();
    hardware.tap(key::b);
    EXPECT_TRUE(eventually(10s, [&] { return window.typed() == "AB"; })) << window.typed().data();
    hardware.release(key::a);
    hardware.release(key::shiftL);
}

TEST_F(EventTapLiveTest, ARebuiltTapTearsNoKeyInHalf)
{
    auto tap = std::make_unique<LambdaTap>(taps);
    hardware.press(key::shiftL);
    hardware.press(key::a);
    keysOnce(2);
    for (int i = 0; i < 20; ++i) {
        tap.reset();
        tap = std::make_unique<LambdaTap>(taps);
        QCoreApplication::processEvents();
    }
    hardware.tap(key::b);
    hardware.release(key::a);
    hardware.release(key::shiftL);
    EXPECT_THAT(keysOnce(6), ElementsAre(QStringLiteral("+50"), QStringLiteral("+38/shift"),
                                         QStringLiteral("+56/shift"), QStringLiteral("-56/shift"),
                                         QStringLiteral("-38/shift"), QStringLiteral("-50/shift")));
    // The release of a modifier is injected before the tap is asked.
    EXPECT_TRUE(eventually(10s, [&] { return tap->seen().size() == 4; })) << tap->seen().size();
}

Event posted(EventType type, EventFlags flags)
{
    Event event;
    event.type = type;
    event.keycode = 9;
    event.flags = flags;
    event.userData = 0x4F525641;
    return event;
}

TEST_F(EventTapLiveTest, APostedPasteWorksWithoutATapAndLiftsWhatTheUserHolds)
{
    hardware.press(key::superL);
    keysOnce(1);
    taps.post(EventTaps::Location::hid, posted(EventType::keyDown, command));
    taps.post(EventTaps::Location::hid, posted(EventType::keyUp, command));
    EXPECT_THAT(keysOnce(7), ElementsAre(QStringLiteral("+133"), QStringLiteral("+37/super"),
                                         QStringLiteral("-133/control+super"), QStringLiteral("+55/control"),
                                         QStringLiteral("-55/control"), QStringLiteral("+133/control"),
                                         QStringLiteral("-37/control+super")));
    hardware.release(key::superL);
    EXPECT_EQ(keysOnce(8).back(), QStringLiteral("-133/super"));
}

TEST_F(EventTapLiveTest, APostedPasteAnswersAHotKeyWhoseKeysAreStillHeld)
{
    hardware.press(key::superL);
    hardware.press(key::v);
    keysOnce(2);
    taps.post(EventTaps::Location::hid, posted(EventType::keyDown, command));
    taps.post(EventTaps::Location::hid, posted(EventType::keyUp, command));
    EXPECT_TRUE(eventually(10s, [&] { return window.keys().contains(QStringLiteral("+55/control")); }));
    hardware.release(key::v);
    hardware.release(key::superL);
}

TEST_F(EventTapLiveTest, APostedPasteLiftsWhatTheUserHoldsUnderATapToo)
{
    LambdaTap tap(taps);
    hardware.press(key::superL);
    keysOnce(1);
    taps.post(EventTaps::Location::hid, posted(EventType::keyDown, command));
    taps.post(EventTaps::Location::hid, posted(EventType::keyUp, command));
    EXPECT_EQ(keysOnce(7).at(3), QStringLiteral("+55/control"));
    hardware.release(key::superL);
    EXPECT_EQ(keysOnce(8).back(), QStringLiteral("-133/super"));
    ASSERT_TRUE(eventually(10s, [&] { return tap.seen().size() == 4; })) << tap.seen().size();
    EXPECT_EQ(tap.seen()[1].userData, 0x4F525641);
}

TEST_F(EventTapLiveTest, AModifierThatIsLetGoWhileAPostedChordIsDownStaysUp)
{
    hardware.press(key::superL);
    keysOnce(1);
    taps.post(EventTaps::Location::hid, posted(EventType::keyDown, command));
    EXPECT_EQ(keysOnce(4).at(3), QStringLiteral("+55/control"));
    hardware.release(key::superL);
    taps.post(EventTaps::Location::hid, posted(EventType::keyUp, command));
    EXPECT_TRUE(eventually(10s, [&] { return window.keys().contains(QStringLiteral("-37/control")); }))
        << window.keys().join(QLatin1Char(' ')).toStdString();
    EXPECT_TRUE(eventually(10s, [&] { return other.keysDown().isEmpty(); }));
}

TEST_F(EventTapLiveTest, AModifierThatIsLetGoAndPressedAgainWhileAPostedChordIsDownStaysDown)
{
    hardware.press(key::superL);
    keysOnce(1);
    taps.post(EventTaps::Location::hid, posted(EventType::keyDown, command));
    EXPECT_EQ(keysOnce(4).at(3), QStringLiteral("+55/control"));
    hardware.release(key::superL);
    hardware.press(key::superL);
    taps.post(EventTaps::Location::hid, posted(EventType::keyUp, command));
    EXPECT_TRUE(eventually(10s, [&] { return other.keysDown() == QList<int>{key::superL}; }));
    hardware.release(key::superL);
}

TEST_F(EventTapLiveTest, AModifierThatIsLetGoAtAnyMomentOfAPostedChordIsUpAfterwards)
{
    for (int i = 0; i < 200; ++i) {
        hardware.press(key::superL);
        taps.post(EventTaps::Location::hid, posted(EventType::keyDown, command));
        taps.post(EventTaps::Location::hid, posted(EventType::keyUp, command));
        hardware.release(key::superL); // at a random point of what the other thread does meanwhile
        ASSERT_TRUE(eventually(10s,
                               [&] {
                                   return window.keys().count(QStringLiteral("+55/control")) == i + 1 &&
                                          other.keysDown().isEmpty();
                               }))
            << i << ": " << window.keys().mid(window.keys().size() - 9).join(QLatin1Char(' ')).toStdString();
    }
}

TEST_F(EventTapLiveTest, AnEventPostedFromACallbackComesAfterTheOneItAnswers)
{
    LambdaTap tap(taps, [this](Event& event) {
        if (event.type == EventType::keyDown && event.userData == 0) {
            taps.post(EventTaps::Location::hid, posted(EventType::keyDown, 0));
            taps.post(EventTaps::Location::hid, posted(EventType::keyUp, 0));
        }
        return true;
    });
    hardware.tap(key::a);
    EXPECT_TRUE(eventually(10s, [&] { return window.keys().size() == 4; }));
    EXPECT_EQ(window.typed(), "av");
}

TEST_F(EventTapLiveTest, AQtLineEditGetsWhatIsTyped)
{
    QLineEdit edit;
    edit.show();
    edit.activateWindow();
    ASSERT_TRUE(eventually(10s, [&] { return edit.hasFocus() && edit.isActiveWindow(); }));
    LambdaTap tap(taps);
    for (const char letter : QByteArray(pangram))
        hardware.tap(std::string(1, letter).c_str());
    hardware.press(key::shiftL);
    hardware.tap(key::a);
    hardware.release(key::shiftL);
    EXPECT_TRUE(eventually(10s, [&] { return edit.text() == QLatin1String(pangram) + QLatin1Char('A'); }))
        << edit.text().toStdString();
}

TEST_F(EventTapLiveTest, AGtkEntryGetsWhatIsTyped)
{
    Peer entry(Peer::gtkEntry());
    ASSERT_TRUE(eventually(20s, [&] { return other.activate("Entry"); }));
    ASSERT_TRUE(entry.tells(QStringLiteral("focused")));
    LambdaTap tap(taps);
    for (const char letter : QByteArray(pangram))
        hardware.tap(std::string(1, letter).c_str());
    EXPECT_TRUE(entry.tells(QLatin1String("text:") + QLatin1String(pangram))) << entry.text().toStdString();
}

} // namespace
} // namespace orvane::tests
