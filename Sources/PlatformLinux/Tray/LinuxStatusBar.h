// Status items by StatusNotifierItem where the session has a host for it, else by the XEmbed system tray;
// where there is neither, they wait for one. Nothing is on the bus before the first item is made.
#pragma once

#include "Platform/StatusBar.h"

#include <memory>

namespace orvane {

class LogSink;
class MenuTracking;
class StatusArea;

class LinuxStatusBar : public StatusBar {
public:
    /// Both outlive the status bar and its items; `tracking` is told of the menus that the desktop draws, and
    /// may be null.
    explicit LinuxStatusBar(LogSink& log, MenuTracking* tracking = nullptr);
    ~LinuxStatusBar() override;

    [[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem(double length) override;

private:
    LogSink& m_log;
    MenuTracking* m_tracking;
    std::shared_ptr<StatusArea> m_area;
};

} // namespace orvane
