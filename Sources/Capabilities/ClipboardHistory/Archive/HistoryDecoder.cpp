#include "Capabilities/ClipboardHistory/Archive/HistoryCodec.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>

namespace orvane::HistoryCodec {

namespace {

constexpr QLatin1StringView key(const char* name)
{
    return QLatin1StringView(name);
}

/// An element of the array, read field by field; it remembers if one was wrong.
class Element {
public:
    explicit Element(const QJsonValue& value) : m_isGood(value.isObject()), m_object(value.toObject()) {}

    [[nodiscard]] bool isGood() const { return m_isGood; }

    QJsonValue required(const char* name, QJsonValue::Type type)
    {
        QJsonValue value = m_object.value(key(name));
        m_isGood = m_isGood && value.type() == type;
        return value;
    }

    std::optional<QJsonValue> optional(const char* name, QJsonValue::Type type)
    {
        const QJsonValue value = m_object.value(key(name));
        if (value.isUndefined() || value.isNull())
            return std::nullopt;
        m_isGood = m_isGood && value.type() == type;
        return value;
    }

    std::optional<QString> optionalString(const char* name)
    {
        const auto value = optional(name, QJsonValue::String);
        return value ? std::optional(value->toString()) : std::nullopt;
    }

    template <typename T>
    T orBad(std::optional<T> value)
    {
        m_isGood = m_isGood && value.has_value();
        return value.value_or(T());
    }

private:
    bool m_isGood;
    QJsonObject m_object;
};

/// Accepts only the plain form of 36 characters; the toolkit would also accept braces and shorter forms.
std::optional<QUuid> uuid(const QString& text)
{
    if (text.size() != 36)
        return std::nullopt;
    for (qsizetype index = 0; index < text.size(); ++index) {
        const char16_t character = text[index].unicode();
        const bool isHyphenPlace = index == 8 || index == 13 || index == 18 || index == 23;
        const bool isDigit = (character >= u'0' && character <= u'9') ||
                             (character >= u'a' && character <= u'f') ||
                             (character >= u'A' && character <= u'F');
        if (isHyphenPlace ? character != u'-' : !isDigit)
            return std::nullopt;
    }
    return QUuid::fromString(text);
}

std::optional<ClipItem::Date> date(const QJsonValue& value)
{
    const double seconds = value.toDouble();
    return std::isfinite(seconds) ? std::optional(ClipItem::Date(seconds)) : std::nullopt;
}

std::optional<QStringList> strings(const QJsonArray& array)
{
    QStringList result;
    for (const QJsonValue value : array) {
        if (!value.isString())
            return std::nullopt;
        result.append(value.toString());
    }
    return result;
}

std::optional<ClipItem> item(const QJsonValue& value)
{
    Element element(value);
    ClipItem item;
    item.id = element.orBad(uuid(element.required("id", QJsonValue::String).toString()));
    item.kind =
        element.orBad(fromRawValue<ClipKind>(element.required("kind", QJsonValue::String).toString()));
    item.text = element.optionalString("text");
    item.imageFileName = element.optionalString("imageFileName");
    if (const auto paths = element.optional("filePaths", QJsonValue::Array))
        item.filePaths = element.orBad(strings(paths->toArray()));
    item.date = element.orBad(date(element.required("date", QJsonValue::Double)));
    item.pinned = element.required("pinned", QJsonValue::Bool).toBool();
    item.sourceApp = element.optionalString("sourceApp");
    return element.isGood() ? std::optional(item) : std::nullopt;
}

} // namespace

std::optional<QList<ClipItem>> decode(const QByteArray& json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (!document.isArray())
        return std::nullopt;
    QList<ClipItem> items;
    const QJsonArray array = document.array();
    items.reserve(array.size());
    for (const QJsonValue value : array) {
        std::optional<ClipItem> decoded = item(value);
        if (!decoded)
            return std::nullopt;
        items.append(*std::move(decoded));
    }
    return items;
}

} // namespace orvane::HistoryCodec
