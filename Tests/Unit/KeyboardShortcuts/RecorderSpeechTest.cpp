// Shortcuts in words. Tests/Unit/Translations has the words of this desktop.
#include "KeyboardShortcuts/Recorder/RecorderSpeech.h"
#include "Fakes/FakePlatform.h"

#include <gtest/gtest.h>

namespace {

using namespace orvane;
using namespace orvane::KeyboardShortcuts;

class RecorderSpeechTest : public ::testing::Test {
protected:
    FakePlatform fake;

    static QString said(Key key, EventFlags flags) { return spokenDescription(Shortcut(key, flags)); }
};

TEST_F(RecorderSpeechTest, SaysModifiersInTheOrderInWhichTheyAreWritten)
{
    EXPECT_EQ(
        said(Key::space, eventFlag::command | eventFlag::shift | eventFlag::option | eventFlag::control),
        QStringLiteral("Control Option Shift Command Space"));
    EXPECT_EQ(said(Key::k, eventFlag::command), QStringLiteral("Command K"));
    EXPECT_EQ(said(Key::f5, 0), QStringLiteral("F5"));
}

TEST_F(RecorderSpeechTest, HasAWordForEachKeyThatIsWrittenAsASymbol)
{
    EXPECT_EQ(said(Key::leftArrow, eventFlag::control), QStringLiteral("Control Left"));
    EXPECT_EQ(said(Key::delete_, eventFlag::command), QStringLiteral("Command Delete"));
    for (const Key key : {Key::return_, Key::delete_, Key::deleteForward, Key::end, Key::escape, Key::help,
                          Key::home, Key::space, Key::tab, Key::pageUp, Key::pageDown, Key::upArrow,
                          Key::rightArrow, Key::downArrow, Key::leftArrow}) {
        for (const QChar character : said(key, 0))
            EXPECT_TRUE(character.unicode() < 128) << rawValue(key);
    }
}

TEST_F(RecorderSpeechTest, TellsTheKeypadFromTheOtherDigits)
{
    EXPECT_EQ(said(Key::keypad7, eventFlag::option), QStringLiteral("Option Keypad 7"));
    EXPECT_EQ(said(Key::seven, eventFlag::option), QStringLiteral("Option 7"));
    EXPECT_EQ(said(Key::keypadEnter, 0), QStringLiteral("Keypad Enter"));
    EXPECT_EQ(said(Key::keypadClear, 0), QStringLiteral("Keypad Clear"));
    EXPECT_EQ(said(Key::keypadPlus, 0), QStringLiteral("Keypad +"));
}

TEST_F(RecorderSpeechTest, SaysTheNameOfAKeyThatTheSystemCallsOtherwise)
{
    EXPECT_EQ(said(Key::help, eventFlag::control), QStringLiteral("Control Help"));
    fake.inputSources.names = {{rawValue(Key::help), QStringLiteral("Insert")},
                               {0x107F, QStringLiteral("Pause")}};
    EXPECT_EQ(said(Key::help, eventFlag::control), QStringLiteral("Control Insert"));
    EXPECT_EQ(said(Key{0x107F}, 0), QStringLiteral("Pause"));
}

TEST_F(RecorderSpeechTest, GivesTheCodeOfAKeyThatPrintsNothing)
{
    EXPECT_EQ(said(Key{200}, eventFlag::control), QStringLiteral("Control Key 200"));
}

} // namespace
