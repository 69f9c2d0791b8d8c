#include "OrvaneCore/Preferences/SettingsObject.h"

#include <cmath>
#include <limits>

namespace orvane {

void SettingsObject::load()
{
    QVariantMap defaults;
    for (const AnySetting* setting : m_settings)
        defaults.insert(setting->key(), setting->defaultValue());
    m_prefs.registerDefaults(defaults);
    for (AnySetting* setting : m_settings)
        setting->read(m_prefs);
}

namespace {

bool isNumber(const QVariant& value)
{
    const int type = value.typeId();
    return type == QMetaType::Double || type == QMetaType::Int || type == QMetaType::LongLong;
}

} // namespace

template <>
std::optional<bool> readSetting(const ScopedPreferences& prefs, const QString& key)
{
    const QVariant value = prefs.object(key);
    const int type = value.typeId();
    if (type != QMetaType::Bool && type != QMetaType::QString && !isNumber(value))
        return std::nullopt;
    return prefs.boolean(key);
}

template <>
std::optional<QString> readSetting(const ScopedPreferences& prefs, const QString& key)
{
    return prefs.string(key);
}

template <>
std::optional<double> readSetting(const ScopedPreferences& prefs, const QString& key)
{
    const QVariant value = prefs.object(key);
    return isNumber(value) ? std::optional(value.toDouble()) : std::nullopt;
}

template <>
std::optional<int> readSetting(const ScopedPreferences& prefs, const QString& key)
{
    const QVariant value = prefs.object(key);
    if (!isNumber(value))
        return std::nullopt;
    const double number = value.toDouble();
    const bool isWhole = std::trunc(number) == number;
    const bool fits = number >= std::numeric_limits<int>::min() && number <= std::numeric_limits<int>::max();
    return isWhole && fits ? std::optional(static_cast<int>(number)) : std::nullopt;
}

template <>
std::optional<QStringList> readSetting(const ScopedPreferences& prefs, const QString& key)
{
    const QVariant value = prefs.object(key);
    if (value.typeId() == QMetaType::QStringList)
        return value.toStringList();
    if (value.typeId() != QMetaType::QVariantList)
        return std::nullopt;
    QStringList strings;
    for (const QVariant& element : value.toList()) {
        if (element.typeId() != QMetaType::QString)
            return std::nullopt;
        strings.append(element.toString());
    }
    return strings;
}

} // namespace orvane
