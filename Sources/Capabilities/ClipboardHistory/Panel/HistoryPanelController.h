// Opens the history's panel at the pointer, and closes it. Main thread.
#pragma once

#include "Capabilities/ClipboardHistory/Panel/HistoryViewModel.h"
#include "Platform/EventMonitors.h"

#include <memory>

namespace orvane {

class HistoryPanelView;
class KeyablePanel;

class HistoryPanelController {
public:
    /// Costs nothing: the window is made at the first showing and kept.
    HistoryPanelController();
    ~HistoryPanelController();
    HistoryPanelController(const HistoryPanelController&) = delete;
    HistoryPanelController& operator=(const HistoryPanelController&) = delete;

    HistoryViewModel model;

    /// Shows the panel with an empty query and the keyboard. A click into another program closes it.
    void show();
    void hide();
    [[nodiscard]] bool isVisible() const;

private:
    void makePanel();
    void watchClicks();

    std::unique_ptr<KeyablePanel> m_panel;
    HistoryPanelView* m_view = nullptr; // owned by the panel
    std::unique_ptr<EventMonitor> m_clickMonitor;
    std::shared_ptr<HistoryPanelController*> m_self; // for tasks that may outlive it
};

} // namespace orvane
