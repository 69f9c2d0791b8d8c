#include "Capabilities/PlainPaste/Rtf/RtfText.h"

#include <gtest/gtest.h>

using namespace orvane;

namespace {

struct Sample {
    const char* name;
    QByteArray document;
    QString text;
};

void PrintTo(const Sample& sample, std::ostream* out)
{
    *out << sample.name;
}

QByteArray rtf(const char* content)
{
    return QByteArray("{\\rtf1\\ansi\\ansicpg1252\\deff0 ") + content + "}";
}

std::optional<QString> textOf(const QByteArray& document)
{
    return orvane::RtfText::decode(document);
}

struct RtfText : testing::TestWithParam<Sample> {};

TEST_P(RtfText, GivesWhatAReaderSees)
{
    const auto text = textOf(GetParam().document);
    ASSERT_TRUE(text.has_value());
    EXPECT_EQ(text->toStdString(), GetParam().text.toStdString());
}

std::vector<Sample> samples()
{
    const char* const fonts = "{\\fonttbl{\\f0\\froman\\fcharset0 Times;}{\\f1\\fnil\\fcharset204 Arial "
                              "Cyr;}{\\f2\\fnil\\fcharset128 Gothic;}{\\f3\\fnil\\fcharset2 Symbol;}"
                              "{\\f4\\fnil\\cpg1250 Own;}}";
    return {
        // The forms of different writers
        {"Editor",
         "{\\rtf1\\ansi\\ansicpg1252\\cocoartf2639\n{\\fonttbl\\f0\\fswiss\\fcharset0 "
         "Helvetica-Bold;}\n{\\colortbl;\\red255\\green255\\blue255;}\n{\\*\\expandedcolortbl;;}\n"
         "\\pard\\tx560\\pardirnatural\\partightenfactor0\n\n\\f0\\b\\fs24 \\cf0 Bold\\\nand "
         "\\b0 not \\uc0\\u8364 5}",
         QStringLiteral("Bold\nand not €5")},
        {"OfficeSuite",
         "{\\rtf1\\ansi\\deff3\\adeflang1025\r\n{\\fonttbl{\\f0\\froman\\fprq2\\fcharset0 Serif;}}\r\n"
         "{\\stylesheet{\\s0\\snext0 Standard;}{\\*\\cs15\\snext15 Strong;}}{\\info{\\title A title}"
         "{\\creatim\\yr2024}}{\\*\\userprops}\\viewscale100\r\n{\\*\\pgdsctbl{\\pgdsc0 Default;}}\r\n"
         "\\pard\\plain \\s0{\\rtlch \\ltrch\\loch\\b First}{\\rtlch \\ltrch\\loch  word}\r\n\\par "
         "\\pard\\plain \\s0{\\ltrch Second \\u228\\'e4}\r\n\\par }",
         QStringLiteral("First word\nSecond ä")},
        {"WordProcessor",
         "{\\rtf1\\adeflang1025\\ansi\\ansicpg1252\\uc1{\\fonttbl{\\f0\\fcharset0{\\*\\panose "
         "02020603}Times{\\*\\falt Tms};}}{\\*\\themedata 504b0304}{\\*\\latentstyles\\lsdstimax371{"
         "\\lsdlockedexcept Normal;}}{\\*\\rsidtbl \\rsid1}{\\mmathPr\\mmathFont34}{\\header \\pard Top"
         "\\par}\\pard {\\rtlch\\fcs1 \\ltrch\\fcs0 It\\rquote s {\\*\\bkmkstart a}{\\*\\bkmkend a}here}"
         "{\\footnote Note}\\par{\\*\\datastore 0105}}",
         QStringLiteral("It’s here")},

        // Characters
        {"CodePageOfTheDocument", "{\\rtf1\\ansi\\ansicpg1251 \\'cf\\'f0\\'e8}", QStringLiteral("При")},
        {"MacRoman", "{\\rtf1\\mac \\'8e}", QStringLiteral("é")},
        {"OldPersonalComputer", "{\\rtf1\\pc \\'82}", QStringLiteral("é")},
        {"UnknownCodePageIsWesternWindows", "{\\rtf1\\ansicpg99999 \\'e9}", QStringLiteral("é")},
        {"UnwrittenHighByte", rtf("caf\xE9"), QStringLiteral("café")},
        {"CharacterSetOfAFont", rtf(fonts).replace("}}}", "}}\\f1 \\'cf\\f0 \\'cf}"), QStringLiteral("ПÏ")},
        {"DoubleBytes", rtf(fonts).replace("}}}", "}}\\f2 \\'93\\'fa\\'96\\'7b}"), QStringLiteral("日本")},
        {"DoubleByteWithALetterAsItsSecondHalf", rtf(fonts).replace("}}}", "}}\\f2 \\'83A}"),
         QStringLiteral("ア")},
        {"DoubleByteWithABackslashAsItsSecondHalf", rtf(fonts).replace("}}}", "}}\\f2 \\'83\\\\}"),
         QStringLiteral("ソ")},
        {"CodePageOfAFont", rtf(fonts).replace("}}}", "}}\\f4 \\'e8}"), QStringLiteral("č")},
        {"BulletOfASymbolFont", rtf(fonts).replace("}}}", "}}{\\listtext\\f3\\'b7\\tab}One}"),
         QStringLiteral("•\tOne")},
        {"SymbolInUnicode", rtf("\\u-3913?\\tab One"), QStringLiteral("•\tOne")},
        {"DefaultFont", "{\\rtf1\\deff1{\\fonttbl{\\f1\\fcharset161 G;}}\\'e1{\\f9 \\'e1}\\plain\\'e1}",
         QStringLiteral("αáα")},
        {"SignedUnicode", rtf("\\u-10179?\\u-8704?"), QStringLiteral("😀")},
        {"UnsignedUnicode", rtf("\\u55357?\\u56832?"), QStringLiteral("😀")},
        {"WholeCharacterInOneNumber", rtf("\\u128512?!"), QStringLiteral("😀!")},
        {"HalfAPair", rtf("a\\u55357?b"), QStringLiteral("a\uFFFDb")},
        {"ImpossibleNumbers", rtf("a\\u99999999999999999999?b\\u-70000?c\\u0?d"),
         QStringLiteral("a\uFFFDb\uFFFDc\uFFFDd")},
        {"Marks", rtf("\\ldblquote a\\rdblquote\\emdash\\endash\\bullet\\lquote b\\rquote"),
         QStringLiteral("“a”—–•‘b’")},
        {"Symbols", rtf("a\\~b\\_c\\-d\\\\\\{\\}"), QStringLiteral("a\u00A0b\u2011cd\\{}")},
        {"ControlCharacters", rtf("a\\'01\\'00b\x01\\u7?c"), QStringLiteral("abc")},

        // Fallbacks of Unicode characters
        {"FallbackOfOne", rtf("\\u8364?x"), QStringLiteral("€x")},
        {"FallbackInHexadecimal", rtf("\\u8364\\'80x"), QStringLiteral("€x")},
        {"FallbackOfNone", rtf("\\uc0\\u8364 x"), QStringLiteral("€x")},
        {"FallbackOfTwo", rtf("\\uc2\\u26085\\'93\\'fa!"), QStringLiteral("日!")},
        {"FallbackLengthEndsWithItsGroup", rtf("{\\uc0 a}\\u8364?x"), QStringLiteral("a€x")},
        {"FallbackEndsWithItsGroup", rtf("{\\uc3\\u8364?}xyz"), QStringLiteral("€xyz")},
        {"FallbackIsAWord", rtf("\\u8226\\bullet x"), QStringLiteral("•x")},
        {"FallbackIsBinary", rtf("\\u8226\\bin3 {}}x"), QStringLiteral("•x")},
        {"HugeFallbackLength", rtf("\\uc2147483647\\u8364?}{xx"), QStringLiteral("€")},

        // Lines and tables
        {"LineEnds", rtf("a\\par b\\line c\\sect d\\page e\\\r\nf\\\ng"),
         QStringLiteral("a\nb\nc\nd\ne\nf\ng")},
        {"LinesOfTheSourceAreNotOfTheText", rtf("a\nb\r\nc"), QStringLiteral("abc")},
        {"EmptyParagraphs", rtf("a\\par\\par b\\par"), QStringLiteral("a\n\nb")},
        {"Tabs", rtf("a\\tab b\tc"), QStringLiteral("a\tb\tc")},
        {"Table",
         rtf("\\trowd\\cellx100\\cellx200\\intbl a\\cell b\\cell\\row\\intbl c\\cell d\\cell\\row "
             "\\pard after"),
         QStringLiteral("a\tb\nc\td\nafter")},
        {"EmptyCells", rtf("\\intbl\\cell b\\cell\\cell\\row x"), QStringLiteral("\tb\t\nx")},
        {"TableInATable",
         rtf("\\intbl a\\nestcell b\\nestcell{\\*\\nesttableprops\\trowd\\nestrow}"
             "{\\nonesttables\\par}\\cell\\row x"),
         QStringLiteral("a\tb\n\nx")},

        // Content that isn't shown
        {"HiddenText", rtf("a{\\v hidden}b\\v c\\v0 d\\v e\\plain f"), QStringLiteral("abdf")},
        {"UnknownDestination", rtf("a{\\*\\whatever{\\b deep}\\par}b"), QStringLiteral("ab")},
        {"UnknownWord", rtf("a{\\whatever b}\\verylongcontrolwordthatnobodyhaseverheardof12 c"),
         QStringLiteral("abc")},
        {"Picture",
         rtf("a{\\pict\\pngblip\\picw1 89504e47}b{\\*\\shppict{\\pict 00}}{\\nonshppict{\\pict 1}}c"),
         QStringLiteral("abc")},
        {"Field", rtf("{\\field{\\*\\fldinst HYPERLINK \"http://x\"}{\\fldrslt{\\ul link}}} on"),
         QStringLiteral("link on")},
        {"OldField", rtf("{\\field{\\fldinst PAGE}{\\fldrslt 3}}"), QStringLiteral("3")},
        {"Object", rtf("a{\\object\\objemb{\\*\\objdata 0105}{\\result{\\b shown}{\\pict 00}}}b"),
         QStringLiteral("ashownb")},
        {"ResultInWhatIsSkipped", rtf("a{\\*\\x{\\object{\\result no}}{\\upr{n}{\\*\\ud n}}}b"),
         QStringLiteral("ab")},
        {"Alternatives", rtf("a{\\upr{bad}{\\*\\ud good\\u8364?}}b"), QStringLiteral("agood€b")},
        {"Annotation", rtf("a{\\*\\atnid 1}{\\annotation remark}b"), QStringLiteral("ab")},
        {"BinaryWithBraces", rtf("a{\\pict\\bin4 }}{\\}b"), QStringLiteral("ab")},
        {"NegativeBinary", rtf("a\\bin-5 b"), QStringLiteral("ab")},

        // Damage
        {"BrokenOff", "{\\rtf1 a{\\b b", QStringLiteral("ab")},
        {"BrokenOffInAWord", "{\\rtf1 a\\", QStringLiteral("a")},
        {"BrokenOffInHexadecimal", "{\\rtf1 a\\'e", QStringLiteral("a")},
        {"BinaryBeyondTheEnd", "{\\rtf1 a\\bin2147483647 bcd", QStringLiteral("a")},
        {"AfterTheEnd", "{\\rtf1 a}b{c}", QStringLiteral("a")},
        {"BadHexadecimal", rtf("a\\'zzb"), QStringLiteral("azzb")},
        {"HugeParameters", rtf("\\fs999999999999999999999 a\\f-99999999999 b"), QStringLiteral("ab")},
        {"SpaceBefore", " \r\n{\\rtf1 a}", QStringLiteral("a")},
        {"ZerosAfter", QByteArray("{\\rtf1 a}\0\0", 11), QStringLiteral("a")},
        {"WithoutText", "{\\rtf1}", QString()},
    };
}

std::string sampleName(const testing::TestParamInfo<Sample>& sample)
{
    return sample.param.name;
}

INSTANTIATE_TEST_SUITE_P(Samples, RtfText, testing::ValuesIn(samples()), sampleName);

TEST(RtfTextRefusal, TakesNothingElseForRtf)
{
    for (const QByteArray& document :
         {QByteArray(), QByteArray("plain"), QByteArray("{}"), QByteArray("{\\b x}"), QByteArray("{\\rt"),
          QByteArray("\\rtf1 a"), QByteArray("<p>{\\rtf1 a}</p>"), QByteArray("{\\rtfx1 a}"),
          QByteArray("\xFF\xFE{\0", 4)})
        EXPECT_FALSE(textOf(document)) << document.constData();
}

TEST(RtfTextRefusal, EndsWhereGroupsAreTooDeep)
{
    constexpr auto most = orvane::RtfText::maximumDepth;
    EXPECT_EQ(textOf("{\\rtf1 " + QByteArray(most - 1, '{') + "a"), QStringLiteral("a"));
    EXPECT_FALSE(textOf("{\\rtf1 " + QByteArray(most, '{') + "a"));
}

TEST(RtfTextRefusal, LeavesLargerDocumentsAlone)
{
    const auto size = static_cast<int>(orvane::RtfText::maximumSize);
    // The binary part is announced as longer than the rest, so the size has to be exact.
    QByteArray document("{\\rtf1 a\\bin" + QByteArray::number(size) + " ");
    document.resize(size, 'x');
    EXPECT_EQ(textOf(document), QStringLiteral("a"));
    EXPECT_FALSE(textOf(document + 'x'));
}

} // namespace
