// Programs as the desktop knows them.
#pragma once

#include <QMetaType>
#include <QString>

#include <cstdint>
#include <optional>

namespace orvane {

struct RunningApplication {
    std::int64_t processIdentifier = 0;
    /// The name that the logic knows it by; absent for a program that no entry or table tells of.
    std::optional<QString> bundleIdentifier;
    QString localizedName;

    friend bool operator==(const RunningApplication&, const RunningApplication&) = default;
};

struct InstalledApplication {
    /// Absent when what was found has none; such a program can't be told apart from others.
    std::optional<QString> bundleIdentifier;
    QString localizedName;
    /// An icon's name in the desktop's theme, or an absolute path.
    QString iconName;

    friend bool operator==(const InstalledApplication&, const InstalledApplication&) = default;
};

} // namespace orvane

Q_DECLARE_METATYPE(orvane::RunningApplication)
