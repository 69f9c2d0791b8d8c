// Looks at the pasteboard's change count at intervals, for as long as the capability is on. This desktop
// announces each copy, but not every platform does; an idle look costs the reading of an integer.
#pragma once

#include "Capabilities/ClipboardHistory/ClipboardHistoryController.h"
#include "OrvaneCore/Capability/BackgroundService.h"

namespace orvane {

class ClipboardWatcherService : public BackgroundService {
public:
    /// `interval` is in seconds.
    ClipboardWatcherService(std::shared_ptr<ClipboardHistoryController> controller, double interval);

    void start() override;
    void stop() override;
    [[nodiscard]] bool isRunning() const override { return m_isRunning; }

private:
    std::shared_ptr<ClipboardHistoryController> m_controller;
    const std::chrono::milliseconds m_interval;
    std::shared_ptr<Timer> m_timer;
    bool m_isRunning = false;
};

} // namespace orvane
