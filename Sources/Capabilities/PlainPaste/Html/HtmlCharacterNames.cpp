#include "Capabilities/PlainPaste/Html/HtmlCharacterNames.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace orvane::HtmlCharacterNames {

namespace {

constexpr std::size_t longestName = 8;

/// The name is stored in place and not by a pointer: a table of pointers would be written at every start,
/// when the program's addresses become known, even if the feature is off.
struct Named {
    char name[longestName + 1];
    char16_t character;

    [[nodiscard]] constexpr std::string_view view() const { return name; }
};

/// Sorted by the bytes of the names.
constexpr std::array names{
    Named{"AElig", 0x00C6},   Named{"Aacute", 0x00C1},  Named{"Acirc", 0x00C2},    Named{"Agrave", 0x00C0},
    Named{"Alpha", 0x0391},   Named{"Aring", 0x00C5},   Named{"Atilde", 0x00C3},   Named{"Auml", 0x00C4},
    Named{"Beta", 0x0392},    Named{"Ccedil", 0x00C7},  Named{"Chi", 0x03A7},      Named{"Dagger", 0x2021},
    Named{"Delta", 0x0394},   Named{"ETH", 0x00D0},     Named{"Eacute", 0x00C9},   Named{"Ecirc", 0x00CA},
    Named{"Egrave", 0x00C8},  Named{"Epsilon", 0x0395}, Named{"Eta", 0x0397},      Named{"Euml", 0x00CB},
    Named{"Gamma", 0x0393},   Named{"Iacute", 0x00CD},  Named{"Icirc", 0x00CE},    Named{"Igrave", 0x00CC},
    Named{"Iota", 0x0399},    Named{"Iuml", 0x00CF},    Named{"Kappa", 0x039A},    Named{"Lambda", 0x039B},
    Named{"Mu", 0x039C},      Named{"Ntilde", 0x00D1},  Named{"Nu", 0x039D},       Named{"OElig", 0x0152},
    Named{"Oacute", 0x00D3},  Named{"Ocirc", 0x00D4},   Named{"Ograve", 0x00D2},   Named{"Omega", 0x03A9},
    Named{"Omicron", 0x039F}, Named{"Oslash", 0x00D8},  Named{"Otilde", 0x00D5},   Named{"Ouml", 0x00D6},
    Named{"Phi", 0x03A6},     Named{"Pi", 0x03A0},      Named{"Prime", 0x2033},    Named{"Psi", 0x03A8},
    Named{"Rho", 0x03A1},     Named{"Scaron", 0x0160},  Named{"Sigma", 0x03A3},    Named{"THORN", 0x00DE},
    Named{"Tau", 0x03A4},     Named{"Theta", 0x0398},   Named{"Uacute", 0x00DA},   Named{"Ucirc", 0x00DB},
    Named{"Ugrave", 0x00D9},  Named{"Upsilon", 0x03A5}, Named{"Uuml", 0x00DC},     Named{"Xi", 0x039E},
    Named{"Yacute", 0x00DD},  Named{"Yuml", 0x0178},    Named{"Zeta", 0x0396},     Named{"aacute", 0x00E1},
    Named{"acirc", 0x00E2},   Named{"acute", 0x00B4},   Named{"aelig", 0x00E6},    Named{"agrave", 0x00E0},
    Named{"alefsym", 0x2135}, Named{"alpha", 0x03B1},   Named{"amp", 0x0026},      Named{"and", 0x2227},
    Named{"ang", 0x2220},     Named{"apos", 0x0027},    Named{"aring", 0x00E5},    Named{"asymp", 0x2248},
    Named{"atilde", 0x00E3},  Named{"auml", 0x00E4},    Named{"bdquo", 0x201E},    Named{"beta", 0x03B2},
    Named{"brvbar", 0x00A6},  Named{"bull", 0x2022},    Named{"cap", 0x2229},      Named{"ccedil", 0x00E7},
    Named{"cedil", 0x00B8},   Named{"cent", 0x00A2},    Named{"chi", 0x03C7},      Named{"circ", 0x02C6},
    Named{"clubs", 0x2663},   Named{"cong", 0x2245},    Named{"copy", 0x00A9},     Named{"crarr", 0x21B5},
    Named{"cup", 0x222A},     Named{"curren", 0x00A4},  Named{"dArr", 0x21D3},     Named{"dagger", 0x2020},
    Named{"darr", 0x2193},    Named{"deg", 0x00B0},     Named{"delta", 0x03B4},    Named{"diams", 0x2666},
    Named{"divide", 0x00F7},  Named{"eacute", 0x00E9},  Named{"ecirc", 0x00EA},    Named{"egrave", 0x00E8},
    Named{"empty", 0x2205},   Named{"emsp", 0x2003},    Named{"ensp", 0x2002},     Named{"epsilon", 0x03B5},
    Named{"equiv", 0x2261},   Named{"eta", 0x03B7},     Named{"eth", 0x00F0},      Named{"euml", 0x00EB},
    Named{"euro", 0x20AC},    Named{"exist", 0x2203},   Named{"fnof", 0x0192},     Named{"forall", 0x2200},
    Named{"frac12", 0x00BD},  Named{"frac14", 0x00BC},  Named{"frac34", 0x00BE},   Named{"frasl", 0x2044},
    Named{"gamma", 0x03B3},   Named{"ge", 0x2265},      Named{"gt", 0x003E},       Named{"hArr", 0x21D4},
    Named{"harr", 0x2194},    Named{"hearts", 0x2665},  Named{"hellip", 0x2026},   Named{"iacute", 0x00ED},
    Named{"icirc", 0x00EE},   Named{"iexcl", 0x00A1},   Named{"igrave", 0x00EC},   Named{"image", 0x2111},
    Named{"infin", 0x221E},   Named{"int", 0x222B},     Named{"iota", 0x03B9},     Named{"iquest", 0x00BF},
    Named{"isin", 0x2208},    Named{"iuml", 0x00EF},    Named{"kappa", 0x03BA},    Named{"lArr", 0x21D0},
    Named{"lambda", 0x03BB},  Named{"lang", 0x2329},    Named{"laquo", 0x00AB},    Named{"larr", 0x2190},
    Named{"lceil", 0x2308},   Named{"ldquo", 0x201C},   Named{"le", 0x2264},       Named{"lfloor", 0x230A},
    Named{"lowast", 0x2217},  Named{"loz", 0x25CA},     Named{"lrm", 0x200E},      Named{"lsaquo", 0x2039},
    Named{"lsquo", 0x2018},   Named{"lt", 0x003C},      Named{"macr", 0x00AF},     Named{"mdash", 0x2014},
    Named{"micro", 0x00B5},   Named{"middot", 0x00B7},  Named{"minus", 0x2212},    Named{"mu", 0x03BC},
    Named{"nabla", 0x2207},   Named{"nbsp", 0x00A0},    Named{"ndash", 0x2013},    Named{"ne", 0x2260},
    Named{"ni", 0x220B},      Named{"not", 0x00AC},     Named{"notin", 0x2209},    Named{"nsub", 0x2284},
    Named{"ntilde", 0x00F1},  Named{"nu", 0x03BD},      Named{"oacute", 0x00F3},   Named{"ocirc", 0x00F4},
    Named{"oelig", 0x0153},   Named{"ograve", 0x00F2},  Named{"oline", 0x203E},    Named{"omega", 0x03C9},
    Named{"omicron", 0x03BF}, Named{"oplus", 0x2295},   Named{"or", 0x2228},       Named{"ordf", 0x00AA},
    Named{"ordm", 0x00BA},    Named{"oslash", 0x00F8},  Named{"otilde", 0x00F5},   Named{"otimes", 0x2297},
    Named{"ouml", 0x00F6},    Named{"para", 0x00B6},    Named{"part", 0x2202},     Named{"permil", 0x2030},
    Named{"perp", 0x22A5},    Named{"phi", 0x03C6},     Named{"pi", 0x03C0},       Named{"piv", 0x03D6},
    Named{"plusmn", 0x00B1},  Named{"pound", 0x00A3},   Named{"prime", 0x2032},    Named{"prod", 0x220F},
    Named{"prop", 0x221D},    Named{"psi", 0x03C8},     Named{"quot", 0x0022},     Named{"rArr", 0x21D2},
    Named{"radic", 0x221A},   Named{"rang", 0x232A},    Named{"raquo", 0x00BB},    Named{"rarr", 0x2192},
    Named{"rceil", 0x2309},   Named{"rdquo", 0x201D},   Named{"real", 0x211C},     Named{"reg", 0x00AE},
    Named{"rfloor", 0x230B},  Named{"rho", 0x03C1},     Named{"rlm", 0x200F},      Named{"rsaquo", 0x203A},
    Named{"rsquo", 0x2019},   Named{"sbquo", 0x201A},   Named{"scaron", 0x0161},   Named{"sdot", 0x22C5},
    Named{"sect", 0x00A7},    Named{"shy", 0x00AD},     Named{"sigma", 0x03C3},    Named{"sigmaf", 0x03C2},
    Named{"sim", 0x223C},     Named{"spades", 0x2660},  Named{"sub", 0x2282},      Named{"sube", 0x2286},
    Named{"sum", 0x2211},     Named{"sup", 0x2283},     Named{"sup1", 0x00B9},     Named{"sup2", 0x00B2},
    Named{"sup3", 0x00B3},    Named{"supe", 0x2287},    Named{"szlig", 0x00DF},    Named{"tau", 0x03C4},
    Named{"there4", 0x2234},  Named{"theta", 0x03B8},   Named{"thetasym", 0x03D1}, Named{"thinsp", 0x2009},
    Named{"thorn", 0x00FE},   Named{"tilde", 0x02DC},   Named{"times", 0x00D7},    Named{"trade", 0x2122},
    Named{"uArr", 0x21D1},    Named{"uacute", 0x00FA},  Named{"uarr", 0x2191},     Named{"ucirc", 0x00FB},
    Named{"ugrave", 0x00F9},  Named{"uml", 0x00A8},     Named{"upsih", 0x03D2},    Named{"upsilon", 0x03C5},
    Named{"uuml", 0x00FC},    Named{"weierp", 0x2118},  Named{"xi", 0x03BE},       Named{"yacute", 0x00FD},
    Named{"yen", 0x00A5},     Named{"yuml", 0x00FF},    Named{"zeta", 0x03B6},     Named{"zwj", 0x200D},
    Named{"zwnj", 0x200C},
};
static_assert(std::ranges::is_sorted(names, {}, &Named::view));

} // namespace

std::optional<char16_t> character(QByteArrayView name)
{
    const std::string_view wanted(name.data(), static_cast<std::size_t>(name.size()));
    const auto found = std::ranges::lower_bound(names, wanted, {}, &Named::view);
    if (found == names.end() || found->view() != wanted)
        return std::nullopt;
    return found->character;
}

} // namespace orvane::HtmlCharacterNames
