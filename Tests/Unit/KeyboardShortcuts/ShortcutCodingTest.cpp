#include "KeyboardShortcuts/Storage/ShortcutCoding.h"

#include <gtest/gtest.h>

#include <limits>

using namespace orvane::KeyboardShortcuts;

namespace {

std::optional<Shortcut> decoded(const char* text)
{
    return decode(QString::fromUtf8(text));
}

/// Decodes a shortcut with `number` as the key code.
std::optional<std::int64_t> decodedNumber(const QString& number)
{
    const auto shortcut =
        decode(QStringLiteral("{\"carbonKeyCode\":%1,\"carbonModifiers\":4096}").arg(number));
    EXPECT_TRUE(!shortcut || shortcut->carbonModifiers == 4096);
    return shortcut ? std::optional(shortcut->carbonKeyCode) : std::nullopt;
}

constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();

} // namespace

TEST(ShortcutCoding, WritesBothFieldsInTheirOrderAndNothingElse)
{
    EXPECT_EQ(encode({49, 4096}), QStringLiteral("{\"carbonKeyCode\":49,\"carbonModifiers\":4096}"));
    EXPECT_EQ(encode({0, 0}), QStringLiteral("{\"carbonKeyCode\":0,\"carbonModifiers\":0}"));
    EXPECT_EQ(encode({-1, most}),
              QStringLiteral("{\"carbonKeyCode\":-1,\"carbonModifiers\":9223372036854775807}"));
}

TEST(ShortcutCoding, ReadsWhatItWrites)
{
    for (const std::int64_t code : {std::int64_t{0}, std::int64_t{49}, std::int64_t{-7}, most, least}) {
        for (const std::int64_t modifiers : {std::int64_t{0}, std::int64_t{6912}, most, least}) {
            const Shortcut shortcut(code, modifiers);
            EXPECT_EQ(decode(encode(shortcut)), shortcut);
        }
    }
}

TEST(ShortcutCoding, AnyOrderAnySpaceAndFurtherFieldsAreFine)
{
    const Shortcut expected(49, 4096);
    for (const char* text : {
             R"({"carbonModifiers":4096,"carbonKeyCode":49})",
             " \t\r\n{ \"carbonKeyCode\" : 49 ,\n\"carbonModifiers\"\t: 4096 } \n",
             R"({"carbonKeyCode":49,"carbonModifiers":4096,"more":null})",
             (R"({"a":[1,[],{}, {"carbonKeyCode":1}],"carbonKeyCode":49,)"
              R"("b":{"carbonModifiers":2,"x":[true,false]},"carbonModifiers":4096})"),
             R"({"s":"\"\\\/\b\f\n\r\t\u00e9}","carbonKeyCode":49,"carbonModifiers":4096})",
             R"({"\u0063arbonKeyCode":49,"carbon\u004dodifiers":4096})",
             R"({"":-0.5e-3,"carbonKeyCode":49,"carbonModifiers":4096})",
             R"({"carbonKeyCodes":1,"carbonKeyCod":2,"carbonKeyCode":49,"carbonModifiers":4096})",
             R"({"carbonKeyCode":50,"carbonModifiers":4096,"carbonKeyCode":49})",
             R"({"carbonKeyCode":"fifty","carbonModifiers":4096,"carbonKeyCode":49})",
         })
        EXPECT_EQ(decoded(text), expected) << text;
}

TEST(ShortcutCoding, ANumberIsWhatItIsWorthHoweverItIsWritten)
{
    struct Row {
        const char* text;
        std::int64_t value;
    };
    for (const Row& row : {Row{"0", 0},
                           {"-0", 0},
                           {"-0.0", 0},
                           {"0e999999999999999999999", 0},
                           {"49.0", 49},
                           {"49.000000000000000000000000000", 49},
                           {"4.9e1", 49},
                           {"4.9E+1", 49},
                           {"490e-1", 49},
                           {"-490.0e-1", -49},
                           {"0.049e3", 49},
                           {"0.00000000000000000000000000049e29", 49},
                           {"49000000000000000000000000000e-27", 49},
                           {"9223372036854775807", most},
                           {"-9223372036854775808", least},
                           {"9007199254740993", 9007199254740993},
                           {"1e18", 1000000000000000000}})
        EXPECT_EQ(decodedNumber(QString::fromLatin1(row.text)), row.value) << row.text;
}

TEST(ShortcutCoding, WhatIsNoWholeNumberOfSixtyFourBitsIsRefused)
{
    for (const char* text : {"49.5", "0.1", "1e-1", "9223372036854775807.5", "9223372036854775808",
                             "-9223372036854777856", "18446744073709551616", "99999999999999999999999999999",
                             "1e19", "1e400", "1e99999999999999999999999", "1e-99999999999999999999999",
                             "true", "false", "null", "\"49\"", "[49]", "{}"})
        EXPECT_EQ(decodedNumber(QString::fromLatin1(text)), std::nullopt) << text;
}

TEST(ShortcutCoding, WhatIsNoNumberOfTheNotationIsRefused)
{
    for (const char* text : {"", "+49", "049", "00", "-", "-a", ".5", "49e", "49e+", "0x31", "NaN",
                             "Infinity", "-Infinity", "4 9", "49n", "4_9", "tru", "nul", "1.5.0"})
        EXPECT_EQ(decodedNumber(QString::fromLatin1(text)), std::nullopt) << text;
}

TEST(ShortcutCoding, BothFieldsAreNeeded)
{
    EXPECT_EQ(decoded("{\"carbonKeyCode\":49}"), std::nullopt);
    EXPECT_EQ(decoded("{\"carbonModifiers\":4096}"), std::nullopt);
    EXPECT_EQ(decoded("{\"CarbonKeyCode\":49,\"carbonModifiers\":4096}"), std::nullopt);
    EXPECT_EQ(decoded("{\"carbonKeyCode\":49,\"inner\":{\"carbonModifiers\":4096}}"), std::nullopt);
    EXPECT_EQ(decoded("{\"carbonKeyCode\":49,\"carbonModifiers\":\"4096\"}"), std::nullopt);
}

TEST(ShortcutCoding, OnlyOneWholeObjectCounts)
{
    for (const char* text : {
             "",
             " ",
             "{}",
             "{",
             "}",
             "[]",
             "0",
             "false",
             "null",
             "\"text\"",
             R"([{"carbonKeyCode":49,"carbonModifiers":4096}])",
             R"({"carbonKeyCode":49,"carbonModifiers":4096)",
             R"({"carbonKeyCode":49,"carbonModifiers":4096}})",
             R"({"carbonKeyCode":49,"carbonModifiers":4096} x)",
             R"({"carbonKeyCode":49,"carbonModifiers":4096}{})",
             R"({"carbonKeyCode":49,"carbonModifiers":4096,})",
             R"({,"carbonKeyCode":49,"carbonModifiers":4096})",
             R"({"carbonKeyCode":49 "carbonModifiers":4096})",
             R"({"carbonKeyCode" 49,"carbonModifiers":4096})",
             R"({"carbonKeyCode":49;"carbonModifiers":4096})",
             "{carbonKeyCode:49,carbonModifiers:4096}",
             "{'carbonKeyCode':49,'carbonModifiers':4096}",
             R"({"carbonKeyCode":49,"carbonModifiers":4096,"x":})",
             R"({"carbonKeyCode":49,"carbonModifiers":4096,"x":[1,]})",
             R"({"carbonKeyCode":49,"carbonModifiers":4096,"x":[1})",
             R"({"carbonKeyCode":49,"carbonModifiers":4096,"x":{"y"}})",
             R"({"carbonKeyCode":49,"carbonModifiers":4096,"x":{1:2}})",
             R"({"carbonKeyCode":49,"carbonModifiers":4096,"x":True})",
             R"({"carbonKeyCode":49,"carbonModifiers":4096,"x":"\u00g0"})",
             R"({"carbonKeyCode":49,"carbonModifiers":4096,"x":"\u00"})",
             R"({"carbonKeyCode":49,"carbonModifiers":4096,"x":")",
             R"({"carbonKeyCode":49,"carbonModifiers":4096,"x":"\)",
             R"({"carbonKeyCode":49,"carbonModifiers":4096} // done)",
         })
        EXPECT_EQ(decoded(text), std::nullopt) << text;
    const QString withNull = encode({49, 4096}) + QChar(u'\0');
    EXPECT_EQ(decode(withNull), std::nullopt);
}

TEST(ShortcutCoding, ATextThatIsNestedWithoutEndIsRefused)
{
    const auto nested = [](int depth) {
        return decode(QStringLiteral("{\"x\":%1%2,\"carbonKeyCode\":49,\"carbonModifiers\":4096}")
                          .arg(QString(depth, u'['), QString(depth, u']')));
    };
    EXPECT_EQ(nested(20), Shortcut(49, 4096));
    EXPECT_EQ(nested(1'000'000), std::nullopt);
}
