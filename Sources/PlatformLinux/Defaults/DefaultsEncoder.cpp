#include "PlatformLinux/Defaults/DefaultsCodec.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace orvane::defaultscodec {

namespace {

class Encoder {
public:
    QByteArray text;
    qsizetype valueCount = 0;

    void appendString(QStringView string)
    {
        text += '"';
        qsizetype start = 0;
        for (qsizetype at = 0; at < string.size(); ++at) {
            const char16_t unit = string[at].unicode();
            if (QChar::isHighSurrogate(unit) && at + 1 < string.size() && string[at + 1].isLowSurrogate()) {
                ++at;
                continue;
            }
            // U+FEFF is dropped by decoders that take it for a byte order mark.
            const bool escaped = unit < 0x20 || unit == u'"' || unit == u'\\' || unit == 0x7f ||
                                 unit == 0xfeff || QChar::isSurrogate(unit);
            if (!escaped)
                continue;
            text += string.sliced(start, at - start).toUtf8();
            appendEscape(unit);
            start = at + 1;
        }
        text += string.sliced(start).toUtf8();
        text += '"';
    }

    void appendValue(const QVariant& value)
    {
        ++valueCount;
        if (isFull())
            return;
        switch (value.typeId()) {
        case QMetaType::UnknownType:
            text += "null";
            break;
        case QMetaType::Bool:
            text += value.toBool() ? "true" : "false";
            break;
        case QMetaType::LongLong:
            text += QByteArray::number(value.toLongLong());
            break;
        case QMetaType::Double:
            appendDouble(value.toDouble());
            break;
        case QMetaType::QString:
            appendString(*static_cast<const QString*>(value.constData()));
            break;
        case QMetaType::QByteArray:
            appendTag("$data", value.toByteArray().toBase64());
            break;
        case QMetaType::QVariantList:
            appendList(*static_cast<const QVariantList*>(value.constData()));
            break;
        case QMetaType::QVariantMap:
            appendMap(*static_cast<const QVariantMap*>(value.constData()));
            break;
        default:
            Q_UNREACHABLE(); // storable() lets nothing else through
        }
    }

    /// Ends the growth of a text that will be refused anyway.
    bool isFull() const { return text.size() > maximumBytes || valueCount > maximumValues; }

private:
    void appendEscape(char16_t unit)
    {
        switch (unit) {
        case u'"':
            text += "\\\"";
            break;
        case u'\\':
            text += "\\\\";
            break;
        case u'\n':
            text += "\\n";
            break;
        case u'\r':
            text += "\\r";
            break;
        case u'\t':
            text += "\\t";
            break;
        default:
            text += "\\u" + QByteArray::number(unit, 16).rightJustified(4, '0');
        }
    }

    void appendDouble(double number)
    {
        if (std::isnan(number))
            return appendTag("$double", "nan");
        if (std::isinf(number))
            return appendTag("$double", number < 0 ? "-inf" : "inf");
        char digits[32];
        const auto end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
        const QByteArray shortest(digits, end - digits);
        text += shortest;
        if (!shortest.contains('.') && !shortest.contains('e'))
            text += ".0";
    }

    void appendTag(const char* tag, const QByteArray& content)
    {
        text +=
            QByteArrayLiteral("{\"") + tag + QByteArrayLiteral("\": \"") + content + QByteArrayLiteral("\"}");
    }

    void appendList(const QVariantList& list)
    {
        text += '[';
        bool first = true;
        for (const QVariant& item : list) {
            if (isFull())
                return;
            if (!std::exchange(first, false))
                text += ", ";
            appendValue(item);
        }
        text += ']';
    }

    void appendMap(const QVariantMap& map)
    {
        text += '{';
        const bool looksLikeTag = map.size() == 1 && map.firstKey().startsWith(u'$');
        bool first = true;
        for (auto it = map.begin(); it != map.end(); ++it) {
            if (isFull())
                return;
            if (!std::exchange(first, false))
                text += ", ";
            appendString(looksLikeTag ? QString(u'$' + it.key()) : it.key());
            text += ": ";
            appendValue(it.value());
        }
        text += '}';
    }
};

std::optional<QVariant> storableWithin(const QVariant& value, int depth);

std::optional<QVariant> storableList(const QVariantList& list, int depth)
{
    if (depth >= maximumDepth)
        return std::nullopt;
    QVariantList result;
    result.reserve(list.size());
    for (const QVariant& item : list) {
        auto kept = storableWithin(item, depth + 1);
        if (!kept)
            return std::nullopt;
        result.append(std::move(*kept));
    }
    return QVariant(result);
}

std::optional<QVariant> storableMap(const QVariantMap& map, int depth)
{
    if (depth >= maximumDepth)
        return std::nullopt;
    QVariantMap result;
    for (auto it = map.begin(); it != map.end(); ++it) {
        auto kept = storableWithin(it.value(), depth + 1);
        if (!kept)
            return std::nullopt;
        result.insert(it.key(), std::move(*kept));
    }
    return QVariant(result);
}

std::optional<QVariant> storableWithin(const QVariant& value, int depth)
{
    switch (value.typeId()) {
    case QMetaType::UnknownType:
    case QMetaType::Bool:
    case QMetaType::LongLong:
    case QMetaType::Double:
    case QMetaType::QString:
    case QMetaType::QByteArray:
        return value;
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Long:
        return QVariant(value.toLongLong());
    case QMetaType::ULong:
    case QMetaType::ULongLong:
        if (value.toULongLong() > static_cast<quint64>(std::numeric_limits<qint64>::max()))
            return QVariant(static_cast<double>(value.toULongLong()));
        return QVariant(value.toLongLong());
    case QMetaType::Float:
        return QVariant(value.toDouble());
    case QMetaType::QStringList:
    case QMetaType::QVariantList:
        return storableList(value.toList(), depth);
    case QMetaType::QVariantHash:
    case QMetaType::QVariantMap:
        return storableMap(value.toMap(), depth);
    default:
        return std::nullopt;
    }
}

} // namespace

std::optional<QByteArray> encode(const QVariantMap& values)
{
    Encoder encoder;
    encoder.text = "{";
    for (auto it = values.begin(); it != values.end() && !encoder.isFull(); ++it) {
        encoder.text += it == values.begin() ? "\n  " : ",\n  ";
        encoder.appendString(it.key());
        encoder.text += ": ";
        encoder.appendValue(it.value());
    }
    encoder.text += "\n}\n";
    if (encoder.isFull())
        return std::nullopt;
    return encoder.text;
}

std::optional<QVariant> storable(const QVariant& value)
{
    return storableWithin(value, 0);
}

bool identical(const QVariant& left, const QVariant& right)
{
    if (left.typeId() != right.typeId())
        return false;
    Encoder leftText;
    Encoder rightText;
    leftText.appendValue(left);
    rightText.appendValue(right);
    return !leftText.isFull() && !rightText.isFull() && leftText.text == rightText.text;
}

} // namespace orvane::defaultscodec
