// The identity of a capability, its name and the group in which it is listed.
#pragma once

#include "OrvaneCore/Base/EnumNames.h"

#include <QHashFunctions>
#include <QString>

#include <array>
#include <compare>

namespace orvane {

/// A reverse-domain name such as "net.lindenrow.orvane.awake". Also the scope of the capability's
/// preferences, its logging category and the last component of its support directory.
struct CapabilityID {
    QString rawValue;

    friend bool operator==(const CapabilityID&, const CapabilityID&) = default;
    friend auto operator<=>(const CapabilityID& a, const CapabilityID& b)
    {
        return a.rawValue.compare(b.rawValue) <=> 0;
    }
    friend size_t qHash(const CapabilityID& id, size_t seed = 0) { return qHash(id.rawValue, seed); }
};

enum class CapabilityCategory { windowing, input, desktop, finder, system };

inline constexpr std::array capabilityCategoryNames{
    EnumName{CapabilityCategory::windowing, "windowing", TextSource("CoreText", "Windows & Switching")},
    EnumName{CapabilityCategory::input, "input", TextSource("CoreText", "Keyboard & Mouse")},
    EnumName{CapabilityCategory::desktop, "desktop", TextSource("CoreText", "Desktop")},
    EnumName{CapabilityCategory::finder, "finder", TextSource("CoreText", "Finder & Files")},
    EnumName{CapabilityCategory::system, "system", TextSource("CoreText", "System")},
};
constexpr const auto& enumNames(CapabilityCategory)
{
    return capabilityCategoryNames;
}
static_assert(isInOrder<CapabilityCategory>());

struct CapabilityMetadata {
    CapabilityID id;
    QString displayName;
    /// One sentence, shown under the name.
    QString summary;
    QString symbolName;
    CapabilityCategory category;
};

} // namespace orvane
