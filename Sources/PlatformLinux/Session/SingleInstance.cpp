#include "PlatformLinux/Session/SingleInstance.h"

#include "Platform/LogSink.h"

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCall>

namespace orvane {

namespace {

const QString busName = QStringLiteral("net.lindenrow.orvane");
const QString objectPath = QStringLiteral("/net/lindenrow/orvane");
const QString interfaceName = QStringLiteral("org.freedesktop.Application");

} // namespace

class FreedesktopApplicationAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    explicit FreedesktopApplicationAdaptor(SingleInstance* owner)
        : QDBusAbstractAdaptor(owner), m_owner(owner)
    {
    }

public Q_SLOTS:
    void Activate(const QVariantMap&) { m_owner->m_activated(); }
    void Open(const QStringList&, const QVariantMap&) { m_owner->m_activated(); }
    void ActivateAction(const QString&, const QVariantList&, const QVariantMap&) { m_owner->m_activated(); }

private:
    SingleInstance* m_owner;
};

SingleInstance::SingleInstance(LogSink& log) : m_log(log) {}
SingleInstance::~SingleInstance()
{
    release();
}

SingleInstance::Claim SingleInstance::claim(Application::StartedBy starter, std::function<void()> activated)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        m_log.write(LogLevel::notice, QStringLiteral("net.lindenrow.orvane"), QStringLiteral("Application"),
                    QStringLiteral("There is no session bus: a second start can't reach this one, and the "
                                   "desktop's services can't either"));
        return Claim::unavailable;
    }

    // The object is exported before the name is taken, so that a caller of the name finds it.
    m_activated = std::move(activated);
    new FreedesktopApplicationAdaptor(this);
    bus.registerObject(objectPath, this, QDBusConnection::ExportAdaptors);
    const auto reply = bus.interface()->registerService(busName, QDBusConnectionInterface::DontQueueService,
                                                        QDBusConnectionInterface::DontAllowReplacement);
    if (reply.isValid() && reply.value() == QDBusConnectionInterface::ServiceRegistered) {
        m_claimed = true;
        return Claim::claimed;
    }

    bus.unregisterObject(objectPath);
    if (starter == Application::StartedBy::session)
        return Claim::leftAlone;
    QDBusMessage call =
        QDBusMessage::createMethodCall(busName, objectPath, interfaceName, QStringLiteral("Activate"));
    call.setAutoStartService(false);
    call << QVariantMap();
    constexpr int longestWaitMs = 3000;
    const QDBusMessage answer = bus.call(call, QDBus::Block, longestWaitMs);
    if (answer.type() == QDBusMessage::ErrorMessage) {
        m_log.write(LogLevel::error, QStringLiteral("net.lindenrow.orvane"), QStringLiteral("Application"),
                    QStringLiteral("Orvane runs already but doesn't answer (%1). End that process and start "
                                   "again")
                        .arg(answer.errorName()));
        return Claim::unanswered;
    }
    return Claim::handedOver;
}

void SingleInstance::release()
{
    if (!m_claimed)
        return;
    m_claimed = false;
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.unregisterObject(objectPath);
    bus.unregisterService(busName);
}

} // namespace orvane

#include "SingleInstance.moc"
