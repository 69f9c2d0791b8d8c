#include "KeyboardShortcuts/Storage/ShortcutCoding.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace orvane::KeyboardShortcuts {

namespace {

/// Nothing for a fraction, for what exceeds 64 bits, and for what is no number.
std::optional<std::int64_t> integer(const QJsonValue& value)
{
    const qint64 number = value.toInteger(0);
    // The fallback is taken for all of these; it is told from a true value by another one.
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
