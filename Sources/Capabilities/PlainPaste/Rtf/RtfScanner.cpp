#include "Capabilities/PlainPaste/Rtf/RtfScanner.h"

#include <algorithm>
#include <limits>

namespace orvane {

namespace {

bool isLetter(char character)
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

std::optional<int> hexadecimalDigit(char character)
{
    if (isDigit(character))
        return character - '0';
    const auto lower = static_cast<char>(character | 0x20);
    if (lower >= 'a' && lower <= 'f')
        return lower - 'a' + 10;
    return std::nullopt;
}

} // namespace

std::optional<RtfToken> RtfScanner::next()
{
    while (!atEnd()) {
        const char character = m_document[m_at++];
        switch (character) {
        case '{':
            return RtfToken{RtfToken::Kind::groupBegin};
        case '}':
            return RtfToken{RtfToken::Kind::groupEnd};
        case '\\':
            if (atEnd())
                return std::nullopt;
            return control();
        case '\r':
        case '\n':
        case '\0':
            continue; // These only keep the file's lines short.
        default:
            return RtfToken{.kind = RtfToken::Kind::byte, .character = character};
        }
    }
    return std::nullopt;
}

RtfToken RtfScanner::control()
{
    const char character = m_document[m_at];
    if (isLetter(character))
        return word();
    ++m_at;
    if (character == '\'')
        return hexadecimal();
    if (character == '\r' && !atEnd() && m_document[m_at] == '\n')
        ++m_at;
    return {.kind = RtfToken::Kind::symbol, .character = character};
}

RtfToken RtfScanner::word()
{
    const auto begin = m_at;
    while (!atEnd() && isLetter(m_document[m_at]))
        ++m_at;
    RtfToken token{.kind = RtfToken::Kind::word, .name = m_document.sliced(begin, m_at - begin)};
    token.parameter = parameter();
    if (!atEnd() && m_document[m_at] == ' ')
        ++m_at;
    if (token.name == QByteArrayView("bin")) {
        const qsizetype size = std::max(0, token.parameter.value_or(0));
        m_at += std::min(size, m_document.size() - m_at);
        token.kind = RtfToken::Kind::binary;
    }
    return token;
}

std::optional<int> RtfScanner::parameter()
{
    const bool isNegative = !atEnd() && m_document[m_at] == '-';
    const qsizetype digits = isNegative ? m_at + 1 : m_at;
    if (digits >= m_document.size() || !isDigit(m_document[digits]))
        return std::nullopt;
    constexpr qint64 largest = std::numeric_limits<int>::max();
    qint64 value = 0;
    for (m_at = digits; !atEnd() && isDigit(m_document[m_at]); ++m_at)
        value = std::min(largest, value * 10 + (m_document[m_at] - '0'));
    return static_cast<int>(isNegative ? -value : value);
}

RtfToken RtfScanner::hexadecimal()
{
    // An early end of the document, or a stray apostrophe, must not take characters that aren't digits.
    int value = 0;
    for (int count = 0; count < 2 && !atEnd(); ++count) {
        const auto digit = hexadecimalDigit(m_document[m_at]);
        if (!digit)
            break;
        value = value * 16 + *digit;
        ++m_at;
    }
    return {.kind = RtfToken::Kind::byte, .character = static_cast<char>(value)};
}

} // namespace orvane
