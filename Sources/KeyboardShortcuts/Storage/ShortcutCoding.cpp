#include "KeyboardShortcuts/Storage/ShortcutCoding.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace orvane::KeyboardShortcuts {

namespace {

/// Nothing for a fraction, for a number beyond 64 bits, and for a value that isn't a number.
std::optional<std::int64_t> integer(const QJsonValue& value)
{
    const qint64 number = value.toInteger(0);
    // All of these give the fallback; a second fallback tells it from a real value.
    return number == value.toInteger(1) ? std::optional<std::int64_t>(number) : std::nullopt;
}

} // namespace

QString encode(const Shortcut& shortcut)
{
    return QStringLiteral("{\"carbonKeyCode\":%1,\"carbonModifiers\":%2}")
        .arg(shortcut.carbonKeyCode)
        .arg(shortcut.carbonModifiers);
}

std::optional<Shortcut> decode(const QString& text)
{
    const QJsonObject object = QJsonDocument::fromJson(text.toUtf8()).object();
    const auto keyCode = integer(object.value(QLatin1StringView("carbonKeyCode")));
    const auto modifiers = integer(object.value(QLatin1StringView("carbonModifiers")));
    return keyCode && modifiers ? std::optional(Shortcut(*keyCode, *modifiers)) : std::nullopt;
}

} // namespace orvane::KeyboardShortcuts
