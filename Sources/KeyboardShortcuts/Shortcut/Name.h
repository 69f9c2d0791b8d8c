// The name under which a shortcut is stored. Main thread.
#pragma once

#include "KeyboardShortcuts/Shortcut/Shortcut.h"

#include <QHash>
#include <QMetaType>
#include <QString>

#include <optional>

namespace orvane::KeyboardShortcuts {

/// A name carries no state: make one wherever one is needed. Names with equal raw values are the same name,
/// whatever their defaults.
class Name {
public:
    /// Stores `initial` if nothing is stored under the name, not even the mark of a cleared one.
    explicit Name(QString rawValue, const std::optional<Shortcut>& initial = std::nullopt);

    [[nodiscard]] const QString& rawValue() const { return m_rawValue; }
    [[nodiscard]] const std::optional<Shortcut>& defaultShortcut() const { return m_defaultShortcut; }

    [[nodiscard]] std::optional<Shortcut> shortcut() const;
    void setShortcut(const std::optional<Shortcut>& shortcut) const;

    friend bool operator==(const Name& left, const Name& right)
    {
        return left.m_rawValue == right.m_rawValue;
    }

private:
    QString m_rawValue;
    std::optional<Shortcut> m_defaultShortcut;
};

} // namespace orvane::KeyboardShortcuts

template <>
struct std::hash<orvane::KeyboardShortcuts::Name> {
    std::size_t operator()(const orvane::KeyboardShortcuts::Name& name) const noexcept
    {
        return qHash(name.rawValue());
    }
};

Q_DECLARE_METATYPE(orvane::KeyboardShortcuts::Name)
