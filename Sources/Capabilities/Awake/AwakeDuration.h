// The time for which to stay awake.
#pragma once

#include "OrvaneCore/Base/EnumNames.h"

#include <chrono>

namespace orvane {

enum class AwakeDuration { indefinite, minutes30, hours1, hours2, hours4 };

inline constexpr std::array awakeDurationNames{
    EnumName{AwakeDuration::indefinite, "indefinite", TextSource("AwakeText", "Until I turn it off")},
    EnumName{AwakeDuration::minutes30, "minutes30", TextSource("AwakeText", "30 minutes")},
    EnumName{AwakeDuration::hours1, "hours1", TextSource("AwakeText", "1 hour")},
    EnumName{AwakeDuration::hours2, "hours2", TextSource("AwakeText", "2 hours")},
    EnumName{AwakeDuration::hours4, "hours4", TextSource("AwakeText", "4 hours")},
};
constexpr const auto& enumNames(AwakeDuration)
{
    return awakeDurationNames;
}
static_assert(isInOrder<AwakeDuration>());

/// Absent for the duration without an end.
std::optional<std::chrono::seconds> seconds(AwakeDuration duration);

} // namespace orvane
