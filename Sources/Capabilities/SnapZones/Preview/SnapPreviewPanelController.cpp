#include "Capabilities/SnapZones/Preview/SnapPreviewPanelController.h"

#include "Capabilities/SnapZones/Preview/SnapPreviewView.h"
#include "OrvaneKit/Panels/OrvaPanelWindow.h"

namespace orvane {

SnapPreviewPanelController::SnapPreviewPanelController() = default;
SnapPreviewPanelController::~SnapPreviewPanelController() = default;

void SnapPreviewPanelController::show(const Rect& frame)
{
    if (!m_panel) {
        m_panel = std::make_unique<OrvaPanelWindow>(
            OrvaPanelWindow::Style{.mouse = OrvaPanelWindow::Mouse::passesThrough,
                                   .ground = OrvaPanelWindow::Ground::clear,
                                   .shadow = OrvaPanelWindow::Shadow::none,
                                   .corner = SnapPreviewView::corner});
        m_panel->setContentView(new SnapPreviewView(*m_panel));
    }
    m_panel->setFrame(frame);
    m_panel->orderFront();
}

void SnapPreviewPanelController::hide()
{
    if (m_panel)
        m_panel->orderOut();
}

} // namespace orvane
