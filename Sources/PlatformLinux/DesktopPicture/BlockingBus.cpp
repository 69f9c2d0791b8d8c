#include "PlatformLinux/DesktopPicture/BlockingBus.h"

#include "Platform/PlatformError.h"
#include "PlatformLinux/DesktopPicture/DesktopPictureText.h"

#include <QFile>

#include <atomic>

namespace orvane {

namespace {

constexpr int patience = 2000; // milliseconds

QString nextName()
{
    static std::atomic_int count = 0;
    return QStringLiteral("orvane-desktop-picture-%1").arg(++count);
}

/// Without an announced bus the library would start one.
QDBusConnection connection(const QString& name)
{
    const bool isAnnounced = !qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") ||
                             QFile::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QLatin1String("/bus"));
    return isAnnounced ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, name)
                       : QDBusConnection(QString());
}

} // namespace

BlockingBus::BlockingBus() : m_name(nextName()), m_bus(connection(m_name)) {}

BlockingBus::~BlockingBus()
{
    QDBusConnection::disconnectFromBus(m_name);
}

bool BlockingBus::hasOwner(const QString& name) const
{
    auto question = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameHasOwner"));
    question.setArguments({name});
    return m_bus.call(question, QDBus::Block, patience).arguments().value(0).toBool();
}

QDBusMessage BlockingBus::ask(const QString& service, const QString& path, const QString& interface,
                              const QString& method, const QVariantList& arguments) const
{
    auto question = QDBusMessage::createMethodCall(service, path, interface, method);
    question.setArguments(arguments);
    return m_bus.call(question, QDBus::Block, patience);
}

void BlockingBus::call(const QString& service, const QString& path, const QString& interface,
                       const QString& method, const QVariantList& arguments) const
{
    check(ask(service, path, interface, method, arguments));
}

void BlockingBus::check(const QDBusMessage& answer)
{
    if (answer.type() != QDBusMessage::ReplyMessage)
        throw PlatformError(
            PlatformError::Kind::failed,
            DesktopPictureText::tr("The desktop didn’t take the picture: %1").arg(answer.errorMessage()));
}

} // namespace orvane
