#include "PlatformLinux/Session/ScreenSaverInhibitor.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QGuiApplication>

#include <optional>

#include <X11/Xlib.h>
#include <X11/extensions/scrnsaver.h>

namespace orvane {

namespace {

const QString serviceName = QStringLiteral("org.freedesktop.ScreenSaver");

QDBusMessage serviceCall(const QString& method)
{
    return QDBusMessage::createMethodCall(serviceName, QStringLiteral("/org/freedesktop/ScreenSaver"),
                                          serviceName, method);
}

/// The server counts suspensions by connection, so each of ours has to be undone once.
bool suspendServer(bool suspend)
{
    const auto* x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    if (!x11)
        return false;
    int eventBase = 0;
    int errorBase = 0;
    if (!XScreenSaverQueryExtension(x11->display(), &eventBase, &errorBase))
        return false;
    XScreenSaverSuspend(x11->display(), suspend ? True : False);
    XFlush(x11->display());
    return true;
}

} // namespace

/// The service's answer may come after the inhibitor has ended; then it is taken back at once.
struct ScreenSaverInhibitor::ServiceCookie {
    std::optional<uint> cookie;
    bool ended = false;

    void release()
    {
        ended = true;
        if (!cookie)
            return;
        QDBusMessage call = serviceCall(QStringLiteral("UnInhibit"));
        call << *cookie;
        QDBusConnection::sessionBus().send(call);
        cookie.reset();
    }
};

std::unique_ptr<ScreenSaverInhibitor> ScreenSaverInhibitor::create(const QString& applicationName,
                                                                   const QString& reason)
{
    std::unique_ptr<ScreenSaverInhibitor> inhibitor(new ScreenSaverInhibitor);
    inhibitor->m_suspendedServer = suspendServer(true);
    inhibitor->m_service = askService(applicationName, reason);
    if (!inhibitor->m_suspendedServer && !inhibitor->m_service)
        return nullptr;
    return inhibitor;
}

ScreenSaverInhibitor::~ScreenSaverInhibitor()
{
    if (m_suspendedServer)
        suspendServer(false);
    if (m_service)
        m_service->release();
}

std::shared_ptr<ScreenSaverInhibitor::ServiceCookie>
ScreenSaverInhibitor::askService(const QString& applicationName, const QString& reason)
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return nullptr;
    auto state = std::make_shared<ServiceCookie>();
    QDBusMessage call = serviceCall(QStringLiteral("Inhibit"));
    call.setAutoStartService(false);
    call << applicationName << reason;
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call));
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [state, watcher] {
        const QDBusPendingReply<uint> reply = *watcher;
        watcher->deleteLater();
        if (reply.isError())
            return; // this desktop has no such service
        state->cookie = reply.value();
        if (state->ended)
            state->release();
    });
    return state;
}

} // namespace orvane
