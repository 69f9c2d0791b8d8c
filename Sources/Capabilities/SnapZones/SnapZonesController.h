// Snaps windows: the dragged one at the end of its drag, the focused one at once, or the one that had the
// focus when the panel of layouts opened. Main thread.
//
// A drag is watched and never delayed: what it moves is known from notifications, and nobody is asked.
#pragma once

#include "Capabilities/SnapZones/Layouts/SnapLayoutFlyoutController.h"
#include "Capabilities/SnapZones/Preview/SnapPreviewPanelController.h"
#include "Capabilities/SnapZones/SnapDrag.h"
#include "Capabilities/SnapZones/SnapZonesSettings.h"
#include "OrvaneCore/Base/Log.h"
#include "Platform/EventMonitors.h"
#include "Platform/RunLoop.h"
#include "Platform/WindowDrags.h"

#include <memory>
#include <optional>
#include <vector>

namespace orvane {

class SnapZonesController : public std::enable_shared_from_this<SnapZonesController> {
public:
    static std::shared_ptr<SnapZonesController> make(std::shared_ptr<SnapZonesSettings> settings, Logger log);

    [[nodiscard]] const std::shared_ptr<SnapZonesSettings>& settings() const { return m_settings; }
    [[nodiscard]] const SnapDrag& drag() const { return m_drag; }
    [[nodiscard]] const SnapPreviewPanelController& preview() const { return m_preview; }
    [[nodiscard]] SnapLayoutFlyoutController& flyout() const { return *m_flyout; }

    /// Does nothing without a window that can be snapped.
    void snap(SnapZone zone);
    /// Opens the panel of layouts, or closes it when it's open.
    void showFlyout();

    /// Called by the service. Shortcuts and the panel work without it too.
    void start();
    void stop();

    /// Events of the left button.
    void dragMoved();
    void dragEnded();

private:
    SnapZonesController(std::shared_ptr<SnapZonesSettings> settings, Logger log);

    /// A place on a screen in which a window can be dropped.
    struct Drop {
        SnapZone zone;
        Screen screen;
    };
    /// A drag whose button was released in a zone before its window was seen to move.
    struct Unproved {
        SnapDrag drag;
        Drop drop;
        std::unique_ptr<Timer> end;
    };

    void handle(EventType type);
    void windowsChanged();
    bool endIfPutBack();
    void switchDragToSnap(bool isOn);
    [[nodiscard]] std::optional<SnapZone> zoneUnderPointer(const Screen& screen) const;
    SnapDrag::Preview follow();
    void showPreview(SnapDrag::Preview preview);
    [[nodiscard]] std::optional<Drop> unprovedDrop() const;
    void awaitMove(Drop drop);
    void resetDrag();
    void chooseLayout(SnapZone zone);

    [[nodiscard]] Rect frame(SnapZone zone, const Screen& screen) const;
    void drop(const AXUIElement& window, SnapZone zone, const Screen& screen) const;
    void place(const AXUIElement& window, SnapZone zone, const Screen& screen) const;
    void placeOnItsScreen(const AXUIElement& window, SnapZone zone) const;

    std::shared_ptr<SnapZonesSettings> m_settings;
    Logger m_log;
    SnapPreviewPanelController m_preview;
    std::shared_ptr<SnapLayoutFlyoutController> m_flyout;
    std::vector<std::unique_ptr<EventMonitor>> m_dragMonitors;
    std::unique_ptr<WindowDragWatch> m_windowWatch;
    Subscription m_dragToSnap;
    SnapDrag m_drag;
    /// The pointer's place at the last motion of a drag; absent before the first.
    std::optional<Point> m_pointer;
    /// The pointer's place when the button went down.
    std::optional<Point> m_press;
    std::optional<Unproved> m_unproved;
    std::optional<AXUIElement> m_flyoutTarget;
};

} // namespace orvane
