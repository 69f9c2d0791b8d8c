#include "Capabilities/ClipboardHistory/Archive/HistoryCodec.h"

#include <charconv>

namespace orvane::HistoryCodec {

namespace {

void appendEscaped(QByteArray& out, char byte)
{
    switch (byte) {
    case '"':
        out += "\\\"";
        return;
    case '\\':
        out += "\\\\";
        return;
    case '/':
        out += "\\/";
        return;
    case '\b':
        out += "\\b";
        return;
    case '\f':
        out += "\\f";
        return;
    case '\n':
        out += "\\n";
        return;
    case '\r':
        out += "\\r";
        return;
    case '\t':
        out += "\\t";
        return;
    default:
        break;
    }
    if (static_cast<unsigned char>(byte) >= 0x20) {
        out += byte;
        return;
    }
    static constexpr char digits[] = "0123456789abcdef";
    out += "\\u00";
    out += digits[byte >> 4];
    out += digits[byte & 0xF];
}

void appendString(QByteArray& out, const QString& text)
{
    out += '"';
    for (const char byte : text.toUtf8())
        appendEscaped(out, byte);
    out += '"';
}

void appendKey(QByteArray& out, const char* key)
{
    out += out.endsWith('{') ? "\"" : ",\"";
    out += key;
    out += "\":";
}

void appendOptional(QByteArray& out, const char* key, const std::optional<QString>& text)
{
    if (!text)
        return;
    appendKey(out, key);
    appendString(out, *text);
}

/// Writes the shortest digits that read back as the same number, without an exponent.
void appendNumber(QByteArray& out, double number)
{
    // The longest double in this notation has 309 digits before the point, or 1,074 behind it.
    char digits[1100];
    const auto result = std::to_chars(std::begin(digits), std::end(digits), number, std::chars_format::fixed);
    out.append(digits, result.ptr - digits);
}

void appendItem(QByteArray& out, const ClipItem& item)
{
    out += '{';
    appendKey(out, "id");
    appendString(out, item.id.toString(QUuid::WithoutBraces).toUpper());
    appendKey(out, "kind");
    appendString(out, rawValue(item.kind));
    appendOptional(out, "text", item.text);
    appendOptional(out, "imageFileName", item.imageFileName);
    if (item.filePaths) {
        appendKey(out, "filePaths");
        out += '[';
        for (const QString& path : *item.filePaths) {
            if (!out.endsWith('['))
                out += ',';
            appendString(out, path);
        }
        out += ']';
    }
    appendKey(out, "date");
    appendNumber(out, item.date.count());
    appendKey(out, "pinned");
    out += item.pinned ? "true" : "false";
    appendOptional(out, "sourceApp", item.sourceApp);
    out += '}';
}

} // namespace

QByteArray encode(const QList<ClipItem>& items)
{
    QByteArray out("[");
    for (const ClipItem& item : items) {
        if (out.size() > 1)
            out += ',';
        appendItem(out, item);
    }
    out += ']';
    return out;
}

} // namespace orvane::HistoryCodec
