// Where the history's panel stands. Pure.
#pragma once

#include "Platform/Geometry.h"
#include "Platform/Screens.h"

#include <QList>

#include <optional>

namespace orvane::HistoryPanelPlacement {

/// Points.
inline constexpr Size panelSize{360, 420};
/// Kept free inside of a screen's visible frame.
inline constexpr double margin = 8;

/// In the space of the screens: the upper left corner at the pointer, moved into the visible frame of the
/// screen that has the pointer, or else of the main one. Where there is no room for all of it, the right
/// and the upper edge are the ones that are kept inside.
Rect frame(Point mouse, const QList<Screen>& screens, const std::optional<Screen>& mainScreen);

} // namespace orvane::HistoryPanelPlacement
