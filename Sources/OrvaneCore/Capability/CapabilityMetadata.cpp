#include "OrvaneCore/Capability/CapabilityMetadata.h"

namespace orvane {

QString rawValue(CapabilityCategory category)
{
    switch (category) {
    case CapabilityCategory::windowing:
        return QStringLiteral("windowing");
    case CapabilityCategory::input:
        return QStringLiteral("input");
    case CapabilityCategory::desktop:
        return QStringLiteral("desktop");
    case CapabilityCategory::finder:
        return QStringLiteral("finder");
    case CapabilityCategory::system:
        return QStringLiteral("system");
    }
    Q_UNREACHABLE();
}

std::optional<CapabilityCategory> capabilityCategory(const QString& raw)
{
    for (const CapabilityCategory category : allCapabilityCategories) {
        if (rawValue(category) == raw)
            return category;
    }
    return std::nullopt;
}

QString displayName(CapabilityCategory category)
{
    switch (category) {
    case CapabilityCategory::windowing:
        return QStringLiteral("Windows & Switching");
    case CapabilityCategory::input:
        return QStringLiteral("Keyboard & Mouse");
    case CapabilityCategory::desktop:
        return QStringLiteral("Desktop");
    case CapabilityCategory::finder:
        return QStringLiteral("Finder & Files");
    case CapabilityCategory::system:
        return QStringLiteral("System");
    }
    Q_UNREACHABLE();
}

} // namespace orvane
