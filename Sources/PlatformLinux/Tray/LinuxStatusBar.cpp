#include "PlatformLinux/Tray/LinuxStatusBar.h"

#include "Platform/NotificationCenter.h"
#include "PlatformLinux/Tray/LinuxStatusItem.h"
#include "PlatformLinux/Tray/StatusArea.h"

#include <utility>

namespace orvane {

LinuxStatusBar::LinuxStatusBar(LogSink& log, NotificationCenter& center, MenuTracking* tracking)
    : m_log(log), m_center(center), m_tracking(tracking)
{
}

LinuxStatusBar::~LinuxStatusBar() = default;

std::unique_ptr<StatusItem> LinuxStatusBar::makeStatusItem(double length)
{
    if (!m_area) {
        m_area = std::make_shared<StatusArea>(m_log);
        QObject::connect(m_area.get(), &StatusArea::changed, m_area.get(), [this] { areaChanged(); });
    }
    return std::make_unique<LinuxStatusItem>(m_area, length, m_tracking);
}

void LinuxStatusBar::areaChanged()
{
    const Area area = m_area->kind() == StatusArea::Kind::none ? Area::absent : Area::present;
    if (std::exchange(m_lastArea, area) != area)
        m_center.post(areaDidChangeNotification());
}

} // namespace orvane
