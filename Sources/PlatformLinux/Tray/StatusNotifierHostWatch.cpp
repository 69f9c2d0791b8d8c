#include "PlatformLinux/Tray/StatusNotifierHostWatch.h"

#include "PlatformLinux/Tray/StatusNotifierNames.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

namespace orvane {

namespace {

const auto daemonName = QStringLiteral("org.freedesktop.DBus");
const auto daemonPath = QStringLiteral("/org/freedesktop/DBus");

} // namespace

StatusNotifierHostWatch::StatusNotifierHostWatch(QObject* parent) : QObject(parent)
{
    connect(&m_link, &SessionBusLink::ready, this, &StatusNotifierHostWatch::busReady);
    connect(&m_link, &SessionBusLink::failed, this, [this] {
        m_bus = Bus::none;
        settle(State::absent);
    });
    m_link.open();
}

void StatusNotifierHostWatch::busReady()
{
    m_bus = Bus::open;
    QDBusConnection& bus = m_link.bus();
    // No sender is named: naming one makes the library look up its owner and wait for the answer.
    bus.connect(QString(), daemonPath, daemonName, QStringLiteral("NameOwnerChanged"), {sni::watcherName},
                QString(), this, SLOT(nameOwnerChanged(QString, QString, QString, QDBusMessage)));
    for (const auto& signal :
         {QStringLiteral("StatusNotifierHostRegistered"), QStringLiteral("StatusNotifierHostUnregistered")})
        bus.connect(QString(), sni::watcherPath, sni::watcherInterface, signal, this, SLOT(hostsChanged()));
    askForWatcher();
}

void StatusNotifierHostWatch::askForWatcher()
{
    auto call =
        QDBusMessage::createMethodCall(daemonName, daemonPath, daemonName, QStringLiteral("GetNameOwner"));
    call << sni::watcherName;
    auto* pending = new QDBusPendingCallWatcher(m_link.bus().asyncCall(call), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending, question = ++m_question] {
        pending->deleteLater();
        const QDBusPendingReply<QString> owner = *pending;
        if (question == m_question)
            watcherIs(owner.isValid() ? owner.value() : QString());
    });
}

void StatusNotifierHostWatch::nameOwnerChanged(const QString& name, const QString&, const QString& now,
                                               const QDBusMessage& message)
{
    if (name == sni::watcherName && message.service() == daemonName)
        watcherIs(now);
}

void StatusNotifierHostWatch::watcherIs(const QString& owner)
{
    m_watcher = owner;
    if (owner.isEmpty()) {
        ++m_question;
        settle(State::absent);
    } else {
        askForHost();
    }
}

void StatusNotifierHostWatch::hostsChanged()
{
    if (!m_watcher.isEmpty())
        askForHost();
}

void StatusNotifierHostWatch::askForHost()
{
    auto call = QDBusMessage::createMethodCall(sni::watcherName, sni::watcherPath,
                                               QStringLiteral("org.freedesktop.DBus.Properties"),
                                               QStringLiteral("Get"));
    call << sni::watcherInterface << QStringLiteral("IsStatusNotifierHostRegistered");
    call.setAutoStartService(false);
    auto* pending = new QDBusPendingCallWatcher(m_link.bus().asyncCall(call), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending, question = ++m_question] {
        pending->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *pending;
        if (question == m_question)
            settle(reply.isValid() && reply.value().variant().toBool() ? State::present : State::absent);
    });
}

void StatusNotifierHostWatch::settle(State state)
{
    m_state = state;
    Q_EMIT changed();
}

} // namespace orvane
