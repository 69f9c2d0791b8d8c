#include "PlatformLinux/Session/SessionInhibitor.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>

#include <optional>

namespace orvane {

/// The service's answer may come after the inhibitor has ended; then it is taken back at once.
struct SessionInhibitor::Hold {
    Service service;
    std::optional<uint> cookie = {};
    bool ended = false;

    void release()
    {
        ended = true;
        if (!cookie)
            return;
        QDBusMessage call = QDBusMessage::createMethodCall(service.name, service.path, service.interface,
                                                           service.releaseMethod);
        call << *cookie;
        QDBusConnection::sessionBus().send(call);
        cookie.reset();
    }
};

SessionInhibitor::SessionInhibitor(Service service, QVariantList arguments)
    : m_service(std::move(service)), m_arguments(std::move(arguments))
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    m_watcher =
        std::make_unique<QDBusServiceWatcher>(m_service.name, bus, QDBusServiceWatcher::WatchForOwnerChange);
    QObject::connect(m_watcher.get(), &QDBusServiceWatcher::serviceOwnerChanged, m_watcher.get(),
                     [this](const QString&, const QString&, const QString& owner) {
                         m_hold.reset(); // it ended with the one that gave it
                         if (!owner.isEmpty())
                             ask();
                     });
    ask();
}

SessionInhibitor::~SessionInhibitor()
{
    if (m_hold)
        m_hold->release();
}

void SessionInhibitor::ask()
{
    QDBusMessage call = QDBusMessage::createMethodCall(m_service.name, m_service.path, m_service.interface,
                                                       QStringLiteral("Inhibit"));
    call.setAutoStartService(false);
    call.setArguments(m_arguments);
    m_hold = std::make_shared<Hold>(Hold{m_service});
    auto* watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call));
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [hold = m_hold, watcher] {
        const QDBusPendingReply<uint> reply = *watcher;
        watcher->deleteLater();
        if (reply.isError())
            return; // this desktop has no such service, or not yet
        hold->cookie = reply.value();
        if (hold->ended)
            hold->release();
    });
}

} // namespace orvane
