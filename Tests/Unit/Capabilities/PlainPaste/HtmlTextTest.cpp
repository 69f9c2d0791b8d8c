#include "Capabilities/PlainPaste/Html/HtmlText.h"
#include "Capabilities/PlainPaste/Html/HtmlReader.h"

#include <QStringEncoder>
#include <QStringList>

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

QByteArray utf16(QStringConverter::Encoding encoding, QStringConverter::Flag flag)
{
    QStringEncoder encoder(encoding, flag);
    return encoder.encode(QStringLiteral("<b>Grüße</b> 😀"));
}

std::optional<QString> textOf(const QByteArray& document)
{
    return orvane::HtmlText::decode(document);
}

struct HtmlText : testing::TestWithParam<Sample> {};

TEST_P(HtmlText, GivesWhatAReaderSees)
{
    const auto text = textOf(GetParam().document);
    ASSERT_TRUE(text.has_value());
    EXPECT_EQ(text->toStdString(), GetParam().text.toStdString());
}

std::vector<Sample> shapesOfWriters()
{
    return {
        {"Browser",
         "<meta http-equiv=\"content-type\" content=\"text/html; charset=utf-8\"><b style=\"color: rgb(0, 0, "
         "0); "
         "white-space: normal; display: inline !important; float: none;\">Bold</b><span>&nbsp;and</span> not",
         QStringLiteral("Bold\u00A0and not")},
        {"BrowserWithAModernElementFirst",
         "<meta charset='utf-8'><section><h2>Title</h2><p>Text</p></section><!--EndFragment-->",
         QStringLiteral("Title\nText")},
        {"OnlineEditor",
         "<meta charset='utf-8'><b style=\"font-weight:normal;\" id=\"docs-internal-guid-1\"><p dir=\"ltr\">"
         "<span style=\"white-space:pre-wrap;\">One  two</span></p><br /><ul><li dir=\"ltr\" "
         "style=\"list-style-type:disc;\"><p dir=\"ltr\" "
         "role=\"presentation\"><span>Item</span></p></li></ul></b>",
         QStringLiteral("One  two\n\n• Item")},
        {"WordProcessor",
         "<html "
         "xmlns:o=\"urn:schemas-microsoft-com:office:office\"\r\nxmlns=\"http://www.w3.org/TR/REC-html40\">"
         "\r\n\r\n<head>\r\n<meta http-equiv=Content-Type content=\"text/html; "
         "charset=utf-8\">\r\n<title>No</title>"
         "\r\n<!--[if gte mso 9]><xml>\r\n <o:OfficeDocumentSettings>no</o:OfficeDocumentSettings>\r\n</xml>"
         "<![endif]-->\r\n<style>\r\n<!--\r\n p.MsoNormal {margin:0cm;}\r\n-->\r\n</style>\r\n</head>\r\n\r\n"
         "<body lang=EN-US style='tab-interval:36.0pt'>\r\n<!--StartFragment-->\r\n\r\n<p class=MsoNormal>"
         "<b>First\r\nline</b><o:p></o:p></p>\r\n\r\n<p class=MsoListParagraph><![if !supportLists]><span>1."
         "<span>&nbsp;&nbsp; </span></span><![endif]>Item<span style='mso-hide:all'>no</span></p>\r\n\r\n"
         "<!--EndFragment-->\r\n</body>\r\n\r\n</html>\r\n",
         QStringLiteral("First line\n1.\u00A0\u00A0 Item")},
        {"OfficeSuite",
         "<!DOCTYPE html PUBLIC \"-//W3C//DTD HTML 4.01 Transitional//EN\">\n<html>\n<head>\n\t<meta "
         "http-equiv="
         "\"content-type\" content=\"text/html; charset=utf-8\"/>\n\t<title></title>\n\t<style "
         "type=\"text/css\">\n"
         "\t\tp { color: #000000 }\n\t</style>\n</head>\n<body lang=\"de-DE\">\n<p style=\"margin-bottom: "
         "0cm\">\n"
         "<b>Größe</b></p>\n<p><br/>\n<br/>\n\n</p>\n<p>Ende</p>\n</body>\n</html>",
         QStringLiteral("Größe\n\n\nEnde")},
        {"Spreadsheet",
         "<table cellspacing=\"0\" border=\"0\">\n\t<colgroup width=\"85\"></colgroup>\n\t<tr>\n\t\t<td "
         "height=\"17\" "
         "align=\"left\"><b>a</b></td>\n\t\t<td "
         "sdval=\"1\">1</td>\n\t</tr>\n\t<tr>\n\t\t<td><br></td>\n\t\t<td>2"
         "</td>\n\t</tr>\n</table>",
         QStringLiteral("a\t1\n\t2")},
        {"CodeEditor",
         "<meta charset='utf-8'><div style=\"white-space: pre;\"><div><span>if (a) {</span></div><div><span>"
         "    b();</span></div><br><div>}</div></div>",
         QStringLiteral("if (a) {\n    b();\n\n}")},
        {"TabOfAnEditor", "a<span class=\"tab\" style=\"white-space:pre\">\t</span>b",
         QStringLiteral("a\tb")},
    };
}

std::vector<Sample> layouts()
{
    return {
        {"Spaces", " \n a \t\r\n b <i> c </i> d ", QStringLiteral("a b c d")},
        {"SpaceBetweenElements", "<b>a</b> <b>b</b>\n<b>c</b>", QStringLiteral("a b c")},
        {"SpacesAtTheEdgesOfBlocks", "<div> a </div> <div> b </div>", QStringLiteral("a\nb")},
        {"NoBreakSpaces", "a&nbsp; &nbsp;b", QStringLiteral("a\u00A0 \u00A0b")},
        {"Blocks", "<h1>a</h1><p>b<p>c<div>d<div>e</div>f</div>g", QStringLiteral("a\nb\nc\nd\ne\nf\ng")},
        {"LineBreaks", "a<br>b<br/><br>c", QStringLiteral("a\nb\n\nc")},
        {"LineBreakAtTheEndOfABlock", "<div>a<br></div><div>b</div>", QStringLiteral("a\nb")},
        {"EmptyLine", "<div>a</div><div><br></div><div>b</div>", QStringLiteral("a\n\nb")},
        {"LineBreaksAtTheEnd", "<p>a</p><br><br>", QStringLiteral("a")},
        {"EmptyBlocks", "<div></div><div><p></p>a</div><div></div>b", QStringLiteral("a\nb")},
        {"Rule", "a<hr>b", QStringLiteral("a\nb")},
        {"Preformatted", "a<pre>\n  b\n\n\tc\n</pre>d", QStringLiteral("a\n  b\n\n\tc\nd")},
        {"KeptByStyle", "<p style=\"white-space: pre-wrap\">a  b\nc</p>", QStringLiteral("a  b\nc")},
        {"LineEndsKeptByStyle", "<p style=\"white-space:pre-line\">a  b\n c</p>", QStringLiteral("a b\nc")},
        {"CollapsedInPreformatted", "<pre>a  <span style='white-space:normal'>b  c</span></pre>",
         QStringLiteral("a  b c")},
        {"DisplayByStyle", R"(a<span style="display:block">b</span>c<div style="display:inline">d</div>e)",
         QStringLiteral("a\nb\ncde")},
        {"List", "<ul><li>a<li>b</ul>c", QStringLiteral("• a\n• b\nc")},
        {"OrderedList", "<ol start=3><li>a</li><li value=7>b</li><li>c</li></ol>",
         QStringLiteral("3. a\n7. b\n8. c")},
        {"NestedLists", "<ol><li>a<ul><li>b</li></ul></li><li>c</li></ol>",
         QStringLiteral("1. a\n\t• b\n2. c")},
        {"ListWithoutMarks", "<ul style=\"list-style: none\"><li>a<ul><li>b</ul></ul>",
         QStringLiteral("a\n\t• b")},
        {"ItemOfParagraphs", "<ul><li><p>a</p><p>b</p></li><li></li></ul>", QStringLiteral("• a\nb")},
        {"ItemWithoutList", "<li>a</li>", QStringLiteral("• a")},
        {"LargestNumber", "<ol start=2147483647><li>a<li>b</ol>",
         QStringLiteral("2147483647. a\n2147483647. b")},
        {"Definitions", "<dl><dt>a</dt><dd>b</dd></dl>", QStringLiteral("a\nb")},
        {"Table", "<table><caption>t</caption><thead><tr><th>a<th>b<tbody><tr><td>c<td>d</table>e",
         QStringLiteral("t\na\tb\nc\td\ne")},
        {"CellsOfParagraphs", "<table><tr><td><p>a</p></td><td><p>b</p><p>c</p></td></tr></table>",
         QStringLiteral("a\tb\nc")},
        {"EmptyCells", "<table><tr><td>a</td></tr><tr><td></td><td> b </td><td></td></tr><tr><td>c</table>",
         QStringLiteral("a\n\tb\t\nc")},
        {"TableInACell",
         "<table><tr><td>a<table><tr><td>b</td><td>c</td></tr></table></td><td>d</td></tr></table>",
         QStringLiteral("a\nb\tc\td")},
    };
}

std::vector<Sample> unseenAndEncodings()
{
    return {
        {"ScriptAndStyle", "a<script>if (1 < 2) document.write('<b>no</b>')</script><style>b{}</style>b",
         QStringLiteral("ab")},
        {"Head", "<html><head><title>no</title><base href=x></head><body>a</body></html>",
         QStringLiteral("a")},
        {"HiddenAttribute", "a<p hidden>no<b>no</b></p>b", QStringLiteral("ab")},
        {"DisplayNone", "a<span style='color:red; DISPLAY : None !important'>no<br></span>b",
         QStringLiteral("ab")},
        {"HiddenRowsAndLists",
         "<table><tr style='display:none'><td>x<td>y</tr><tr><td>a<td hidden>n<td>b</table>"
         "<ol style='display:none'><li>n</ol><ol><li>c</ol>",
         QStringLiteral("a\tb\n1. c")},
        {"Invisible", "<p style='visibility:hidden'>no<i style='visibility:visible'>yes</i></p>",
         QStringLiteral("yes")},
        {"Comments", "a<!-- no -->b<!--[if !mso]><!-->c<!--<![endif]-->", QStringLiteral("abc")},
        {"Fallbacks",
         "a<noscript>no</noscript><iframe>no</iframe><object>no</object><video>no</video>"
         "<template>no</template><svg><text>no</text></svg>b",
         QStringLiteral("ab")},
        {"PictureHasNoText", "a<img src='file:///etc/passwd' alt='no'>b", QStringLiteral("ab")},
        {"WhatClosesItselfHidesNothing", "a<script src=x /><svg/><title/>b", QStringLiteral("ab")},
        {"RawTextEndsAtItsOwnTag", "<script>'</scripts></b>'</SCRIPT >a<style></style>b",
         QStringLiteral("ab")},
        {"TextInATextArea", "<textarea>\na <b>\n&lt;</textarea>", QStringLiteral("a <b>\n<")},
        {"Dialog", "<dialog>no</dialog><dialog open>yes</dialog>", QStringLiteral("yes")},
        {"Ruby", "<ruby>漢<rp>(</rp><rt>kan</rt><rp>)</rp></ruby>", QStringLiteral("漢kan")},

        {"Entities", "&lt;b&gt; &amp; &quot;&apos; &eacute;&euro;&hellip; &#8364;&#x20AC; &copy;",
         QStringLiteral("<b> & \"' é€… €€ ©")},
        {"EntityOfWindows", "&#147;a&#148; &#150;", QStringLiteral("“a” –")},
        {"EntityBeyondUnicode", "a&#x1F600;b", QStringLiteral("a😀b")},
        {"NoEntity", "a & b &nothing; c&d", QStringLiteral("a & b &nothing; c&d")},
        {"SoftHyphen", "Zu&shy;cker", QStringLiteral("Zucker")},

        {"Utf8", "<b>Grüße</b> 😀", QStringLiteral("Grüße 😀")},
        {"Utf8Mark", "\xEF\xBB\xBF<b>ü</b>", QStringLiteral("ü")},
        {"Utf16LittleEndian", utf16(QStringConverter::Utf16LE, QStringConverter::Flag::WriteBom),
         QStringLiteral("Grüße 😀")},
        {"Utf16BigEndian", utf16(QStringConverter::Utf16BE, QStringConverter::Flag::WriteBom),
         QStringLiteral("Grüße 😀")},
        {"Utf16WithoutMark", utf16(QStringConverter::Utf16LE, QStringConverter::Flag::Default),
         QStringLiteral("Grüße 😀")},
        {"DeclaredEncoding", "<meta charset=\"windows-1251\">\xCF\xF0\xE8", QStringLiteral("При")},
        {"DeclaredEncodingInContent",
         "<META HTTP-EQUIV='Content-Type' CONTENT='text/html; charset=Shift_JIS'>\x93\xFA\x96\x7B",
         QStringLiteral("日本")},
        {"DeclaredLatinIsWindows", "<meta charset=iso-8859-1>\x80", QStringLiteral("€")},
        {"UnknownDeclaration", "<meta charset=\"../../x\"><meta charset=klingon>ü", QStringLiteral("ü")},
        {"DeclaredUtf16ThatIsnt", "<meta charset=utf-16>ü", QStringLiteral("ü")},
        {"NoUtf8", "<b>caf\xE9</b>", QStringLiteral("café")},

        {"PlainText", "just text", QStringLiteral("just text")},
        {"Nothing", "", QString()},
        {"OnlyElements", "<p><b></b></p><br>", QString()},
        {"Unclosed", "<div><b>a<i>b", QStringLiteral("ab")},
        {"Overlapping", "<b>a<i>b</b>c</i>d", QStringLiteral("abcd")},
        {"EndOfAnOverlappedElement", "<b>a<p>b</b>c</p>d", QStringLiteral("a\nbc\nd")},
        {"EndTagsStayInTheirCell", "<div><table><tr><td>a</div>b<td>c</table>d</div>e",
         QStringLiteral("ab\tc\nd\ne")},
        {"EmptyComment", "a<!-->b<!--->c", QStringLiteral("abc")},
        {"Declarations", "<?xml version='1.0'?><!DOCTYPE html>a<!x>b</ x>c<![CDATA[d]]>e",
         QStringLiteral("abce")},
        {"TextBehindTheBody", "<body><p>a</p></body></html>b", QStringLiteral("a\nb")},
        {"StrayEnds", "</p></div>a</b></tr></li>b", QStringLiteral("ab")},
        {"BrokenOffInATag", "a<b style=\"x", QStringLiteral("a")},
        {"LessThan", "1 < 2 <3", QStringLiteral("1 < 2 <3")},
        {"Zeros", QByteArray("a\0b<\0b>c", 8), QStringLiteral("abc")},
        {"UnknownElements", "<x-card>a<o:p>b</o:p></x-card>", QStringLiteral("ab")},
    };
}

std::string sampleName(const testing::TestParamInfo<Sample>& sample)
{
    return sample.param.name;
}

INSTANTIATE_TEST_SUITE_P(Writers, HtmlText, testing::ValuesIn(shapesOfWriters()), sampleName);
INSTANTIATE_TEST_SUITE_P(Layouts, HtmlText, testing::ValuesIn(layouts()), sampleName);
INSTANTIATE_TEST_SUITE_P(Samples, HtmlText, testing::ValuesIn(unseenAndEncodings()), sampleName);

QByteArray nested(int depth)
{
    return QByteArray("<div>").repeated(depth) + "a";
}

TEST(HtmlTextDepth, WhatIsNestedTooDeepIsFlattened)
{
    constexpr int depth = int{orvane::HtmlReader::maximumDepth};
    EXPECT_EQ(textOf(nested(depth)), QStringLiteral("a"));
    EXPECT_EQ(textOf(nested(depth + 1)), QStringLiteral("a"));
    EXPECT_EQ(textOf(nested(100'000)), QStringLiteral("a"));
}

TEST(HtmlTextDepth, WhatIsFlattenedKeepsItsBreaksAndIsClosedByItsOwnEnd)
{
    const QByteArray deep = QByteArray("<div>").repeated(int{orvane::HtmlReader::maximumDepth});
    EXPECT_EQ(textOf(deep + "a<p>b</p>c<br>d<b>e</b>f"), QStringLiteral("a\nb\nc\ndef"));
    EXPECT_EQ(textOf("<ul><li>" + deep + "<ul><li>a</li></ul>" + "b" +
                     QByteArray("</div>").repeated(int{orvane::HtmlReader::maximumDepth}) +
                     "</li><li>c</ul>"),
              QStringLiteral("• a\nb\n• c"));
}

TEST(HtmlTextDepth, WhatIsHiddenStaysHiddenHoweverDeepItIs)
{
    const QByteArray deep = QByteArray("<div>").repeated(int{orvane::HtmlReader::maximumDepth});
    EXPECT_EQ(textOf(deep + "a<style>b{}</style>c<div hidden>d<div>e</div>f</div>g"), QStringLiteral("acg"));
}

TEST(HtmlTextRefusal, LeavesLargerDocumentsAlone)
{
    QByteArray document("a<!--");
    document += QByteArray(orvane::HtmlText::maximumSize - document.size() - 4, ' ') + "-->b";
    EXPECT_EQ(textOf(document), QStringLiteral("ab"));
    EXPECT_FALSE(textOf(document + 'a'));
}

TEST(HtmlTextRefusal, GivesUpOnEndTagsThatAreLookedForInVainAllTheTime)
{
    EXPECT_FALSE(textOf(nested(500) + QByteArray("</i>").repeated(100'000)));
}

TEST(HtmlTextCost, ReadsALongDocument)
{
    QByteArray document;
    QStringList lines;
    for (int number = 0; number < 20'000; ++number) {
        document += "<p class=\"x\" style='margin: 0'><b>Line</b> " + QByteArray::number(number) + "</p>\n";
        lines.append(QStringLiteral("Line ") + QString::number(number));
    }
    EXPECT_EQ(textOf(document), lines.join(u'\n'));
}

TEST(HtmlTextCost, ReadsATagOfCountlessAttributes)
{
    QByteArray document("<b");
    for (int number = 0; number < 500'000; ++number)
        document += " a" + QByteArray::number(number) + "='>'";
    EXPECT_EQ(textOf(document + ">x</b>"), QStringLiteral("x"));
}

TEST(HtmlTextCost, ReadsATextBesideALargePicture)
{
    const QByteArray picture = QByteArray("ABCDEFGH").repeated(500'000);
    EXPECT_EQ(textOf("a <img src=\"data:image/png;base64," + picture + "==\"> b"), QStringLiteral("a b"));
}

} // namespace
