#include "PlatformLinux/Common/SessionBusLink.h"

#include <QCoreApplication>
#include <QFile>
#include <QThreadPool>

#include <atomic>

namespace orvane {

struct SessionBusLink::Opening {
    ~Opening()
    {
        if (connected)
            QDBusConnection::disconnectFromBus(name);
    }

    QString name;
    /// Set on the owner's thread when the connection isn't wanted any more.
    std::atomic_bool abandoned = false;
    /// Written on the pool thread, read after it has reported back.
    bool connected = false;
};

namespace {

/// Without an announced bus the library would start one of its own, which serves nobody.
bool sessionBusIsAnnounced()
{
    return !qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") ||
           QFile::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QLatin1String("/bus"));
}

QString nextName()
{
    static std::atomic_int count = 0;
    return QStringLiteral("orvane-status-%1").arg(++count);
}

} // namespace

SessionBusLink::SessionBusLink(QObject* parent) : QObject(parent) {}

SessionBusLink::~SessionBusLink()
{
    if (m_opening)
        m_opening->abandoned = true;
    m_bus.reset();
}

void SessionBusLink::open()
{
    if (m_opening)
        return;
    m_opening = std::make_shared<Opening>();
    m_opening->name = nextName();
    QThreadPool::globalInstance()->start([this, opening = m_opening] {
        if (!opening->abandoned && sessionBusIsAnnounced()) {
            const auto bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, opening->name);
            opening->connected = bus.isConnected();
            if (!opening->connected)
                QDBusConnection::disconnectFromBus(opening->name);
        }
        // By way of the application object: this link may be gone, which only its own thread can tell.
        QMetaObject::invokeMethod(
            qApp,
            [this, opening] {
                if (!opening->abandoned)
                    opened(opening);
            },
            Qt::QueuedConnection);
    });
}

void SessionBusLink::opened(const std::shared_ptr<Opening>& opening)
{
    if (!opening->connected) {
        Q_EMIT failed();
        return;
    }
    m_bus.emplace(opening->name);
    // A bus closes the connection of a program that sends it too much, and all when it ends.
    m_bus->connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                   QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                   SIGNAL(lost()));
    Q_EMIT ready();
}

} // namespace orvane
