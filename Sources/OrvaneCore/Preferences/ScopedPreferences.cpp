#include "OrvaneCore/Preferences/ScopedPreferences.h"

#include "Platform/DefaultsStore.h"

namespace orvane {

ScopedPreferences::ScopedPreferences(DefaultsStore& defaults, QString prefix)
    : m_defaults(&defaults), m_prefix(std::move(prefix))
{
}

QString ScopedPreferences::fullKey(const QString& key) const
{
    return m_prefix + QLatin1Char('.') + key;
}

void ScopedPreferences::registerDefaults(const QVariantMap& defaults) const
{
    QVariantMap scoped;
    for (auto it = defaults.begin(); it != defaults.end(); ++it)
        scoped.insert(fullKey(it.key()), it.value());
    m_defaults->registerDefaults(scoped);
}

std::optional<QString> ScopedPreferences::string(const QString& key) const
{
    return m_defaults->string(fullKey(key));
}

bool ScopedPreferences::boolean(const QString& key) const
{
    return m_defaults->boolean(fullKey(key));
}
qint64 ScopedPreferences::integer(const QString& key) const
{
    return m_defaults->integer(fullKey(key));
}

std::optional<QByteArray> ScopedPreferences::data(const QString& key) const
{
    return m_defaults->data(fullKey(key));
}

QVariant ScopedPreferences::object(const QString& key) const
{
    return m_defaults->object(fullKey(key));
}

void ScopedPreferences::set(const QVariant& value, const QString& key) const
{
    m_defaults->set(fullKey(key), value);
}

void ScopedPreferences::removeAll() const
{
    const QString scope = m_prefix + QLatin1Char('.');
    const QVariantMap all = m_defaults->dictionaryRepresentation();
    for (auto it = all.begin(); it != all.end(); ++it) {
        if (it.key().startsWith(scope))
            m_defaults->remove(it.key());
    }
}

} // namespace orvane
