// Looks at the pasteboard for as long as the capability is on: after copies that the platform announces, and
// at intervals where it doesn't announce them. A look that finds nothing new costs the reading of an integer.
#pragma once

#include "Capabilities/ClipboardHistory/Capture/LookSchedule.h"
#include "Capabilities/ClipboardHistory/ClipboardHistoryController.h"
#include "OrvaneCore/Capability/BackgroundService.h"
#include "Platform/Pasteboard.h"

namespace orvane {

class ClipboardWatcherService : public BackgroundService {
public:
    /// `interval` is in seconds.
    ClipboardWatcherService(std::shared_ptr<ClipboardHistoryController> controller, double interval);

    void start() override;
    void stop() override;
    [[nodiscard]] bool isRunning() const override { return m_isRunning; }

private:
    void startTimer();
    void scheduleLook();
    void look();

    std::shared_ptr<ClipboardHistoryController> m_controller;
    const std::chrono::milliseconds m_interval;
    std::unique_ptr<PasteboardWatch> m_watch; // null where copies aren't announced
    std::unique_ptr<Timer> m_nextLook;        // null while no copy was announced
    LookSchedule m_schedule;
    std::shared_ptr<Timer> m_timer; // null where copies are announced
    bool m_isRunning = false;
};

} // namespace orvane
