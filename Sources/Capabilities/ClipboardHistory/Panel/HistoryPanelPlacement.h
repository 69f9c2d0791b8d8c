// The place of the history's panel. Pure.
#pragma once

#include "Platform/Geometry.h"
#include "Platform/Screens.h"

#include <QList>

#include <optional>

namespace orvane::HistoryPanelPlacement {

/// In points.
inline constexpr Size panelSize{360, 420};
/// The space kept free inside a screen's visible frame.
inline constexpr double margin = 8;

/// Returns the frame in the space of the screens: its upper left corner at the pointer, moved into the
/// visible frame of the screen that has the pointer, or else of the main one. Where there is no room for all
/// of it, the right and the upper edge are kept inside.
Rect frame(Point mouse, const QList<Screen>& screens, const std::optional<Screen>& mainScreen);

} // namespace orvane::HistoryPanelPlacement
