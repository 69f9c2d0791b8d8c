#include "Platform/DefaultsStore.h"

#include <cmath>

namespace orvane {

std::optional<QString> DefaultsStore::string(const QString& key) const
{
    const QVariant value = object(key);
    if (value.typeId() != QMetaType::QString)
        return std::nullopt;
    return value.toString();
}

bool DefaultsStore::boolean(const QString& key) const
{
    const QVariant value = object(key);
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool();
    case QMetaType::Int:
    case QMetaType::LongLong:
        return value.toLongLong() != 0;
    case QMetaType::Double:
        return value.toDouble() != 0;
    case QMetaType::QString: {
        const QString text = value.toString();
        return text.compare(QLatin1String("yes"), Qt::CaseInsensitive) == 0 ||
               text.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0 || text == QLatin1String("1");
    }
    default:
        return false;
    }
}

qint64 DefaultsStore::integer(const QString& key) const
{
    const QVariant value = object(key);
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool() ? 1 : 0;
    case QMetaType::Int:
    case QMetaType::LongLong:
        return value.toLongLong();
    case QMetaType::Double: {
        const double number = value.toDouble();
        constexpr double limit = 9223372036854775808.0; // 2^63: a cast beyond it is undefined
        return std::isfinite(number) && number >= -limit && number < limit ? static_cast<qint64>(number) : 0;
    }
    default:
        return 0;
    }
}

std::optional<QByteArray> DefaultsStore::data(const QString& key) const
{
    const QVariant value = object(key);
    if (value.typeId() != QMetaType::QByteArray)
        return std::nullopt;
    return value.toByteArray();
}

} // namespace orvane
