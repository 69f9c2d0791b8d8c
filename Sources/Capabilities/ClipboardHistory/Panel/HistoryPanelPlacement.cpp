#include "Capabilities/ClipboardHistory/Panel/HistoryPanelPlacement.h"

#include <algorithm>

namespace orvane::HistoryPanelPlacement {

Rect frame(Point mouse, const QList<Screen>& screens, const std::optional<Screen>& mainScreen)
{
    Point origin{mouse.x, mouse.y - panelSize.height};
    const auto found =
        std::ranges::find_if(screens, [mouse](const Screen& screen) { return screen.frame.contains(mouse); });
    const std::optional<Screen> screen = found == screens.end() ? mainScreen : *found;
    if (screen) {
        const Rect& room = screen->visibleFrame;
        origin.x = std::max(origin.x, room.minX() + margin);
        origin.x = std::min(origin.x, room.maxX() - panelSize.width - margin);
        origin.y = std::max(origin.y, room.minY() + margin);
        origin.y = std::min(origin.y, room.maxY() - panelSize.height - margin);
    }
    return {origin, panelSize};
}

} // namespace orvane::HistoryPanelPlacement
