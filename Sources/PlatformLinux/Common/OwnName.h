// The program's name for people. Qt's own place for it, the display name, stays empty: Qt would add that name
// to the title of each window.
#pragma once

#include <QLatin1StringView>

namespace orvane {

inline constexpr QLatin1StringView ownName("Orvane");

} // namespace orvane
