#include "PlatformLinux/Tray/HostMenuWatch.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QPointer>

#include <algorithm>
#include <chrono>
#include <utility>

namespace orvane {

namespace {

using namespace std::chrono_literals;

/// A host that was told it may show the menu does so within this time, or has only looked.
constexpr auto openingTime = 5s;
/// No menu is read for longer; a host without windows of its own may have forgotten to report the end.
constexpr auto longestOpen = 60s;
/// A status area has one connection or two. Of more callers at once the oldest are forgotten, so that no
/// flood keeps the status area from being looked at.
constexpr std::size_t mostUnproven = 16;
constexpr std::size_t mostReports = 8;
constexpr std::size_t mostStrangers = 64;
/// A program that wasn't the status area may be it later.
constexpr auto strangersTime = 2s;

} // namespace

void HostMenuWatch::DeleteLater::operator()(MenuWindowWatch* watch) const
{
    watch->disconnect(); // the call may come from its own signal
    watch->deleteLater();
}

HostMenuWatch::HostMenuWatch(MenuTracking& tracking, QDBusConnection bus)
    : m_tracking(tracking), m_bus(std::move(bus))
{
    m_hosts.setConnection(m_bus);
    m_hosts.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    connect(&m_hosts, &QDBusServiceWatcher::serviceUnregistered, this, &HostMenuWatch::forget);
    m_limit.setSingleShot(true);
    connect(&m_limit, &QTimer::timeout, this, &HostMenuWatch::forget);
}

HostMenuWatch::~HostMenuWatch() = default;

void HostMenuWatch::report(const QString& caller, Report what)
{
    const auto unproven = std::ranges::find(m_unproven, caller, &Unproven::caller);
    if (unproven != m_unproven.end()) {
        if (unproven->reports.size() < mostReports)
            unproven->reports.push_back(what);
        return;
    }
    if (caller == m_host) {
        believe(caller, m_process, what);
        return;
    }
    // These two end what the same caller has begun.
    if (what == Report::closed || what == Report::clicked)
        return;
    const auto now = std::chrono::steady_clock::now();
    std::erase_if(m_strangers, [&](const auto& stranger) { return stranger.second <= now; });
    if (m_strangers.contains(caller))
        return;
    if (m_unproven.size() >= mostUnproven)
        m_unproven.erase(m_unproven.begin());
    m_unproven.push_back({caller, {what}});
    askAbout(caller);
}

void HostMenuWatch::askAbout(const QString& caller)
{
    m_trayHosts.identify(caller, [this, caller](std::optional<std::int64_t> process) {
        std::vector<Report> reports;
        const auto unproven = std::ranges::find(m_unproven, caller, &Unproven::caller);
        if (unproven != m_unproven.end()) {
            reports = std::move(unproven->reports);
            m_unproven.erase(unproven);
        }
        if (!process) {
            noteStranger(caller);
            return;
        }
        const QPointer<HostMenuWatch> self(this); // who hears of the menu may end this object
        for (const Report what : reports) {
            if (self)
                believe(caller, *process, what);
        }
    });
}

void HostMenuWatch::noteStranger(const QString& caller)
{
    if (m_strangers.size() >= mostStrangers)
        m_strangers.erase(
            std::ranges::min_element(m_strangers, {}, [](const auto& stranger) { return stranger.second; }));
    m_strangers[caller] = std::chrono::steady_clock::now() + strangersTime;
}

void HostMenuWatch::believe(const QString& host, std::int64_t process, Report what)
{
    switch (what) {
    case Report::aboutToShow:
    case Report::opened:
        follow(host, process);
        what == Report::opened ? opened() : aboutToShow();
        break;
    case Report::closed:
        if (host == m_host)
            forget();
        break;
    case Report::clicked:
        // Where the menu has windows, those decide: some hosts keep it open.
        if (host == m_host && !(m_windows && m_windows->isShown()))
            forget();
        break;
    }
}

void HostMenuWatch::aboutToShow()
{
    if (!m_menu)
        m_limit.start(openingTime);
}

void HostMenuWatch::opened()
{
    if (m_menu)
        return;
    begin();
    m_limit.start(longestOpen);
}

void HostMenuWatch::follow(const QString& host, std::int64_t process)
{
    if (host == m_host)
        return;
    forget();
    m_host = host;
    m_process = process;
    m_hosts.addWatchedService(host);
    watchWindowsOf(process);
    // The host may have gone before the bus was told to watch it.
    auto question = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameHasOwner"));
    question << host;
    auto* pending = new QDBusPendingCallWatcher(m_bus.asyncCall(question), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending, host] {
        pending->deleteLater();
        const QDBusPendingReply<bool> isThere = *pending;
        if (host == m_host && isThere.isValid() && !isThere.value())
            forget();
    });
}

void HostMenuWatch::watchWindowsOf(std::int64_t process)
{
    m_windows.reset(new MenuWindowWatch(process));
    connect(m_windows.get(), &MenuWindowWatch::changed, this, &HostMenuWatch::windowsChanged);
    m_windows->start();
}

void HostMenuWatch::windowsChanged(bool areShown)
{
    if (!areShown) {
        forget();
        return;
    }
    m_limit.stop();
    begin();
}

void HostMenuWatch::begin()
{
    if (!m_menu)
        m_menu = m_tracking.beginOnDesktop();
}

void HostMenuWatch::forget()
{
    m_limit.stop();
    m_windows.reset();
    if (!m_host.isEmpty())
        m_hosts.removeWatchedService(m_host);
    m_host.clear();
    // This comes last: the receiver of the end may begin anew, or end this object.
    const auto menu = std::move(m_menu);
}

} // namespace orvane
