// Finds out when the menu of a status item is open that a host of status items draws. Few hosts report it
// ("opened", "closed"); most report only that the menu is about to show, so the host's menu windows are
// watched from then on. A host that dies or never reports the closing doesn't leave the menu open for ever.
// Main thread.
#pragma once

#include "PlatformLinux/Menus/MenuTracking.h"
#include "PlatformLinux/Tray/MenuWindowWatch.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QString>
#include <QTimer>

#include <cstdint>
#include <memory>

namespace orvane {

class HostMenuWatch : public QObject {
    Q_OBJECT
public:
    /// `tracking` outlives this object; `bus` is the one on which the hosts call.
    HostMenuWatch(MenuTracking& tracking, QDBusConnection bus);
    ~HostMenuWatch() override;

    // Reports of the hosts, which are known by their unique bus names.
    void aboutToShow(const QString& host);
    void opened(const QString& host);
    void closed(const QString& host);
    /// An item was chosen.
    void clicked(const QString& host);

    [[nodiscard]] bool isOpen() const { return m_menu != nullptr; }

private:
    struct DeleteLater {
        void operator()(MenuWindowWatch* watch) const;
    };

    void follow(const QString& host);
    void watchWindowsOf(std::int64_t process);
    void windowsChanged(bool areShown);
    void begin();
    void forget();

    MenuTracking& m_tracking;
    QDBusConnection m_bus;
    QDBusServiceWatcher m_hosts;
    /// Empty when no host uses the menu.
    QString m_host;
    std::unique_ptr<MenuWindowWatch, DeleteLater> m_windows;
    std::unique_ptr<MenuTracking::DesktopMenu> m_menu;
    QTimer m_limit;
};

} // namespace orvane
