#include "PlatformLinux/Tray/StatusNotifierItem.h"

#include "PlatformLinux/Tray/StatusNotifierNames.h"
#include "PlatformLinux/X11/ApplicationLink.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace orvane {

StatusNotifierItem::StatusNotifierItem(StatusItemContent content, TrayTint tint, ClickHandler clicked,
                                       DBusMenuExporter::Source menuSource, MenuTracking* tracking)
    : m_content(std::move(content)),
      m_tint(tint),
      m_clicked(std::move(clicked)),
      m_menu(std::move(menuSource)),
      m_tracking(tracking)
{
    registerStatusNotifierTypes();
    // A name is never used twice: the bus may still be busy with the end of an earlier connection.
    static int count = 0;
    m_name = QStringLiteral("org.kde.StatusNotifierItem-%1-%2")
                 .arg(QCoreApplication::applicationPid())
                 .arg(++count);
    connect(m_link.get(), &SessionBusLink::ready, this, &StatusNotifierItem::exportItem);
    connect(m_link.get(), &SessionBusLink::failed, this, &StatusNotifierItem::lost);
    connect(m_link.get(), &SessionBusLink::lost, this, &StatusNotifierItem::lost);
    m_link->open();
}

StatusNotifierItem::~StatusNotifierItem()
{
    // The connection closes after this: calls that wait to be delivered to the objects are answered with an
    // error when the objects end, and the library does so without looking whether it still can.
    if (!m_registration) {
        const std::shared_ptr<SessionBusLink> link(std::move(m_link));
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [link] {}, Qt::QueuedConnection);
        return;
    }
    // A watcher that adds a name whose owner is gone by then never drops it again. So the name is kept
    // without an object until the watcher has answered.
    SessionBusLink* link = m_link.release();
    link->setParent(QCoreApplication::instance());
    connect(m_registration, &QDBusPendingCallWatcher::finished, link, &QObject::deleteLater);
}

void StatusNotifierItem::exportItem()
{
    QDBusConnection& bus = m_link->bus();
    watchHostMenu();
    bus.registerObject(sni::menuPath, &m_menu, QDBusConnection::ExportScriptableContents);
    bus.registerObject(sni::itemPath, this, QDBusConnection::ExportScriptableContents);

    auto call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("RequestName"));
    constexpr uint doNotQueue = 4;
    call << m_name << doNotQueue;
    auto* pending = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending] {
        pending->deleteLater();
        constexpr uint primaryOwner = 1;
        const QDBusPendingReply<uint> reply = *pending;
        // Sandboxes refuse well-known names but allow the connection's own one.
        if (!reply.isValid() || reply.value() != primaryOwner)
            m_name = m_link->bus().baseService();
        m_hasName = true;
        registerNow();
    });
}

void StatusNotifierItem::watchHostMenu()
{
    if (!m_tracking)
        return;
    m_hostMenu = std::make_unique<HostMenuWatch>(*m_tracking, m_link->bus());
    HostMenuWatch* watch = m_hostMenu.get();
    using Report = HostMenuWatch::Report;
    const auto passOn = [&](auto signal, Report what) {
        connect(&m_menu, signal, watch,
                [watch, what](const QString& caller) { watch->report(caller, what); });
    };
    passOn(&DBusMenuExporter::aboutToShow, Report::aboutToShow);
    passOn(&DBusMenuExporter::opened, Report::opened);
    passOn(&DBusMenuExporter::closed, Report::closed);
    passOn(&DBusMenuExporter::clicked, Report::clicked);
}

void StatusNotifierItem::registerWith(const QString& watcher)
{
    if (watcher == m_watcher)
        return;
    m_watcher = watcher;
    registerNow();
}

void StatusNotifierItem::registerNow()
{
    if (!m_hasName || m_watcher.isEmpty())
        return;
    auto call = QDBusMessage::createMethodCall(m_watcher, sni::watcherPath, sni::watcherInterface,
                                               QStringLiteral("RegisterStatusNotifierItem"));
    call << m_name;
    call.setAutoStartService(false);
    // When a watcher refuses or vanishes, nothing has to be done: the item registers with the next one.
    m_link->bus().asyncCall(call);

    // The watcher answers before it has looked who owns the name. A question sent after the registration is
    // answered when it has.
    auto question = QDBusMessage::createMethodCall(m_watcher, sni::watcherPath,
                                                   QStringLiteral("org.freedesktop.DBus.Properties"),
                                                   QStringLiteral("Get"));
    question << sni::watcherInterface << QStringLiteral("ProtocolVersion");
    question.setAutoStartService(false);
    auto* registration = new QDBusPendingCallWatcher(m_link->bus().asyncCall(question), m_link.get());
    m_registration = registration;
    connect(registration, &QDBusPendingCallWatcher::finished, this, [this, registration] {
        if (m_registration == registration)
            m_registration.clear();
    });
    connect(registration, &QDBusPendingCallWatcher::finished, registration, &QObject::deleteLater);
}

void StatusNotifierItem::setContent(const StatusItemContent& content)
{
    const StatusItemContent before = std::exchange(m_content, content);
    const bool imageChanged = before.imageRevision != content.imageRevision;
    const bool toolTipChanged = before.toolTip != content.toolTip;
    const bool menuChanged = before.menuAttached != content.menuAttached;
    if (imageChanged) {
        forgetPictures();
        Q_EMIT NewIcon();
    }
    if (toolTipChanged)
        Q_EMIT NewToolTip();
    if (before.title() != content.title())
        Q_EMIT NewTitle();
    if (menuChanged)
        Q_EMIT NewMenu();
    // The menu depends on the same state as what the item shows.
    if (imageChanged || toolTipChanged || menuChanged)
        m_menu.invalidate();
}

void StatusNotifierItem::setTint(const TrayTint& tint)
{
    m_tint = tint;
    forgetPictures();
    Q_EMIT NewIcon();
}

QString StatusNotifierItem::category() const
{
    return QStringLiteral("ApplicationStatus");
}

QString StatusNotifierItem::id() const
{
    return m_content.autosaveName.isEmpty() ? QStringLiteral("net.lindenrow.orvane-%1").arg(m_content.number)
                                            : m_content.autosaveName;
}

QString StatusNotifierItem::title() const
{
    return m_content.title();
}

QString StatusNotifierItem::status() const
{
    return QStringLiteral("Active");
}

StatusNotifierPixmapList StatusNotifierItem::iconPixmap() const
{
    if (!m_pictures) {
        m_pictures.emplace();
        for (const int size : {22, 24, 32, 44, 48})
            m_pictures->append(
                StatusNotifierPixmap::of(tintedForTray(m_content.image, {size, size}, m_tint)));
    }
    return *m_pictures;
}

StatusNotifierToolTip StatusNotifierItem::toolTip() const
{
    return {none(), {}, m_content.toolTip, none()};
}

QDBusObjectPath StatusNotifierItem::menu() const
{
    return QDBusObjectPath(sni::menuPath);
}

void StatusNotifierItem::Activate(int, int)
{
    reportClick(StatusItemEvent::Type::leftMouseUp);
}

void StatusNotifierItem::SecondaryActivate(int, int)
{
    // The middle button means nothing to a status item.
}

void StatusNotifierItem::ContextMenu(int, int)
{
    reportClick(StatusItemEvent::Type::rightMouseUp);
}

void StatusNotifierItem::Scroll(int, const QString&)
{
    // The wheel means nothing either.
}

void StatusNotifierItem::reportClick(StatusItemEvent::Type type)
{
    if (!m_clicks.spend(std::chrono::steady_clock::now()))
        return;
    // The protocol doesn't carry the modifiers, but they are still held.
    const auto x = ApplicationLink::get();
    const auto pointer = x ? x->pointer() : std::nullopt;
    const StatusItemEvent event{type, pointer ? eventFlagsOfXState(pointer->mask) : EventFlags{0}};
    QMetaObject::invokeMethod(
        this, [clicked = m_clicked, event] { clicked(event); }, Qt::QueuedConnection);
}

} // namespace orvane
