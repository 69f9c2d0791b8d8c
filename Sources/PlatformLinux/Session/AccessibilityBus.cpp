#include "PlatformLinux/Session/AccessibilityBus.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

namespace orvane {

namespace {

const QString serviceName = QStringLiteral("org.a11y.Bus");
const QString objectPath = QStringLiteral("/org/a11y/bus");
const QString statusInterface = QStringLiteral("org.a11y.Status");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

QDBusMessage propertyCall(const QString& method)
{
    auto call = QDBusMessage::createMethodCall(serviceName, objectPath, propertiesInterface, method);
    call << statusInterface << QStringLiteral("IsEnabled");
    return call;
}

QDBusMessage question()
{
    auto call = propertyCall(QStringLiteral("Get"));
    call.setAutoStartService(false); // a service that has to be started isn't enabled
    return call;
}

bool valueOf(const QDBusPendingReply<QDBusVariant>& reply)
{
    return reply.isValid() && reply.value().variant().toBool();
}

} // namespace

AccessibilityBus::AccessibilityBus(QDBusConnection session) : m_session(std::move(session)) {}

bool AccessibilityBus::isEnabled()
{
    if (!m_listens && m_session.isConnected()) {
        listen();
        constexpr int longestWaitMs = 150;
        const QDBusMessage answer = m_session.call(question(), QDBus::Block, longestWaitMs);
        m_isEnabled = valueOf(QDBusPendingCall::fromCompletedCall(answer));
        if (answer.type() == QDBusMessage::ErrorMessage)
            ask(); // the bus may only have been slow
    }
    return m_isEnabled;
}

void AccessibilityBus::enable()
{
    auto call = propertyCall(QStringLiteral("Set"));
    call << QVariant::fromValue(QDBusVariant(true));
    auto* pending = new QDBusPendingCallWatcher(m_session.asyncCall(call), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending] {
        pending->deleteLater();
        ask();
    });
}

void AccessibilityBus::listen()
{
    m_listens = true;
    // No sender is named: naming one makes the library look up its owner and wait for the answer.
    m_session.connect(QString(), objectPath, propertiesInterface, QStringLiteral("PropertiesChanged"),
                      {statusInterface}, QString(), this, SLOT(ask()));
    m_session.connect(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                      QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameOwnerChanged"),
                      {serviceName}, QString(), this, SLOT(ask()));
}

void AccessibilityBus::ask()
{
    auto* pending = new QDBusPendingCallWatcher(m_session.asyncCall(question()), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending, number = ++m_question] {
        pending->deleteLater();
        if (number == m_question)
            m_isEnabled = valueOf(*pending);
    });
}

} // namespace orvane
