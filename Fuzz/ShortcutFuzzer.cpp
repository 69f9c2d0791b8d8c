// A stored text is a shortcut exactly when a second JSON parser finds both numbers in it, and the shortcut's
// own text reads as the same one.
#include "KeyboardShortcuts/Storage/ShortcutCoding.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cstdint>
#include <cstdlib>

using namespace orvane::KeyboardShortcuts;

namespace {

void require(bool holds)
{
    if (!holds)
        std::abort();
}

const QLatin1String keyCodeField("carbonKeyCode");
const QLatin1String modifiersField("carbonModifiers");

/// Excludes texts about which the two may differ: the other parser keeps the last of two equal names, accepts
/// escapes that JSON doesn't have, and nests deeper.
bool isPlain(const QByteArray& bytes)
{
    return bytes.count("carbonKeyCode") == 1 && bytes.count("carbonModifiers") == 1 &&
           std::ranges::none_of(bytes, [](char c) { return c == '\\' || (c >= 0 && c < ' '); }) &&
           bytes.count('{') + bytes.count('[') < 64 && !bytes.startsWith("\xEF\xBB\xBF");
}

/// Compares as exactly as a double can, which is all that the other parser has for some numbers.
bool agrees(const QJsonValue& other, std::int64_t value)
{
    return other.isDouble() && other.toDouble() == static_cast<double>(value);
}

bool isSurelyInteger(const QJsonValue& value)
{
    return value.isDouble() && value.toVariant().typeId() == QMetaType::LongLong;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const auto shortcut = decode(QString::fromUtf8(bytes));
    if (shortcut)
        require(decode(encode(*shortcut)) == shortcut);
    if (!isPlain(bytes))
        return 0;

    QJsonParseError error;
    const QJsonObject object = QJsonDocument::fromJson(bytes, &error).object();
    // A number under another name may well be too large for a double.
    if (error.error == QJsonParseError::IllegalUTF8String || error.error == QJsonParseError::IllegalNumber)
        return 0;
    const QJsonValue keyCode = object.value(keyCodeField);
    const QJsonValue modifiers = object.value(modifiersField);
    if (shortcut)
        require(agrees(keyCode, shortcut->carbonKeyCode) && agrees(modifiers, shortcut->carbonModifiers));
    else if (!bytes.contains('.') && !bytes.contains('-')) // a fraction may be too small for a double
        require(!isSurelyInteger(keyCode) || !isSurelyInteger(modifiers));
    return 0;
}
