// The meaning of RTF's control words for the text alone.
#pragma once

#include <QByteArrayView>

namespace orvane {

enum class RtfMeaning {
    none, // changes the look only, or is unknown
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
    /// For `character` the character, for `fixedCodePage` the number.
    int value = 0;
};

RtfWord rtfWord(QByteArrayView name);

/// Returns the code page of a font's character set; 0 for the document's own.
int rtfCodePage(int characterSet);

/// The character set of fonts that have pictures in place of letters.
inline constexpr int rtfSymbolCharacterSet = 2;

/// Returns the character of a byte in such a font for the usual bullets; else its place in the private area.
char16_t rtfSymbol(unsigned char byte);

} // namespace orvane
