#include "PlatformLinux/Tray/HostMenuWatch.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <chrono>
#include <utility>

namespace orvane {

namespace {

using namespace std::chrono_literals;

/// A host that was told it may show the menu does so within this time, or has only looked.
constexpr auto openingTime = 5s;
/// No menu is read for longer; a host without windows of its own may have forgotten to report the end.
constexpr auto longestOpen = 60s;

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

void HostMenuWatch::aboutToShow(const QString& host)
{
    if (m_menu && host == m_host)
        return;
    follow(host);
    if (!m_menu)
        m_limit.start(openingTime);
}

void HostMenuWatch::opened(const QString& host)
{
    follow(host);
    if (m_menu)
        return;
    begin();
    m_limit.start(longestOpen);
}

void HostMenuWatch::closed(const QString& host)
{
    if (host == m_host)
        forget();
}

void HostMenuWatch::clicked(const QString& host)
{
    // Where the menu has windows, those decide: some hosts keep it open.
    if (host == m_host && !(m_windows && m_windows->isShown()))
        forget();
}

void HostMenuWatch::follow(const QString& host)
{
    if (host == m_host)
        return;
    forget();
    m_host = host;
    m_hosts.addWatchedService(host);
    auto question = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetConnectionUnixProcessID"));
    question << host;
    auto* pending = new QDBusPendingCallWatcher(m_bus.asyncCall(question), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending, host] {
        pending->deleteLater();
        const QDBusPendingReply<uint> reply = *pending;
        if (host != m_host)
            return;
        // The host may have gone before the bus was told to watch it.
        if (reply.error().name() == QLatin1String("org.freedesktop.DBus.Error.NameHasNoOwner"))
            forget();
        else if (reply.isValid() && !m_windows)
            watchWindowsOf(reply.value());
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
