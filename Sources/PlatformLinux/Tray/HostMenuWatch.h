// Finds out when the menu of a status item is open that a host of status items draws. Few hosts report it
// ("opened", "closed"); most report only that the menu is about to show, so the host's menu windows are
// watched from then on. A host that dies or never reports the closing doesn't leave the menu open for ever.
// Only the desktop's status area is believed: any program on the bus can call the same methods, and an open
// menu takes the keyboards. Main thread.
#pragma once

#include "PlatformLinux/Menus/MenuTracking.h"
#include "PlatformLinux/Tray/MenuWindowWatch.h"
#include "PlatformLinux/Tray/TrayHosts.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QString>
#include <QTimer>

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace orvane {

class HostMenuWatch : public QObject {
    Q_OBJECT
public:
    /// `tracking` outlives this object; `bus` is the one on which the hosts call.
    HostMenuWatch(MenuTracking& tracking, QDBusConnection bus);
    ~HostMenuWatch() override;

    enum class Report { aboutToShow, opened, closed, clicked };

    /// To be called with each report. The caller is known by its unique bus name, and is looked at first when
    /// it isn't known yet.
    void report(const QString& caller, Report what);

    [[nodiscard]] bool isOpen() const { return m_menu != nullptr; }

private:
    struct DeleteLater {
        void operator()(MenuWindowWatch* watch) const;
    };
    struct Unproven {
        QString caller;
        std::vector<Report> reports;
    };

    void askAbout(const QString& caller);
    void noteStranger(const QString& caller);
    void believe(const QString& host, std::int64_t process, Report what);
    void aboutToShow();
    void opened();
    void follow(const QString& host, std::int64_t process);
    void watchWindowsOf(std::int64_t process);
    void windowsChanged(bool areShown);
    void begin();
    void forget();

    MenuTracking& m_tracking;
    QDBusConnection m_bus;
    TrayHosts m_trayHosts{m_bus};
    QDBusServiceWatcher m_hosts;
    /// The reports of callers that are just being looked at, the oldest caller first.
    std::vector<Unproven> m_unproven;
    /// Until when each stranger isn't looked at again.
    std::map<QString, std::chrono::steady_clock::time_point> m_strangers;
    /// Empty when no host uses the menu.
    QString m_host;
    std::int64_t m_process = 0;
    std::unique_ptr<MenuWindowWatch, DeleteLater> m_windows;
    std::unique_ptr<MenuTracking::DesktopMenu> m_menu;
    QTimer m_limit;
};

} // namespace orvane
