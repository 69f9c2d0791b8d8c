#include "PlatformLinux/Defaults/DefaultsCodec.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

#include <locale.h>

namespace orvane::defaultscodec {

namespace {

// The document is level 0; within the deepest list there may be bytes, which are an object in the text.
constexpr int maximumTextDepth = maximumDepth + 1;

/// Infinite or zero for a number beyond the range of doubles. The point is a full stop in every locale.
double nearestDouble(QByteArrayView number)
{
    static const locale_t plain = ::newlocale(LC_ALL_MASK, "C", nullptr);
    return ::strtod_l(number.toByteArray().constData(), nullptr, plain);
}

class Decoder {
public:
    explicit Decoder(const QByteArray& text) : m_text(text) {}

    /// False when the text is refused; then problem() tells why.
    bool decodeDocument(QVariantMap& values)
    {
        if (m_text.startsWith("\xef\xbb\xbf"))
            m_at = 3;
        skipSpace();
        if (atEnd())
            return refuse("it is empty");
        if (peek() != '{')
            return refuse("it is not an object");
        if (!decodeObject(values, 0))
            return false;
        skipSpace();
        return atEnd() || refuse("there is more after the end of the object");
    }

    QString problem() const
    {
        const auto line = std::count(m_text.begin(), m_text.begin() + m_at, '\n') + 1;
        return QStringLiteral("line %1: %2").arg(line).arg(QLatin1String(m_problem));
    }

private:
    bool atEnd() const { return m_at >= m_text.size(); }
    char peek() const { return atEnd() ? '\0' : m_text[m_at]; }
    bool refuse(const char* problem)
    {
        m_problem = problem;
        return false;
    }
    void skipSpace()
    {
        while (!atEnd() && (peek() == ' ' || peek() == '\n' || peek() == '\r' || peek() == '\t'))
            ++m_at;
    }
    bool take(char wanted)
    {
        if (atEnd() || peek() != wanted)
            return false;
        ++m_at;
        return true;
    }
    bool takeWord(QByteArrayView word)
    {
        if (!QByteArrayView(m_text).sliced(m_at).startsWith(word))
            return refuse("a value is expected");
        m_at += word.size();
        return true;
    }
    bool takeDigits()
    {
        const qsizetype start = m_at;
        while (!atEnd() && peek() >= '0' && peek() <= '9')
            ++m_at;
        return m_at > start;
    }

    bool decodeValue(QVariant& value, int depth)
    {
        if (++m_valueCount > maximumValues)
            return refuse("it holds too many values");
        switch (peek()) {
        case '{':
            return decodeMapOrTag(value, depth);
        case '[':
            return decodeList(value, depth);
        case '"': {
            QString string;
            if (!decodeString(string))
                return false;
            value = std::move(string);
            return true;
        }
        case 't':
            value = true;
            return takeWord("true");
        case 'f':
            value = false;
            return takeWord("false");
        case 'n':
            value = QVariant();
            return takeWord("null");
        default:
            return decodeNumber(value);
        }
    }

    bool decodeObject(QVariantMap& map, int depth)
    {
        if (depth > maximumTextDepth)
            return refuse("it is nested too deep");
        ++m_at; // the brace
        skipSpace();
        if (take('}'))
            return true;
        for (;;) {
            skipSpace();
            QString key;
            if (peek() != '"')
                return refuse("a key is expected");
            if (!decodeString(key))
                return false;
            skipSpace();
            if (!take(':'))
                return refuse("a colon is expected");
            skipSpace();
            QVariant value;
            if (!decodeValue(value, depth + 1))
                return false;
            map.insert(key, std::move(value));
            skipSpace();
            if (take('}'))
                return true;
            if (!take(','))
                return refuse("a comma or a closing brace is expected");
        }
    }

    bool decodeMapOrTag(QVariant& value, int depth)
    {
        QVariantMap map;
        if (!decodeObject(map, depth))
            return false;
        if (map.size() != 1 || !untag(value, map.firstKey(), map.first()))
            value = std::move(map);
        return true;
    }

    static bool untag(QVariant& value, const QString& tag, const QVariant& content)
    {
        if (tag.startsWith(QLatin1String("$$"))) {
            value = QVariantMap{{tag.sliced(1), content}};
            return true;
        }
        if (content.typeId() != QMetaType::QString)
            return false;
        const QString text = content.toString();
        if (tag == QLatin1String("$data")) {
            const auto bytes =
                QByteArray::fromBase64Encoding(text.toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
            // What doesn't come out the same again is somebody's map, not our bytes.
            if (!bytes || QLatin1String(bytes.decoded.toBase64()) != text)
                return false;
            value = bytes.decoded;
            return true;
        }
        if (tag != QLatin1String("$double"))
            return false;
        constexpr double infinity = std::numeric_limits<double>::infinity();
        if (text == QLatin1String("nan"))
            value = std::numeric_limits<double>::quiet_NaN();
        else if (text == QLatin1String("inf"))
            value = infinity;
        else if (text == QLatin1String("-inf"))
            value = -infinity;
        else
            return false;
        return true;
    }

    bool decodeList(QVariant& value, int depth)
    {
        if (depth > maximumTextDepth)
            return refuse("it is nested too deep");
        ++m_at; // the bracket
        QVariantList list;
        skipSpace();
        if (!take(']')) {
            for (;;) {
                skipSpace();
                QVariant item;
                if (!decodeValue(item, depth + 1))
                    return false;
                list.append(std::move(item));
                skipSpace();
                if (take(']'))
                    break;
                if (!take(','))
                    return refuse("a comma or a closing bracket is expected");
            }
        }
        value = std::move(list);
        return true;
    }

    bool decodeNumber(QVariant& value)
    {
        const qsizetype start = m_at;
        take('-');
        if (!take('0') && !takeDigits())
            return refuse("a value is expected");
        bool isWhole = true;
        if (take('.')) {
            isWhole = false;
            if (!takeDigits())
                return refuse("a digit is expected");
        }
        if (peek() == 'e' || peek() == 'E') {
            ++m_at;
            isWhole = false;
            if (!take('+'))
                take('-');
            if (!takeDigits())
                return refuse("a digit is expected");
        }
        const QByteArrayView number = QByteArrayView(m_text).sliced(start, m_at - start);
        bool fits = false;
        // Twenty characters hold every 64-bit number; the conversion of a longer one would be wasted.
        const qint64 whole = isWhole && number.size() <= 20 ? number.toLongLong(&fits) : 0;
        value = fits ? QVariant(whole) : QVariant(nearestDouble(number));
        return true;
    }

    bool decodeString(QString& string)
    {
        ++m_at; // the quote
        for (;;) {
            const qsizetype start = m_at;
            while (!atEnd() && peek() != '"' && peek() != '\\' && static_cast<unsigned char>(peek()) >= 0x20)
                ++m_at;
            appendUtf8(string, QByteArrayView(m_text).sliced(start, m_at - start));
            if (take('"'))
                return true;
            if (!take('\\'))
                return refuse(atEnd() ? "a text has no end" : "a text holds a raw control character");
            if (!decodeEscape(string))
                return false;
        }
    }

    /// The whole text has been found valid, and pieces between ASCII characters are too.
    static void appendUtf8(QString& string, QByteArrayView piece)
    {
        while (piece.startsWith("\xef\xbb\xbf")) { // or the conversion takes it for a byte order mark
            string += QChar(0xfeff);
            piece = piece.sliced(3);
        }
        string += QString::fromUtf8(piece);
    }

    bool decodeEscape(QString& string)
    {
        const char escape = peek();
        ++m_at;
        switch (escape) {
        case '"':
        case '\\':
        case '/':
            string += QLatin1Char(escape);
            return true;
        case 'b':
            string += u'\b';
            return true;
        case 'f':
            string += u'\f';
            return true;
        case 'n':
            string += u'\n';
            return true;
        case 'r':
            string += u'\r';
            return true;
        case 't':
            string += u'\t';
            return true;
        case 'u':
            break;
        default:
            return refuse("an unknown escape stands in a text");
        }
        ushort unit = 0;
        for (int digit = 0; digit < 4; ++digit, ++m_at) {
            const char c = peek();
            const int value = c >= '0' && c <= '9'   ? c - '0'
                              : c >= 'a' && c <= 'f' ? c - 'a' + 10
                              : c >= 'A' && c <= 'F' ? c - 'A' + 10
                                                     : -1;
            if (value < 0)
                return refuse("four hexadecimal digits are expected");
            unit = static_cast<ushort>(unit << 4 | value);
        }
        string += QChar(unit);
        return true;
    }

    const QByteArray& m_text;
    qsizetype m_at = 0;
    qsizetype m_valueCount = 0;
    const char* m_problem = "";
};

} // namespace

Decoded decode(const QByteArray& text)
{
    const auto refused = [](const QString& problem) { return Decoded{std::nullopt, problem}; };
    if (text.size() > maximumBytes)
        return refused(QStringLiteral("it is larger than %1 bytes").arg(maximumBytes));
    if (text.isEmpty())
        return refused(QStringLiteral("it is empty"));
    if (!text.isValidUtf8())
        return refused(QStringLiteral("it is not valid UTF-8"));
    Decoder decoder(text);
    QVariantMap values;
    if (!decoder.decodeDocument(values))
        return refused(decoder.problem());
    return {std::move(values), {}};
}

} // namespace orvane::defaultscodec
