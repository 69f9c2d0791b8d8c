// The applications in which chords are rewritten. Pure; runs for every key event and allocates nothing.
#pragma once

#include "OrvaneCore/Base/EnumNames.h"

#include <QStringList>

namespace orvane {

enum class AppExclusionMode {
    denylist,  // everywhere except in listed applications
    allowlist, // only in listed applications
};

inline constexpr std::array appExclusionModeNames{
    EnumName{AppExclusionMode::denylist, "denylist",
             TextSource("KeySwapText", "Everywhere except these apps")},
    EnumName{AppExclusionMode::allowlist, "allowlist", TextSource("KeySwapText", "Only in these apps")},
};
constexpr const auto& enumNames(AppExclusionMode)
{
    return appExclusionModeNames;
}
static_assert(isInOrder<AppExclusionMode>());

namespace AppExclusion {

/// Terminals and editors that need their Control keys, in ascending order. Built once, on first use.
const QStringList& defaultDenylist();

/// An application without an identifier counts as unlisted. A pattern is an identifier, or a prefix followed
/// by ".*", which matches any identifier that begins with the prefix and a full stop; case counts, the order
/// of the list doesn't.
bool shouldRemap(const std::optional<QString>& bundleID, AppExclusionMode mode, const QStringList& list);

} // namespace AppExclusion

} // namespace orvane
