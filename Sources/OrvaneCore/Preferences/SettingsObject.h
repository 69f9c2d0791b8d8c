// The one pattern of every settings class: a table of keys over a capability's preferences. Enums that have a
// table of names are stored by name.
//
//     class LampSettings : public SettingsObject {
//     public:
//         explicit LampSettings(ScopedPreferences prefs) : SettingsObject(std::move(prefs)) { load(); }
//         Setting<bool> glow{*this, u"glow", true};
//     };
#pragma once

#include "OrvaneCore/Base/EnumNames.h"
#include "OrvaneCore/Base/Observable.h"
#include "OrvaneCore/Preferences/ScopedPreferences.h"

#include <QStringList>

#include <optional>

namespace orvane {

class SettingsObject;

/// The interface of a Setting for the object that holds it.
class AnySetting {
public:
    virtual ~AnySetting() = default;
    [[nodiscard]] virtual const QString& key() const = 0;
    [[nodiscard]] virtual QVariant defaultValue() const = 0;
    virtual void read(const ScopedPreferences& prefs) = 0;
};

/// Settings of one capability. Main thread. Constructors of derived classes end with `load()`.
class SettingsObject : public ObservableObject {
public:
    explicit SettingsObject(ScopedPreferences prefs) : m_prefs(std::move(prefs)) {}

    [[nodiscard]] const ScopedPreferences& prefs() const { return m_prefs; }

protected:
    /// Registers the defaults of all keys as one dictionary, then reads each property from the store.
    void load();

private:
    template <class T>
    friend class Setting;

    ScopedPreferences m_prefs;
    std::vector<AnySetting*> m_settings;
};

/// Reads a typed value: nothing when the store has none or one of another type.
template <class T>
std::optional<T> readSetting(const ScopedPreferences& prefs, const QString& key) = delete;
template <>
std::optional<bool> readSetting(const ScopedPreferences& prefs, const QString& key);
template <>
std::optional<QString> readSetting(const ScopedPreferences& prefs, const QString& key);
template <>
std::optional<double> readSetting(const ScopedPreferences& prefs, const QString& key);
template <>
std::optional<int> readSetting(const ScopedPreferences& prefs, const QString& key);
template <>
std::optional<QStringList> readSetting(const ScopedPreferences& prefs, const QString& key);

/// Returns nothing for an unknown name too.
template <NamedEnum Enum>
std::optional<Enum> readSetting(const ScopedPreferences& prefs, const QString& key)
{
    return fromRawValue<Enum>(readSetting<QString>(prefs, key).value_or(QString()));
}

/// Returns a value in the form in which the store keeps it.
template <class T>
QVariant storedForm(const T& value)
{
    if constexpr (NamedEnum<T>)
        return QString(rawValue(value));
    else
        return QVariant::fromValue(value);
}

/// One property: observable, and written through to the store at each set. Nothing is clamped. A value that
/// can't be read gives the default; the store keeps it until the next set.
template <class T>
class Setting : public Observable<T>, public AnySetting {
public:
    Setting(SettingsObject& owner, QStringView key, T defaultValue)
        : Observable<T>(defaultValue),
          m_owner(owner),
          m_key(key.toString()),
          m_default(std::move(defaultValue))
    {
        owner.m_settings.push_back(this);
    }

    void set(T value)
    {
        Observable<T>::set(std::move(value));
        m_owner.announceChange();
        // The present value is stored and not the argument: an observer may have set another one meanwhile.
        m_owner.prefs().set(storedForm(this->get()), m_key);
    }

    [[nodiscard]] const QString& key() const override { return m_key; }
    [[nodiscard]] QVariant defaultValue() const override { return storedForm(m_default); }
    void read(const ScopedPreferences& prefs) override
    {
        Observable<T>::set(readSetting<T>(prefs, m_key).value_or(m_default));
    }

private:
    SettingsObject& m_owner;
    QString m_key;
    T m_default;
};

} // namespace orvane
