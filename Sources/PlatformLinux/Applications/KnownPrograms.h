// The programs whose bundle identifier isn't their desktop entry's id, and the names by which the desktop
// knows them.
#pragma once

#include <QLatin1StringView>
#include <QString>

#include <optional>

namespace orvane {

namespace systemProgram {
inline constexpr QLatin1StringView fileManager("com.apple.finder");
inline constexpr QLatin1StringView dock("com.apple.dock");
inline constexpr QLatin1StringView terminal("com.apple.Terminal");
} // namespace systemProgram

/// Finds a program by the class of a window, the file name of an executable or the id of a desktop entry;
/// case is ignored.
std::optional<QString> knownProgram(QStringView name);

} // namespace orvane
