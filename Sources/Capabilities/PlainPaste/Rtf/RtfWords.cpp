#include "Capabilities/PlainPaste/Rtf/RtfWords.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace orvane {

namespace {

struct Entry {
    std::string_view name;
    RtfWord word;
};

using enum RtfMeaning;

/// Sorted by their bytes.
constexpr std::array entries{
    Entry{"aftncn", {skipped}},
    Entry{"aftnsep", {skipped}},
    Entry{"aftnsepc", {skipped}},
    Entry{"annotation", {skipped}},
    Entry{"ansi", {fixedCodePage, 1252}},
    Entry{"ansicpg", {codePage}},
    Entry{"atnauthor", {skipped}},
    Entry{"atndate", {skipped}},
    Entry{"atnid", {skipped}},
    Entry{"atnref", {skipped}},
    Entry{"atntime", {skipped}},
    Entry{"author", {skipped}},
    Entry{"bkmkend", {skipped}},
    Entry{"bkmkstart", {skipped}},
    Entry{"bullet", {character, 0x2022}},
    Entry{"buptim", {skipped}},
    Entry{"category", {skipped}},
    Entry{"cell", {cellEnd}},
    Entry{"colortbl", {skipped}},
    Entry{"column", {paragraphEnd}},
    Entry{"comment", {skipped}},
    Entry{"company", {skipped}},
    Entry{"cpg", {fontCodePage}},
    Entry{"creatim", {skipped}},
    Entry{"deff", {defaultFont}},
    Entry{"doccomm", {skipped}},
    Entry{"emdash", {character, 0x2014}},
    Entry{"emspace", {character, 0x2003}},
    Entry{"endash", {character, 0x2013}},
    Entry{"enspace", {character, 0x2002}},
    Entry{"f", {font}},
    Entry{"falt", {skipped}},
    Entry{"fcharset", {fontCharacterSet}},
    Entry{"filetbl", {skipped}},
    Entry{"fldinst", {skipped}},
    Entry{"fonttbl", {fontTable}},
    Entry{"footer", {skipped}},
    Entry{"footerf", {skipped}},
    Entry{"footerl", {skipped}},
    Entry{"footerr", {skipped}},
    Entry{"footnote", {skipped}},
    Entry{"formfield", {skipped}},
    Entry{"ftncn", {skipped}},
    Entry{"ftnsep", {skipped}},
    Entry{"ftnsepc", {skipped}},
    Entry{"generator", {skipped}},
    Entry{"header", {skipped}},
    Entry{"headerf", {skipped}},
    Entry{"headerl", {skipped}},
    Entry{"headerr", {skipped}},
    Entry{"hlinkbase", {skipped}},
    Entry{"info", {skipped}},
    Entry{"keywords", {skipped}},
    Entry{"ldblquote", {character, 0x201C}},
    Entry{"line", {paragraphEnd}},
    Entry{"listoverridetable", {skipped}},
    Entry{"listtable", {skipped}},
    Entry{"lquote", {character, 0x2018}},
    Entry{"ltrmark", {character, 0x200E}},
    Entry{"mac", {fixedCodePage, 10000}},
    Entry{"manager", {skipped}},
    Entry{"nestcell", {cellEnd}},
    Entry{"nestrow", {rowEnd}},
    Entry{"nesttableprops", {nestedRow}},
    Entry{"nonesttables", {skipped}},
    Entry{"nonshppict", {skipped}},
    Entry{"objdata", {skipped}},
    Entry{"object", {object}},
    Entry{"operator", {skipped}},
    Entry{"page", {paragraphEnd}},
    Entry{"panose", {skipped}},
    Entry{"par", {paragraphEnd}},
    Entry{"pc", {fixedCodePage, 437}},
    Entry{"pca", {fixedCodePage, 850}},
    Entry{"pict", {skipped}},
    Entry{"plain", {plain}},
    Entry{"pntxta", {skipped}},
    Entry{"pntxtb", {skipped}},
    Entry{"printim", {skipped}},
    Entry{"private", {skipped}},
    Entry{"qmspace", {character, 0x2005}},
    Entry{"rdblquote", {character, 0x201D}},
    Entry{"result", {objectResult}},
    Entry{"revtbl", {skipped}},
    Entry{"revtim", {skipped}},
    Entry{"row", {rowEnd}},
    Entry{"rquote", {character, 0x2019}},
    Entry{"rtlmark", {character, 0x200F}},
    Entry{"rxe", {skipped}},
    Entry{"sect", {paragraphEnd}},
    Entry{"shp", {skipped}},
    Entry{"stylesheet", {skipped}},
    Entry{"subject", {skipped}},
    Entry{"tab", {character, '\t'}},
    Entry{"tc", {skipped}},
    Entry{"tcn", {skipped}},
    Entry{"template", {skipped}},
    Entry{"title", {skipped}},
    Entry{"txe", {skipped}},
    Entry{"u", {unicode}},
    Entry{"uc", {fallbackLength}},
    Entry{"ud", {unicodeAlternative}},
    Entry{"upr", {alternatives}},
    Entry{"v", {hidden}},
    Entry{"xe", {skipped}},
    Entry{"zwbo", {character, 0x200B}},
    Entry{"zwj", {character, 0x200D}},
    Entry{"zwnj", {character, 0x200C}},
};
static_assert(std::ranges::is_sorted(entries, {}, &Entry::name));

struct CharacterSet {
    int number;
    int codePage;
};

constexpr std::array characterSets{
    CharacterSet{0, 1252},   CharacterSet{77, 10000}, CharacterSet{78, 932},   CharacterSet{80, 936},
    CharacterSet{81, 950},   CharacterSet{128, 932},  CharacterSet{129, 949},  CharacterSet{134, 936},
    CharacterSet{136, 950},  CharacterSet{161, 1253}, CharacterSet{162, 1254}, CharacterSet{163, 1258},
    CharacterSet{177, 1255}, CharacterSet{178, 1256}, CharacterSet{186, 1257}, CharacterSet{204, 1251},
    CharacterSet{222, 874},  CharacterSet{238, 1250}, CharacterSet{254, 437},  CharacterSet{255, 850},
};

} // namespace

RtfWord rtfWord(QByteArrayView name)
{
    const std::string_view wanted(name.data(), static_cast<std::size_t>(name.size()));
    const auto found = std::ranges::lower_bound(entries, wanted, {}, &Entry::name);
    return found != entries.end() && found->name == wanted ? found->word : RtfWord{};
}

int rtfCodePage(int characterSet)
{
    const auto found = std::ranges::find(characterSets, characterSet, &CharacterSet::number);
    return found != characterSets.end() ? found->codePage : 0;
}

char16_t rtfSymbol(unsigned char byte)
{
    switch (byte) {
    case '\t':
    case ' ':
        return byte;
    case 0xB7: // in Symbol
    case 0x6C: // in Wingdings
        return u'\u2022';
    case 0xA7:
        return u'\u25AA';
    case 0xD8:
        return u'\u27A2';
    case 0xFC:
        return u'\u2713';
    default:
        return static_cast<char16_t>(0xF000 + byte);
    }
}

} // namespace orvane
