// Reading of JSON with a fixed form: a value of another type is an error, and not a default.
#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QUrl>

#include <optional>
#include <stdexcept>

namespace orvane {

/// A text that isn't JSON, or not of the expected form. Its text is what a person reads.
class JsonError : public std::runtime_error {
public:
    JsonError();
};

namespace JsonReading {

[[nodiscard]] QJsonObject object(const QByteArray& text);
[[nodiscard]] QJsonObject object(const QJsonValue& value);
[[nodiscard]] QJsonArray array(const QJsonValue& value);
[[nodiscard]] QString string(const QJsonValue& value);
/// Nothing for a missing value and for null.
[[nodiscard]] std::optional<QString> optionalString(const QJsonValue& value);

/// Returns the address when the text is one of the web that is secure; pictures come from no other.
[[nodiscard]] std::optional<QUrl> pictureURL(const QString& text);
/// Returns the address when the text is one of the web; a person may open it in a browser.
[[nodiscard]] std::optional<QUrl> linkURL(const QString& text);

} // namespace JsonReading

} // namespace orvane
