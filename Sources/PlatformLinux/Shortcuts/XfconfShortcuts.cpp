#include "PlatformLinux/Shortcuts/XfconfShortcuts.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>

#include <chrono>

namespace orvane {

namespace {

using namespace std::chrono_literals;

constexpr auto changesGatheringTime = 100ms;

const QString service = QStringLiteral("org.xfce.Xfconf");
const QString path = QStringLiteral("/org/xfce/Xfconf");
const QString interface = QStringLiteral("org.xfce.Xfconf");
const QString shortcutsChannel = QStringLiteral("xfce4-keyboard-shortcuts");

} // namespace

XfconfShortcuts::XfconfShortcuts()
{
    m_changesEnd.setSingleShot(true);
    m_changesEnd.setInterval(changesGatheringTime);
    connect(&m_changesEnd, &QTimer::timeout, this, &XfconfShortcuts::read);
}

void XfconfShortcuts::start(QDBusConnection* bus)
{
    if (!bus)
        return;
    m_bus = *bus;
    for (const QString& signal : {QStringLiteral("PropertyChanged"), QStringLiteral("PropertyRemoved")})
        m_bus->connect(service, path, interface, signal, {shortcutsChannel}, {}, this,
                       SLOT(noticeChange(QString)));
    auto* watcher = new QDBusServiceWatcher(service, *m_bus, QDBusServiceWatcher::WatchForRegistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, &XfconfShortcuts::read);
    read();
}

void XfconfShortcuts::noticeChange(const QString&)
{
    m_changesEnd.start();
}

void XfconfShortcuts::read()
{
    auto call = QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("GetAllProperties"));
    call.setArguments({shortcutsChannel, QStringLiteral("/")});
    call.setAutoStartService(false); // where the daemon doesn't run, no shortcuts come from it
    auto* watcher = new QDBusPendingCallWatcher(m_bus->asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<QVariantMap> reply = *watcher;
        if (!reply.isError())
            set(acceleratorsOfXfconf(reply.value()));
    });
}

} // namespace orvane
