#include "PlatformLinux/Session/LogindInhibitor.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>

namespace orvane {

namespace {

PowerAssertions::Status statusOf(const QDBusError& error)
{
    switch (error.type()) {
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
        return PowerAssertions::Status::timeout;
    case QDBusError::AccessDenied:
        return PowerAssertions::Status::notPermitted;
    case QDBusError::ServiceUnknown:
    case QDBusError::UnknownMethod:
    case QDBusError::Disconnected:
        return PowerAssertions::Status::unsupported;
    default:
        return PowerAssertions::Status::error;
    }
}

} // namespace

LogindInhibitor::Result LogindInhibitor::create(const QString& what, const QString& who, const QString& why)
{
    const QDBusConnection bus = QDBusConnection::systemBus();
    if (!bus.isConnected())
        return {PowerAssertions::Status::unsupported, nullptr, QStringLiteral("there is no system bus")};

    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
        QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("Inhibit"));
    call << what << who << why << QStringLiteral("block");
    constexpr int longestWaitMs = 400;
    const QDBusReply<QDBusUnixFileDescriptor> reply = bus.call(call, QDBus::Block, longestWaitMs);
    if (!reply.isValid())
        return {statusOf(reply.error()), nullptr, reply.error().message()};
    if (!reply.value().isValid())
        return {PowerAssertions::Status::error, nullptr, QStringLiteral("it gave no lock")};
    return {PowerAssertions::Status::success,
            std::unique_ptr<LogindInhibitor>(new LogindInhibitor(reply.value())),
            {}};
}

} // namespace orvane
