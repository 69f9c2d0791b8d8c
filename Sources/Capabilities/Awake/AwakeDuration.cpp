#include "Capabilities/Awake/AwakeDuration.h"

namespace orvane {

QString rawValue(AwakeDuration duration)
{
    switch (duration) {
    case AwakeDuration::indefinite:
        return QStringLiteral("indefinite");
    case AwakeDuration::minutes30:
        return QStringLiteral("minutes30");
    case AwakeDuration::hours1:
        return QStringLiteral("hours1");
    case AwakeDuration::hours2:
        return QStringLiteral("hours2");
    case AwakeDuration::hours4:
        return QStringLiteral("hours4");
    }
    Q_UNREACHABLE();
}

std::optional<AwakeDuration> awakeDuration(const QString& raw)
{
    for (const AwakeDuration duration : allAwakeDurations) {
        if (rawValue(duration) == raw)
            return duration;
    }
    return std::nullopt;
}

QString title(AwakeDuration duration)
{
    switch (duration) {
    case AwakeDuration::indefinite:
        return QStringLiteral("Until I turn it off");
    case AwakeDuration::minutes30:
        return QStringLiteral("30 minutes");
    case AwakeDuration::hours1:
        return QStringLiteral("1 hour");
    case AwakeDuration::hours2:
        return QStringLiteral("2 hours");
    case AwakeDuration::hours4:
        return QStringLiteral("4 hours");
    }
    Q_UNREACHABLE();
}

std::optional<std::chrono::seconds> seconds(AwakeDuration duration)
{
    switch (duration) {
    case AwakeDuration::indefinite:
        return std::nullopt;
    case AwakeDuration::minutes30:
        return std::chrono::seconds(1800);
    case AwakeDuration::hours1:
        return std::chrono::seconds(3600);
    case AwakeDuration::hours2:
        return std::chrono::seconds(7200);
    case AwakeDuration::hours4:
        return std::chrono::seconds(14400);
    }
    Q_UNREACHABLE();
}

} // namespace orvane
