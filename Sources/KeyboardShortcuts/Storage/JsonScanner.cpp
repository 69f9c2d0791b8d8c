#include "KeyboardShortcuts/Storage/JsonScanner.h"

#include <limits>

namespace orvane::KeyboardShortcuts {

namespace {

constexpr int maximumDepth = 64;
// Further from zero no text of digits could make up for it.
constexpr std::int64_t maximumExponent = 1'000'000'000'000'000;

bool isDigit(char16_t character)
{
    return character >= u'0' && character <= u'9';
}

std::optional<int> hexDigit(char16_t character)
{
    if (isDigit(character))
        return character - u'0';
    if (character >= u'a' && character <= u'f')
        return character - u'a' + 10;
    if (character >= u'A' && character <= u'F')
        return character - u'A' + 10;
    return std::nullopt;
}

} // namespace

/// The significand ends in no zero, so that a negative exponent means a fraction.
struct JsonScanner::Number {
    void append(int digit)
    {
        if (digit == 0) {
            if (significand != 0)
                ++zeros;
            return;
        }
        for (; zeros > 0 && !tooLong; --zeros)
            multiply();
        multiply();
        tooLong = tooLong || __builtin_add_overflow(significand, static_cast<unsigned>(digit), &significand);
    }

    std::optional<std::int64_t> integer()
    {
        if (significand == 0 && !tooLong)
            return 0;
        for (exponent += zeros; exponent > 0 && !tooLong; --exponent)
            multiply();
        constexpr auto most = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
        if (tooLong || exponent < 0 || significand > most + (negative ? 1 : 0))
            return std::nullopt;
        return static_cast<std::int64_t>(negative ? ~significand + 1 : significand);
    }

    bool negative = false;
    std::int64_t exponent = 0;

private:
    void multiply()
    {
        if (significand > std::numeric_limits<std::uint64_t>::max() / 10)
            tooLong = true;
        else
            significand *= 10;
    }

    std::uint64_t significand = 0;
    std::int64_t zeros = 0;
    bool tooLong = false;
};

void JsonScanner::skipSpace()
{
    while (peek() == u' ' || peek() == u'\t' || peek() == u'\n' || peek() == u'\r')
        m_rest = m_rest.mid(1);
}

char16_t JsonScanner::take()
{
    const char16_t character = peek();
    m_rest = m_rest.mid(1);
    return character;
}

bool JsonScanner::skip(char16_t character)
{
    skipSpace();
    if (m_rest.isEmpty() || peek() != character)
        return false;
    take();
    return true;
}

bool JsonScanner::atEnd()
{
    skipSpace();
    return m_rest.isEmpty();
}

std::optional<char16_t> JsonScanner::escaped()
{
    switch (take()) {
    case u'"':
        return u'"';
    case u'\\':
        return u'\\';
    case u'/':
        return u'/';
    case u'b':
        return u'\b';
    case u'f':
        return u'\f';
    case u'n':
        return u'\n';
    case u'r':
        return u'\r';
    case u't':
        return u'\t';
    case u'u': {
        int unit = 0;
        for (int i = 0; i < 4; ++i) {
            const auto digit = hexDigit(take());
            if (!digit)
                return std::nullopt;
            unit = unit * 16 + *digit;
        }
        return static_cast<char16_t>(unit);
    }
    default:
        return std::nullopt;
    }
}

std::optional<bool> JsonScanner::string(QStringView name)
{
    if (!skip(u'"'))
        return std::nullopt;
    bool isName = true;
    for (;;) {
        char16_t character = take();
        if (character == u'"')
            return isName && name.isEmpty();
        if (character < u' ') // the end too
            return std::nullopt;
        if (character == u'\\') {
            const auto meant = escaped();
            if (!meant)
                return std::nullopt;
            character = *meant;
        }
        isName = isName && !name.isEmpty() && name.front() == QChar(character);
        if (isName)
            name = name.mid(1);
    }
}

bool JsonScanner::digits(Number& number, bool behindPoint)
{
    if (!isDigit(peek()))
        return false;
    for (; isDigit(peek()); take()) {
        number.append(peek() - u'0');
        if (behindPoint)
            --number.exponent;
    }
    return true;
}

bool JsonScanner::exponent(Number& number)
{
    const bool isNegative = peek() == u'-';
    if (peek() == u'-' || peek() == u'+')
        take();
    if (!isDigit(peek()))
        return false;
    std::int64_t exponent = 0;
    for (; isDigit(peek()); take()) {
        if (exponent < maximumExponent)
            exponent = exponent * 10 + (peek() - u'0');
    }
    number.exponent += isNegative ? -exponent : exponent;
    return true;
}

std::optional<JsonScanner::Number> JsonScanner::number()
{
    skipSpace();
    Number result;
    if (peek() == u'-') {
        take();
        result.negative = true;
    }
    const bool startsWithZero = peek() == u'0';
    if (startsWithZero)
        take();
    else if (!digits(result, false))
        return std::nullopt;
    if (peek() == u'.') {
        take();
        if (!digits(result, true))
            return std::nullopt;
    }
    if (peek() == u'e' || peek() == u'E') {
        take();
        if (!exponent(result))
            return std::nullopt;
    }
    return result;
}

std::optional<std::int64_t> JsonScanner::integer()
{
    auto value = number();
    return value ? value->integer() : std::nullopt;
}

bool JsonScanner::word(QStringView literal)
{
    if (!m_rest.startsWith(literal))
        return false;
    m_rest = m_rest.mid(literal.size());
    return true;
}

bool JsonScanner::skipContainer(char16_t end, int depth)
{
    take();
    if (skip(end))
        return true;
    do {
        if (end == u'}' && (!string({}) || !skip(u':')))
            return false;
        if (!skipValue(depth + 1))
            return false;
    } while (skip(u','));
    return skip(end);
}

bool JsonScanner::skipValue(int depth)
{
    skipSpace();
    switch (peek()) {
    case u'{':
        return depth < maximumDepth && skipContainer(u'}', depth);
    case u'[':
        return depth < maximumDepth && skipContainer(u']', depth);
    case u'"':
        return string({}).has_value();
    case u't':
        return word(u"true");
    case u'f':
        return word(u"false");
    case u'n':
        return word(u"null");
    default:
        return number().has_value();
    }
}

} // namespace orvane::KeyboardShortcuts
