// For how long to stay awake.
#pragma once

#include <QString>

#include <array>
#include <chrono>
#include <optional>

namespace orvane {

enum class AwakeDuration { indefinite, minutes30, hours1, hours2, hours4 };

inline constexpr std::array allAwakeDurations{
    AwakeDuration::indefinite, AwakeDuration::minutes30, AwakeDuration::hours1,
    AwakeDuration::hours2,     AwakeDuration::hours4,
};

QString rawValue(AwakeDuration duration);
/// Nothing for an unknown string.
std::optional<AwakeDuration> awakeDuration(const QString& rawValue);
QString title(AwakeDuration duration);
/// Absent for the one without an end.
std::optional<std::chrono::seconds> seconds(AwakeDuration duration);

} // namespace orvane
