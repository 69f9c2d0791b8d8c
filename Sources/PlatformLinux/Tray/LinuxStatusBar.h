// Status items by StatusNotifierItem where the session has a host for it, else by the XEmbed system tray;
// where there is neither, they wait for one. Nothing is on the bus before the first item is made.
#pragma once

#include "Platform/StatusBar.h"

#include <memory>

namespace orvane {

class LogSink;
class MenuTracking;
class NotificationCenter;
class StatusArea;

class LinuxStatusBar : public StatusBar {
public:
    /// All outlive the status bar and its items. `center` is told of the area; `tracking` is told of the
    /// menus that the desktop draws, and may be null.
    LinuxStatusBar(LogSink& log, NotificationCenter& center, MenuTracking* tracking = nullptr);
    ~LinuxStatusBar() override;

    [[nodiscard]] Area area() const override { return m_lastArea; }

    [[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem(double length) override;

private:
    void areaChanged();

    LogSink& m_log;
    NotificationCenter& m_center;
    MenuTracking* m_tracking;
    std::shared_ptr<StatusArea> m_area;
    Area m_lastArea = Area::unknown;
};

} // namespace orvane
