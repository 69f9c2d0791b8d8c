// What the control words of RTF mean to a reader of the text alone.
#pragma once

#include <QByteArrayView>

namespace orvane {

enum class RtfMeaning {
    none, // looks, or unknown
    // characters
    character,
    paragraphEnd,
    cellEnd,
    rowEnd,
    unicode,
    // the state of the text
    hidden,
    plain,
    fallbackLength,
    // encodings
    codePage,
    fixedCodePage,
    defaultFont,
    font,
    fontCharacterSet,
    fontCodePage,
    // groups
    fontTable,
    skipped,
    alternatives,
    unicodeAlternative,
    object,
    objectResult,
    nestedRow,
};

struct RtfWord {
    RtfMeaning meaning = RtfMeaning::none;
    /// Of `character` the character, of `fixedCodePage` the number.
    int value = 0;
};

RtfWord rtfWord(QByteArrayView name);

/// The code page of a font's character set; 0 for the document's own.
int rtfCodePage(int characterSet);

/// The character set of fonts that hold pictures in place of letters.
inline constexpr int rtfSymbolCharacterSet = 2;

/// What a byte shows in such a font, as far as the usual bullets go; else its place in the private area.
char16_t rtfSymbol(unsigned char byte);

} // namespace orvane
