#include "Capabilities/PlainPaste/Html/HtmlCharacters.h"

#include "Capabilities/PlainPaste/Html/HtmlCharacterNames.h"
#include "Capabilities/PlainPaste/Text/CodePage.h"

#include <QByteArray>

#include <algorithm>

namespace orvane::HtmlCharacters {

namespace {

constexpr int windowsLatin = 1252;
/// No name and no meaningful number is longer.
constexpr qsizetype longestReference = 32;

/// Numbers of control characters mean those of windows-1252, in which pages once wrote them.
char32_t meant(char32_t number)
{
    if (number >= 0x80 && number < 0xA0) {
        const char byte = static_cast<char>(number);
        return CodePage::numbered(windowsLatin).decode(QByteArrayView(&byte, 1)).at(0).unicode();
    }
    const bool isCharacter = number > 0 && number <= 0x10FFFF && (number < 0xD800 || number > 0xDFFF);
    return isCharacter ? number : char32_t{QChar::ReplacementCharacter};
}

std::optional<char32_t> numbered(QByteArrayView digits)
{
    const bool isHexadecimal = digits.startsWith('x') || digits.startsWith('X');
    if (isHexadecimal)
        digits = digits.sliced(1);
    const bool hasSign = digits.startsWith('+') || digits.startsWith('-');
    const bool hasSpace = digits.size() != digits.trimmed().size();
    bool isNumber = false;
    const quint64 number = digits.toByteArray().toULongLong(&isNumber, isHexadecimal ? 16 : 10);
    if (!isNumber || hasSign || hasSpace)
        return std::nullopt;
    return meant(static_cast<char32_t>(std::min<quint64>(number, 0x110000)));
}

std::optional<char32_t> referred(QByteArrayView name)
{
    if (name.startsWith('#'))
        return numbered(name.sliced(1));
    return HtmlCharacterNames::character(name);
}

} // namespace

QString decode(QByteArrayView utf8)
{
    QString text;
    qsizetype copied = 0;
    for (auto begin = utf8.indexOf('&'); begin >= 0; begin = utf8.indexOf('&', begin + 1)) {
        const QByteArrayView reference =
            utf8.sliced(begin + 1, std::min(longestReference, utf8.size() - begin - 1));
        const auto length = reference.indexOf(';');
        const auto character = length > 0 ? referred(reference.first(length)) : std::nullopt;
        if (!character)
            continue;
        text += QString::fromUtf8(utf8.sliced(copied, begin - copied));
        text += QString::fromUcs4(&*character, 1);
        copied = begin + length + 2;
        begin = copied - 1;
    }
    text += QString::fromUtf8(utf8.sliced(copied));
    return text;
}

} // namespace orvane::HtmlCharacters
