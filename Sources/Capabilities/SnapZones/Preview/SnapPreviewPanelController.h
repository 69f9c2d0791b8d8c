// Shows the place where a dragged window is going to be. Main thread.
#pragma once

#include "Platform/Geometry.h"

#include <memory>

namespace orvane {

class OrvaPanelWindow;

class SnapPreviewPanelController {
public:
    SnapPreviewPanelController();
    ~SnapPreviewPanelController();
    SnapPreviewPanelController(const SnapPreviewPanelController&) = delete;
    SnapPreviewPanelController& operator=(const SnapPreviewPanelController&) = delete;

    /// Shows the panel, or moves it. The frame is in the space of the screens.
    void show(const Rect& frame);
    void hide();

    /// Absent before the first use.
    [[nodiscard]] OrvaPanelWindow* panel() const { return m_panel.get(); }

private:
    std::unique_ptr<OrvaPanelWindow> m_panel;
};

} // namespace orvane
