// A status item as an org.kde.StatusNotifierItem object, on a bus connection of its own: hosts drop an item
// when its connection closes, and by no other means. Main thread; never waits for the bus.
#pragma once

#include "PlatformLinux/Common/CallBudget.h"
#include "PlatformLinux/Common/SessionBusLink.h"
#include "PlatformLinux/Menus/TemplateTint.h"
#include "PlatformLinux/Tray/DBusMenuExporter.h"
#include "PlatformLinux/Tray/HostMenuWatch.h"
#include "PlatformLinux/Tray/StatusItemContent.h"
#include "PlatformLinux/Tray/StatusNotifierTypes.h"

#include <QDBusObjectPath>
#include <QPointer>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

class QDBusPendingCallWatcher;

namespace orvane {

class StatusNotifierItem : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category SCRIPTABLE true)
    Q_PROPERTY(QString Id READ id SCRIPTABLE true)
    Q_PROPERTY(QString Title READ title SCRIPTABLE true)
    Q_PROPERTY(QString Status READ status SCRIPTABLE true)
    Q_PROPERTY(int WindowId READ windowId SCRIPTABLE true)
    Q_PROPERTY(QString IconThemePath READ none SCRIPTABLE true)
    Q_PROPERTY(QString IconName READ none SCRIPTABLE true)
    Q_PROPERTY(QList<orvane::StatusNotifierPixmap> IconPixmap READ iconPixmap SCRIPTABLE true)
    Q_PROPERTY(QString IconAccessibleDesc READ title SCRIPTABLE true)
    Q_PROPERTY(QString OverlayIconName READ none SCRIPTABLE true)
    Q_PROPERTY(QList<orvane::StatusNotifierPixmap> OverlayIconPixmap READ noPixmap SCRIPTABLE true)
    Q_PROPERTY(QString AttentionIconName READ none SCRIPTABLE true)
    Q_PROPERTY(QList<orvane::StatusNotifierPixmap> AttentionIconPixmap READ noPixmap SCRIPTABLE true)
    Q_PROPERTY(QString AttentionMovieName READ none SCRIPTABLE true)
    Q_PROPERTY(QString AttentionAccessibleDesc READ none SCRIPTABLE true)
    Q_PROPERTY(orvane::StatusNotifierToolTip ToolTip READ toolTip SCRIPTABLE true)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu SCRIPTABLE true)
    Q_PROPERTY(QDBusObjectPath Menu READ menu SCRIPTABLE true)

public:
    /// Called after the host has its answer, so that it may destroy the item.
    using ClickHandler = std::function<void(const StatusItemEvent& event)>;

    /// `menuSource` is asked for the menu of a right click whenever the host wants to draw one. `tracking` is
    /// told when the host has it open; it may be null.
    StatusNotifierItem(StatusItemContent content, TrayTint tint, ClickHandler clicked,
                       DBusMenuExporter::Source menuSource, MenuTracking* tracking);
    ~StatusNotifierItem() override;

    void setContent(const StatusItemContent& content);
    void setTint(const TrayTint& tint);
    /// Registers with a watcher, by its unique bus name; once for each name.
    void registerWith(const QString& watcher);

    [[nodiscard]] QString category() const;
    [[nodiscard]] QString id() const;
    [[nodiscard]] QString title() const;
    [[nodiscard]] QString status() const;
    [[nodiscard]] int windowId() const { return 0; }
    [[nodiscard]] QString none() const { return QStringLiteral(""); }
    [[nodiscard]] StatusNotifierPixmapList iconPixmap() const;
    [[nodiscard]] StatusNotifierPixmapList noPixmap() const { return {}; }
    [[nodiscard]] StatusNotifierToolTip toolTip() const;
    [[nodiscard]] bool itemIsMenu() const { return m_content.menuAttached; }
    [[nodiscard]] QDBusObjectPath menu() const;

public Q_SLOTS:
    // The coordinates are ignored: hosts disagree on their meaning, and the pointer is at the place of the
    // click.
    Q_SCRIPTABLE void Activate(int x, int y);
    Q_SCRIPTABLE void SecondaryActivate(int x, int y);
    Q_SCRIPTABLE void ContextMenu(int x, int y);
    Q_SCRIPTABLE void Scroll(int delta, const QString& orientation);

Q_SIGNALS:
    Q_SCRIPTABLE void NewTitle();
    Q_SCRIPTABLE void NewIcon();
    Q_SCRIPTABLE void NewToolTip();
    Q_SCRIPTABLE void NewStatus(const QString& status);
    Q_SCRIPTABLE void NewMenu();

    /// Emitted inside this process when the item has no connection to the bus, or has it no more. It stays
    /// so: another item has to take its place.
    void lost();

private:
    void exportItem();
    void watchHostMenu();
    void registerNow();
    void reportClick(StatusItemEvent::Type type);
    void forgetPictures() { m_pictures.reset(); }

    StatusItemContent m_content;
    TrayTint m_tint;
    ClickHandler m_clicked;
    DBusMenuExporter m_menu;
    MenuTracking* m_tracking;
    std::unique_ptr<HostMenuWatch> m_hostMenu;
    QString m_name;
    QString m_watcher;
    bool m_hasName = false;
    /// Clicks come as fast as a hand makes them.
    CallBudget m_clicks{20, std::chrono::milliseconds(50)};
    /// As last drawn: any program may ask for them at any rate.
    mutable std::optional<StatusNotifierPixmapList> m_pictures;
    /// Set while a registration is under way.
    QPointer<QDBusPendingCallWatcher> m_registration;
    /// Lives a moment longer than this object.
    std::unique_ptr<SessionBusLink> m_link = std::make_unique<SessionBusLink>();
};

} // namespace orvane
