#include "Capabilities/DailyFrame/Sources/JsonReading.h"

#include "Capabilities/DailyFrame/DailyFrameText.h"

#include <QJsonDocument>

namespace orvane {

namespace {

std::optional<QUrl> parsed(const QString& text)
{
    QUrl url(text, QUrl::StrictMode);
    if (!url.isValid())
        url = QUrl(text); // spaces and letters of other scripts are common in links
    if (!url.isValid() || url.host().isEmpty())
        return std::nullopt;
    return url;
}

} // namespace

JsonError::JsonError()
    : std::runtime_error(
          DailyFrameText::tr("The data couldn’t be read because it isn’t in the correct format.")
              .toStdString())
{
}

QJsonObject JsonReading::object(const QByteArray& text)
{
    const QJsonDocument document = QJsonDocument::fromJson(text);
    if (!document.isObject())
        throw JsonError();
    return document.object();
}

QJsonObject JsonReading::object(const QJsonValue& value)
{
    if (!value.isObject())
        throw JsonError();
    return value.toObject();
}

QJsonArray JsonReading::array(const QJsonValue& value)
{
    if (!value.isArray())
        throw JsonError();
    return value.toArray();
}

QString JsonReading::string(const QJsonValue& value)
{
    if (!value.isString())
        throw JsonError();
    return value.toString();
}

std::optional<QString> JsonReading::optionalString(const QJsonValue& value)
{
    if (value.isUndefined() || value.isNull())
        return std::nullopt;
    return string(value);
}

std::optional<QUrl> JsonReading::pictureURL(const QString& text)
{
    const auto url = parsed(text);
    return url && url->scheme() == QLatin1String("https") ? url : std::nullopt;
}

std::optional<QUrl> JsonReading::linkURL(const QString& text)
{
    const auto url = parsed(text);
    const bool isOfTheWeb =
        url && (url->scheme() == QLatin1String("https") || url->scheme() == QLatin1String("http"));
    return isOfTheWeb ? url : std::nullopt;
}

} // namespace orvane
