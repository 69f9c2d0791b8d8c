// The user's defaults: one flat space of keys, with a domain of registered values beneath the stored ones.
//
// Values are bool, qint64 (and int), double, QString, QByteArray, QVariantList and QVariantMap of such.
// Reading may be done on any thread; writing on the main thread.
#pragma once

#include <QString>
#include <QVariant>

#include <optional>

namespace orvane {

class DefaultsStore {
public:
    virtual ~DefaultsStore() = default;

    /// Adds to the registration domain: in force for this process only, beneath every stored value.
    virtual void registerDefaults(const QVariantMap& defaults) = 0;

    /// The stored value, else the registered one, else an invalid variant.
    [[nodiscard]] virtual QVariant object(const QString& key) const = 0;

    /// The value is in force at once and on the disk soon after; an invalid one removes the key. Never waits
    /// for the disk. What can't be written is kept in memory, logged and tried again.
    virtual void set(const QString& key, const QVariant& value) = 0;

    /// Every key in force with its value, the registered ones included.
    [[nodiscard]] virtual QVariantMap dictionaryRepresentation() const = 0;

    void remove(const QString& key) { set(key, {}); }

    /// A string, or nothing where there is none or a value of another type.
    [[nodiscard]] std::optional<QString> string(const QString& key) const;
    /// A boolean; a number other than 0 and the strings "YES", "true" and "1" (in any case) are true.
    [[nodiscard]] bool boolean(const QString& key) const;
    /// A whole number; 0 where there is none. A fraction is cut off.
    [[nodiscard]] qint64 integer(const QString& key) const;
    [[nodiscard]] std::optional<QByteArray> data(const QString& key) const;
};

} // namespace orvane
