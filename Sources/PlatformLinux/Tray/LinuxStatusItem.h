// One status item: its content, its clicks, and its place in the present status area. Main thread.
#pragma once

#include "PlatformLinux/Tray/StatusItemClicks.h"
#include "PlatformLinux/Tray/StatusItemContent.h"

#include <QObject>
#include <QTimer>

#include <chrono>
#include <memory>

namespace orvane {

class MenuTracking;
class StatusArea;
class StatusNotifierItem;
class TrayMenuView;
class XEmbedTrayWindow;

class LinuxStatusItem : public QObject, public StatusItem {
    Q_OBJECT
public:
    /// `tracking` outlives the item; it may be null.
    LinuxStatusItem(std::shared_ptr<StatusArea> area, double length, MenuTracking* tracking);
    ~LinuxStatusItem() override;

    void setAutosaveName(const QString& name) override;
    void setImage(const TemplateImage& image) override;
    void setToolTip(const QString& text) override;
    void setAction(Action action) override;
    void setMenu(MenuDelegate menuNeedsUpdate) override;
    void performClick() override;

private:
    void scheduleUpdate();
    void update();
    void takePlace();
    void notifierIsLost();
    void openMenu(const Menu& menu);

    std::shared_ptr<StatusArea> m_area;
    MenuTracking* m_tracking;
    StatusItemContent m_content;
    StatusItemClicks m_clicks;
    std::unique_ptr<TrayMenuView> m_menuView;
    /// At most one of the two.
    std::unique_ptr<StatusNotifierItem> m_notifier;
    std::unique_ptr<XEmbedTrayWindow> m_window;
    bool m_updateScheduled = false;
    /// Runs while an item whose connection was lost waits to be made anew.
    QTimer m_return;
    std::chrono::milliseconds m_returnPause;
    std::chrono::steady_clock::time_point m_lastLoss;
};

} // namespace orvane
