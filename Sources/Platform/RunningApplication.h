// Programs as the desktop knows them.
#pragma once

#include <QMetaType>
#include <QString>

#include <cstdint>
#include <optional>

namespace orvane {

struct RunningApplication {
    std::int64_t processIdentifier = 0;
    /// The name that the logic knows the program by; absent when neither a desktop entry nor the table names
    /// it.
    std::optional<QString> bundleIdentifier;
    QString localizedName;

    friend bool operator==(const RunningApplication&, const RunningApplication&) = default;
};

struct InstalledApplication {
    /// Absent when the program has none; it can't be told apart from others then.
    std::optional<QString> bundleIdentifier;
    QString localizedName;
    /// An icon's name in the desktop's theme, or an absolute path.
    QString iconName;

    friend bool operator==(const InstalledApplication&, const InstalledApplication&) = default;
};

} // namespace orvane

Q_DECLARE_METATYPE(orvane::RunningApplication)
