// One capability's part of the defaults store: its keys begin with the capability's id and a full stop.
//
// Holds no mutable state of its own; readers on other threads may use it freely.
#pragma once

#include <QString>
#include <QVariant>

#include <optional>

namespace orvane {

class DefaultsStore;

class ScopedPreferences {
public:
    /// The store must outlive this view.
    ScopedPreferences(DefaultsStore& defaults, QString prefix);

    [[nodiscard]] const QString& prefix() const { return m_prefix; }

    /// Registers defaults beneath the stored values, for this process only.
    void registerDefaults(const QVariantMap& defaults) const;

    [[nodiscard]] std::optional<QString> string(const QString& key) const;
    [[nodiscard]] bool boolean(const QString& key) const;
    [[nodiscard]] qint64 integer(const QString& key) const;
    [[nodiscard]] std::optional<QByteArray> data(const QString& key) const;
    [[nodiscard]] QVariant object(const QString& key) const;

    /// An invalid value removes the key; a registered default is in force again then.
    void set(const QVariant& value, const QString& key) const;
    /// Removes every stored key of this scope; registered defaults stay in force.
    void removeAll() const;

private:
    [[nodiscard]] QString fullKey(const QString& key) const;

    DefaultsStore* m_defaults;
    QString m_prefix;
};

} // namespace orvane
