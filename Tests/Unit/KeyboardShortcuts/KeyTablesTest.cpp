#include "KeyboardShortcuts/Shortcut/Key.h"
#include "KeyboardShortcuts/Shortcut/KeyText.h"
#include "KeyboardShortcuts/Shortcut/ModifierFlags.h"

#include <gtest/gtest.h>

#include <QMap>
#include <QString>

using namespace orvane;
using namespace orvane::KeyboardShortcuts;

namespace {

// Past every code, on both sides.
constexpr std::int64_t firstCode = -2;
constexpr std::int64_t lastCode = 300;

const QMap<std::int64_t, QString>& fixedTexts()
{
    static const QMap<std::int64_t, QString> texts = [] {
        struct Row {
            std::int64_t code;
            QStringView text;
        };
        QMap<std::int64_t, QString> result;
        for (const Row& row :
             {Row{36, u"↩"},       Row{122, u"F1"},     Row{82, u"0\u20E3"}, Row{51, u"⌫"},
              Row{120, u"F2"},     Row{83, u"1\u20E3"}, Row{117, u"⌦"},      Row{99, u"F3"},
              Row{84, u"2\u20E3"}, Row{119, u"↘"},      Row{118, u"F4"},     Row{85, u"3\u20E3"},
              Row{53, u"⎋"},       Row{96, u"F5"},      Row{86, u"4\u20E3"}, Row{114, u"?\u20DD"},
              Row{97, u"F6"},      Row{87, u"5\u20E3"}, Row{115, u"↖"},      Row{98, u"F7"},
              Row{88, u"6\u20E3"}, Row{49, u"Space"},   Row{100, u"F8"},     Row{89, u"7\u20E3"},
              Row{48, u"⇥"},       Row{101, u"F9"},     Row{91, u"8\u20E3"}, Row{116, u"⇞"},
              Row{109, u"F10"},    Row{92, u"9\u20E3"}, Row{121, u"⇟"},      Row{103, u"F11"},
              Row{71, u"☒\u20E3"}, Row{126, u"↑"},      Row{111, u"F12"},    Row{65, u".\u20E3"},
              Row{124, u"→"},      Row{105, u"F13"},    Row{75, u"/\u20E3"}, Row{125, u"↓"},
              Row{107, u"F14"},    Row{76, u"↩\u20E3"}, Row{123, u"←"},      Row{113, u"F15"},
              Row{81, u"=\u20E3"}, Row{106, u"F16"},    Row{78, u"-\u20E3"}, Row{64, u"F17"},
              Row{67, u"*\u20E3"}, Row{79, u"F18"},     Row{69, u"+\u20E3"}, Row{80, u"F19"},
              Row{90, u"F20"}})
            result.insert(row.code, row.text.toString());
        return result;
    }();
    return texts;
}

} // namespace

TEST(ShortcutKeyTables, EachKeyHasItsVirtualKeyCode)
{
    struct Row {
        Key key;
        std::int64_t code;
    };
    std::size_t count = 0;
    for (const Row& row : {Row{Key::a, 0},
                           Row{Key::b, 11},
                           Row{Key::c, 8},
                           Row{Key::d, 2},
                           Row{Key::e, 14},
                           Row{Key::f, 3},
                           Row{Key::g, 5},
                           Row{Key::h, 4},
                           Row{Key::i, 34},
                           Row{Key::j, 38},
                           Row{Key::k, 40},
                           Row{Key::l, 37},
                           Row{Key::m, 46},
                           Row{Key::n, 45},
                           Row{Key::o, 31},
                           Row{Key::p, 35},
                           Row{Key::q, 12},
                           Row{Key::r, 15},
                           Row{Key::s, 1},
                           Row{Key::t, 17},
                           Row{Key::u, 32},
                           Row{Key::v, 9},
                           Row{Key::w, 13},
                           Row{Key::x, 7},
                           Row{Key::y, 16},
                           Row{Key::z, 6},
                           Row{Key::zero, 29},
                           Row{Key::one, 18},
                           Row{Key::two, 19},
                           Row{Key::three, 20},
                           Row{Key::four, 21},
                           Row{Key::five, 23},
                           Row{Key::six, 22},
                           Row{Key::seven, 26},
                           Row{Key::eight, 28},
                           Row{Key::nine, 25},
                           Row{Key::capsLock, 57},
                           Row{Key::shift, 56},
                           Row{Key::function, 63},
                           Row{Key::control, 59},
                           Row{Key::option, 58},
                           Row{Key::command, 55},
                           Row{Key::rightCommand, 54},
                           Row{Key::rightOption, 61},
                           Row{Key::rightControl, 62},
                           Row{Key::rightShift, 60},
                           Row{Key::return_, 36},
                           Row{Key::backslash, 42},
                           Row{Key::backtick, 50},
                           Row{Key::comma, 43},
                           Row{Key::equal, 24},
                           Row{Key::minus, 27},
                           Row{Key::period, 47},
                           Row{Key::quote, 39},
                           Row{Key::semicolon, 41},
                           Row{Key::slash, 44},
                           Row{Key::space, 49},
                           Row{Key::tab, 48},
                           Row{Key::leftBracket, 33},
                           Row{Key::rightBracket, 30},
                           Row{Key::pageUp, 116},
                           Row{Key::pageDown, 121},
                           Row{Key::home, 115},
                           Row{Key::end, 119},
                           Row{Key::upArrow, 126},
                           Row{Key::rightArrow, 124},
                           Row{Key::downArrow, 125},
                           Row{Key::leftArrow, 123},
                           Row{Key::escape, 53},
                           Row{Key::delete_, 51},
                           Row{Key::deleteForward, 117},
                           Row{Key::help, 114},
                           Row{Key::mute, 74},
                           Row{Key::volumeUp, 72},
                           Row{Key::volumeDown, 73},
                           Row{Key::f1, 122},
                           Row{Key::f2, 120},
                           Row{Key::f3, 99},
                           Row{Key::f4, 118},
                           Row{Key::f5, 96},
                           Row{Key::f6, 97},
                           Row{Key::f7, 98},
                           Row{Key::f8, 100},
                           Row{Key::f9, 101},
                           Row{Key::f10, 109},
                           Row{Key::f11, 103},
                           Row{Key::f12, 111},
                           Row{Key::f13, 105},
                           Row{Key::f14, 107},
                           Row{Key::f15, 113},
                           Row{Key::f16, 106},
                           Row{Key::f17, 64},
                           Row{Key::f18, 79},
                           Row{Key::f19, 80},
                           Row{Key::f20, 90},
                           Row{Key::keypad0, 82},
                           Row{Key::keypad1, 83},
                           Row{Key::keypad2, 84},
                           Row{Key::keypad3, 85},
                           Row{Key::keypad4, 86},
                           Row{Key::keypad5, 87},
                           Row{Key::keypad6, 88},
                           Row{Key::keypad7, 89},
                           Row{Key::keypad8, 91},
                           Row{Key::keypad9, 92},
                           Row{Key::keypadClear, 71},
                           Row{Key::keypadDecimal, 65},
                           Row{Key::keypadDivide, 75},
                           Row{Key::keypadEnter, 76},
                           Row{Key::keypadEquals, 81},
                           Row{Key::keypadMinus, 78},
                           Row{Key::keypadMultiply, 67},
                           Row{Key::keypadPlus, 69}}) {
        EXPECT_EQ(rawValue(row.key), row.code);
        EXPECT_EQ(Key{row.code}, row.key);
        ++count;
    }
    EXPECT_EQ(count, 113U);
}

TEST(ShortcutKeyTables, ACodeWithoutAConstantIsAKeyToo)
{
    EXPECT_EQ(rawValue(Key{10}), 10);
    EXPECT_EQ(rawValue(Key{-1}), -1);
}

TEST(ShortcutKeyTables, FiftyThreeKeysHaveAFixedTextAndNoOther)
{
    ASSERT_EQ(fixedTexts().size(), 53);
    for (std::int64_t code = firstCode; code <= lastCode; ++code) {
        const auto text = keyToCharacterMapping(code);
        ASSERT_EQ(text.has_value(), fixedTexts().contains(code)) << code;
        EXPECT_EQ(text.value_or(QStringView()), fixedTexts().value(code)) << code;
    }
}

TEST(ShortcutKeyTables, TwentyOneKeysHaveACharacterForMenusAndNoOther)
{
    QMap<std::int64_t, QString> expected{{49, QStringLiteral(" ")}};
    char16_t unit = 0xF704;
    for (const std::int64_t code :
         {122, 120, 99, 118, 96, 97, 98, 100, 101, 109, 103, 111, 105, 107, 113, 106, 64, 79, 80, 90})
        expected.insert(code, QString(QChar(unit++)));
    ASSERT_EQ(expected.size(), 21);
    EXPECT_EQ(expected.value(90), QString(QChar(0xF717)));
    for (std::int64_t code = firstCode; code <= lastCode; ++code) {
        const auto text = keyToKeyEquivalentString(code);
        ASSERT_EQ(text.has_value(), expected.contains(code)) << code;
        EXPECT_EQ(text.value_or(QStringView()), expected.value(code)) << code;
    }
}

TEST(ShortcutModifiers, EachOfTheFourHasItsBitInBothEncodings)
{
    struct Row {
        EventFlags flag;
        std::int64_t carbon;
    };
    for (const Row& row : {Row{0x40000, 0x1000}, {0x80000, 0x800}, {0x20000, 0x200}, {0x100000, 0x100}}) {
        EXPECT_EQ(toCarbonModifiers(row.flag), row.carbon);
        EXPECT_EQ(toEventFlags(row.carbon), row.flag);
    }
    EXPECT_EQ(toCarbonModifiers(0x1E0000), 0x1B00);
    EXPECT_EQ(toEventFlags(0x1B00), 0x1E0000U);
}

TEST(ShortcutModifiers, EveryOtherBitIsDroppedInBothDirections)
{
    for (int bit = 0; bit < 64; ++bit) {
        const EventFlags flag = EventFlags{1} << bit;
        EXPECT_EQ(toCarbonModifiers(flag) != 0, (flag & 0x1E0000) != 0) << bit;
        EXPECT_EQ(toEventFlags(static_cast<std::int64_t>(flag)) != 0, (flag & 0x1B00) != 0) << bit;
    }
    EXPECT_EQ(toCarbonModifiers(~EventFlags{0}), 0x1B00);
    EXPECT_EQ(toEventFlags(-1), 0x1E0000U);
}

TEST(ShortcutModifiers, TheSymbolsStandInTheOrderControlOptionShiftCommandFunction)
{
    EXPECT_EQ(description(EventFlags{0x1E0000 | 0x800000}), QString::fromUtf8("⌃⌥⇧⌘🌐︎"));
    EXPECT_EQ(description(0x40000), QString::fromUtf8("⌃"));
    EXPECT_EQ(description(0x80000), QString::fromUtf8("⌥"));
    EXPECT_EQ(description(0x20000), QString::fromUtf8("⇧"));
    EXPECT_EQ(description(0x100000), QString::fromUtf8("⌘"));
    const char16_t globe[] = {0xD83C, 0xDF10, 0xFE0E};
    EXPECT_EQ(description(0x800000), QString::fromUtf16(globe, 3));
    EXPECT_EQ(description(eventFlag::alphaShift | eventFlag::numericPad | eventFlag::help), QString());
}

TEST(ShortcutText, TheFirstLetterOfEachWordIsRaisedAndTheOthersAreLowered)
{
    struct Row {
        QStringView text;
        QStringView capitalized;
    };
    for (const Row& row : {Row{u"k", u"K"},
                           {u"Space", u"Space"},
                           {u"F12", u"F12"},
                           {u"abC dE", u"Abc De"},
                           {u"é", u"É"},
                           {u"ж", u"Ж"},
                           {u"ß", u"ß"},
                           {u"ǆ", u"ǅ"},
                           {u"7", u"7"},
                           {u"´", u"´"},
                           {u"e\u0301A", u"E\u0301a"},
                           {u"\U00010428", u"\U00010400"},
                           {u"", u""}})
        EXPECT_EQ(capitalized(row.text), row.capitalized);
}

TEST(ShortcutText, AKeycapIsOneCharacter)
{
    EXPECT_EQ(characterCount(QString()), 0);
    EXPECT_EQ(characterCount(QStringLiteral("k")), 1);
    EXPECT_EQ(characterCount(QStringLiteral("F1")), 2);
    EXPECT_EQ(characterCount(QStringLiteral("\U0001F310")), 1);
    for (const QString& text : fixedTexts()) {
        const bool isWord = text.startsWith(u'F') || text == QStringLiteral("Space");
        EXPECT_EQ(characterCount(text), isWord ? text.size() : 1) << qPrintable(text);
    }
}
