#include "PlatformLinux/Defaults/DefaultsCoding.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QStringList>

#include <algorithm>
#include <cmath>

namespace orvane::defaultscoding {

namespace {

const QString dataTag = QStringLiteral("$data");

std::optional<QJsonValue> toJson(const QVariant& value, int depth);

std::optional<QJsonValue> listToJson(const QVariantList& list, int depth)
{
    if (depth >= maximumDepth)
        return std::nullopt;
    QJsonArray array;
    for (const QVariant& item : list) {
        const auto json = toJson(item, depth + 1);
        if (!json)
            return std::nullopt;
        array.append(*json);
    }
    return array;
}

std::optional<QJsonValue> mapToJson(const QVariantMap& map, int depth)
{
    if (depth >= maximumDepth)
        return std::nullopt;
    QJsonObject object;
    for (auto it = map.begin(); it != map.end(); ++it) {
        const auto json = toJson(it.value(), depth + 1);
        if (!json)
            return std::nullopt;
        object.insert(it.key(), *json);
    }
    return object;
}

std::optional<QJsonValue> toJson(const QVariant& value, int depth)
{
    switch (value.typeId()) {
    case QMetaType::UnknownType:
        return QJsonValue();
    case QMetaType::Bool:
        return value.toBool();
    case QMetaType::Int:
    case QMetaType::LongLong:
        return QJsonValue(value.toLongLong());
    case QMetaType::Double:
        return std::isfinite(value.toDouble()) ? std::optional<QJsonValue>(value.toDouble()) : std::nullopt;
    case QMetaType::QString:
        return value.toString();
    case QMetaType::QStringList:
        return QJsonArray::fromStringList(value.toStringList());
    case QMetaType::QByteArray:
        return QJsonObject{{dataTag, QString::fromLatin1(value.toByteArray().toBase64())}};
    case QMetaType::QVariantList:
        return listToJson(value.toList(), depth);
    case QMetaType::QVariantMap:
        return mapToJson(value.toMap(), depth);
    default:
        return std::nullopt;
    }
}

/// Returns the bytes, if the object is the form in which they are stored.
std::optional<QByteArray> bytesFrom(const QJsonObject& object)
{
    if (object.size() != 1 || !object.value(dataTag).isString())
        return std::nullopt;
    const auto bytes = QByteArray::fromBase64Encoding(object.value(dataTag).toString().toLatin1(),
                                                      QByteArray::AbortOnBase64DecodingErrors);
    return bytes ? std::optional(bytes.decoded) : std::nullopt;
}

} // namespace

std::optional<QJsonValue> toJson(const QVariant& value)
{
    return toJson(value, 0);
}

QVariant fromJson(const QJsonValue& value)
{
    switch (value.type()) {
    case QJsonValue::Null:
    case QJsonValue::Undefined:
        return {};
    case QJsonValue::Array: {
        QVariantList list;
        const QJsonArray array = value.toArray();
        for (const QJsonValue item : array)
            list.append(fromJson(item));
        return list;
    }
    case QJsonValue::Object: {
        const QJsonObject object = value.toObject();
        if (const auto bytes = bytesFrom(object))
            return *bytes;
        QVariantMap map;
        for (auto it = object.begin(); it != object.end(); ++it)
            map.insert(it.key(), fromJson(it.value()));
        return map;
    }
    default:
        return value.toVariant();
    }
}

Parsed parse(const QByteArray& text)
{
    if (text.size() > maximumBytes)
        return {std::nullopt, QStringLiteral("it is larger than %1 bytes").arg(maximumBytes)};
    if (text.trimmed().isEmpty())
        return {std::nullopt, QStringLiteral("it is empty")};
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text, &error);
    if (error.error != QJsonParseError::NoError) {
        const auto end = text.begin() + std::clamp<qsizetype>(error.offset, 0, text.size());
        return {std::nullopt, QStringLiteral("line %1: %2")
                                  .arg(std::count(text.begin(), end, '\n') + 1)
                                  .arg(error.errorString())};
    }
    if (!document.isObject())
        return {std::nullopt, QStringLiteral("it is not an object")};
    return {document.object(), {}};
}

} // namespace orvane::defaultscoding
