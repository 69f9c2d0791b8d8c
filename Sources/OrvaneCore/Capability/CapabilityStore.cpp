#include "OrvaneCore/Capability/CapabilityStore.h"

#include "Platform/DefaultsStore.h"

#include <algorithm>

namespace orvane {

namespace {

const QString enabledKey = QStringLiteral("Orvane.enabledCapabilities");
const QString startModeKey = QStringLiteral("Orvane.capabilityStartModes");

} // namespace

QVariantMap CapabilityStore::dictionary(const QString& key, QMetaType::Type valueType) const
{
    const QVariant value = m_defaults.object(key);
    if (value.typeId() != QMetaType::QVariantMap)
        return {};
    const QVariantMap map = value.toMap();
    const bool ofOneType = std::all_of(
        map.cbegin(), map.cend(), [&](const QVariant& element) { return element.typeId() == valueType; });
    return ofOneType ? map : QVariantMap();
}

bool CapabilityStore::isEnabled(const CapabilityID& id) const
{
    return dictionary(enabledKey, QMetaType::Bool).value(id.rawValue).toBool();
}

void CapabilityStore::setEnabled(const CapabilityID& id, bool value)
{
    QVariantMap map = dictionary(enabledKey, QMetaType::Bool);
    map.insert(id.rawValue, value);
    m_defaults.set(enabledKey, map);
}

QSet<QString> CapabilityStore::enabledIDs() const
{
    QSet<QString> ids;
    const QVariantMap map = dictionary(enabledKey, QMetaType::Bool);
    for (auto it = map.begin(); it != map.end(); ++it) {
        if (it.value().toBool())
            ids.insert(it.key());
    }
    return ids;
}

CapabilityStartMode CapabilityStore::startMode(const CapabilityID& id) const
{
    const QString raw = dictionary(startModeKey, QMetaType::QString).value(id.rawValue).toString();
    return fromRawValue<CapabilityStartMode>(raw).value_or(CapabilityStartMode::automatic);
}

void CapabilityStore::setStartMode(const CapabilityID& id, CapabilityStartMode mode)
{
    QVariantMap map = dictionary(startModeKey, QMetaType::QString);
    map.insert(id.rawValue, QString(rawValue(mode)));
    m_defaults.set(startModeKey, map);
}

} // namespace orvane
