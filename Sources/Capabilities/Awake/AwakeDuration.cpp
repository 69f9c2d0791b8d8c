#include "Capabilities/Awake/AwakeDuration.h"

namespace orvane {

std::optional<std::chrono::seconds> seconds(AwakeDuration duration)
{
    using namespace std::chrono_literals;
    switch (duration) {
    case AwakeDuration::indefinite:
        return std::nullopt;
    case AwakeDuration::minutes30:
        return 30min;
    case AwakeDuration::hours1:
        return 1h;
    case AwakeDuration::hours2:
        return 2h;
    case AwakeDuration::hours4:
        return 4h;
    }
    Q_UNREACHABLE();
}

} // namespace orvane
