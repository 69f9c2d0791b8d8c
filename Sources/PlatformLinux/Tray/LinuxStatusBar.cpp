#include "PlatformLinux/Tray/LinuxStatusBar.h"

#include "PlatformLinux/Tray/LinuxStatusItem.h"
#include "PlatformLinux/Tray/StatusArea.h"

namespace orvane {

LinuxStatusBar::LinuxStatusBar(LogSink& log, MenuTracking* tracking) : m_log(log), m_tracking(tracking) {}

LinuxStatusBar::~LinuxStatusBar() = default;

std::unique_ptr<StatusItem> LinuxStatusBar::makeStatusItem(double length)
{
    if (!m_area)
        m_area = std::make_shared<StatusArea>(m_log);
    return std::make_unique<LinuxStatusItem>(m_area, length, m_tracking);
}

} // namespace orvane
