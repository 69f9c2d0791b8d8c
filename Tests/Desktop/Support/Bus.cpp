#include "Desktop/Support/Bus.h"

#include <QDBusConnection>
#include <QDBusVariant>

namespace orvane::tests {

QDBusMessage ask(const QString& service, const QString& path, const QString& interface, const QString& method,
                 const QVariantList& arguments)
{
    QDBusMessage question = QDBusMessage::createMethodCall(service, path, interface, method);
    question.setArguments(arguments);
    question.setAutoStartService(false);
    return QDBusConnection::sessionBus().call(question, QDBus::Block, 5000);
}

QVariant property(const QString& service, const QString& path, const QString& interface, const QString& name)
{
    const QDBusMessage answer = ask(service, path, QStringLiteral("org.freedesktop.DBus.Properties"),
                                    QStringLiteral("Get"), {interface, name});
    if (answer.type() != QDBusMessage::ReplyMessage)
        return {};
    return answer.arguments().constFirst().value<QDBusVariant>().variant();
}

qint64 processOnSessionBus(const QString& name)
{
    const QString bus = QStringLiteral("org.freedesktop.DBus");
    const QDBusMessage answer = ask(bus, QStringLiteral("/org/freedesktop/DBus"), bus,
                                    QStringLiteral("GetConnectionUnixProcessID"), {name});
    return answer.type() == QDBusMessage::ReplyMessage ? answer.arguments().constFirst().toLongLong() : 0;
}

} // namespace orvane::tests
