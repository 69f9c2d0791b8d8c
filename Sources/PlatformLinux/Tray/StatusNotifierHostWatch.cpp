#include "PlatformLinux/Tray/StatusNotifierHostWatch.h"

#include "PlatformLinux/Tray/StatusNotifierNames.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

#include <algorithm>

namespace orvane {

namespace {

const auto daemonName = QStringLiteral("org.freedesktop.DBus");
const auto daemonPath = QStringLiteral("/org/freedesktop/DBus");

/// The pauses before a lost connection is made anew.
constexpr std::chrono::milliseconds firstReturnPause(100);
constexpr std::chrono::milliseconds longestReturnPause(60'000);
/// A bus that can't be reached this often, within some minutes, has gone for good.
constexpr int mostFailures = 12;

} // namespace

StatusNotifierHostWatch::StatusNotifierHostWatch(QObject* parent)
    : QObject(parent), m_returnPause(firstReturnPause)
{
    m_return.setSingleShot(true);
    connect(&m_return, &QTimer::timeout, this, &StatusNotifierHostWatch::openLink);
    openLink();
}

void StatusNotifierHostWatch::openLink()
{
    m_link = std::make_unique<SessionBusLink>();
    connect(m_link.get(), &SessionBusLink::ready, this, &StatusNotifierHostWatch::busReady);
    connect(m_link.get(), &SessionBusLink::lost, this, &StatusNotifierHostWatch::linkIsLost,
            Qt::QueuedConnection);
    connect(m_link.get(), &SessionBusLink::failed, this, [this] {
        m_bus = Bus::none;
        if (m_wasOpen && ++m_failures < mostFailures)
            tryAgainLater();
        settle(State::absent);
    });
    m_link->open();
}

/// The host is where it was, for all that is known: only this connection is gone. The pauses grow while the
/// losses follow each other.
void StatusNotifierHostWatch::linkIsLost()
{
    ++m_question;
    m_link.reset();
    const auto now = std::chrono::steady_clock::now();
    if (now > m_lastLoss + 2 * longestReturnPause)
        m_returnPause = firstReturnPause;
    m_lastLoss = now;
    tryAgainLater();
}

void StatusNotifierHostWatch::tryAgainLater()
{
    m_return.start(m_returnPause);
    m_returnPause = std::min(m_returnPause * 2, longestReturnPause);
}

void StatusNotifierHostWatch::busReady()
{
    m_bus = Bus::open;
    m_wasOpen = true;
    m_failures = 0;
    QDBusConnection& bus = m_link->bus();
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
    auto* pending = new QDBusPendingCallWatcher(m_link->bus().asyncCall(call), this);
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
    auto* pending = new QDBusPendingCallWatcher(m_link->bus().asyncCall(call), this);
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
