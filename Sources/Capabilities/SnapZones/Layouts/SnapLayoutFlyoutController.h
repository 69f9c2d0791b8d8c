// The floating panel with the grid of layouts. Main thread.
//
// It never takes the keyboard: the window to be snapped keeps the focus. A click on another program's window
// closes it; so does Escape, while a window of this program has the keyboard.
#pragma once

#include "Capabilities/SnapZones/Layouts/SnapLayoutModel.h"
#include "Platform/EventMonitors.h"

#include <memory>

class QWidget;

namespace orvane {

class OrvaPanelWindow;

class SnapLayoutFlyoutController : public std::enable_shared_from_this<SnapLayoutFlyoutController> {
public:
    SnapLayoutFlyoutController();
    ~SnapLayoutFlyoutController();
    SnapLayoutFlyoutController(const SnapLayoutFlyoutController&) = delete;
    SnapLayoutFlyoutController& operator=(const SnapLayoutFlyoutController&) = delete;

    [[nodiscard]] const std::shared_ptr<SnapLayoutModel>& model() const { return m_model; }
    [[nodiscard]] bool isVisible() const;

    /// Shows the panel in the middle of the main screen, whichever screen the window is on. Without a screen
    /// it stays closed: nobody could see or close it.
    void show();
    void dismiss();

    /// Absent before the first use.
    [[nodiscard]] OrvaPanelWindow* panel() const { return m_panel.get(); }

private:
    void makePanel();
    void installMonitors();
    void removeMonitors();
    /// Monitors are called while an event is being delivered, so the panel is closed in a later turn.
    void dismissLater();

    std::shared_ptr<SnapLayoutModel> m_model;
    std::unique_ptr<OrvaPanelWindow> m_panel;
    QWidget* m_grid = nullptr; // owned by the panel
    std::unique_ptr<EventMonitor> m_clickMonitor;
    std::unique_ptr<EventMonitor> m_keyMonitor;
};

} // namespace orvane
