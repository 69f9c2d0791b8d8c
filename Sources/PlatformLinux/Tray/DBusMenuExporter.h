// A menu as a com.canonical.dbusmenu object (version 3); a source gives its content at each opening. Main
// thread. The operations can be called without a bus too.
//
// Any program on the bus can call it, so each call is bounded: lists that no host would send are refused, an
// item that is named twice is answered once, and calls over the bus make the menu anew, or choose from it,
// only some times in a second. Nobody can ask for more than the menu has.
#pragma once

#include "PlatformLinux/Common/CallBudget.h"
#include "PlatformLinux/Tray/DBusMenuLayout.h"

#include <QDBusContext>
#include <QObject>

#include <chrono>
#include <functional>
#include <optional>

namespace orvane {

class DBusMenuExporter : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version READ version SCRIPTABLE true)
    Q_PROPERTY(QString TextDirection READ textDirection SCRIPTABLE true)
    Q_PROPERTY(QString Status READ status SCRIPTABLE true)
    Q_PROPERTY(QStringList IconThemePath READ iconThemePath SCRIPTABLE true)

public:
    using Source = std::function<Menu()>;

    /// The longest lists that a call may have.
    static constexpr qsizetype mostItems = 1000;
    static constexpr qsizetype mostNames = 64;
    static constexpr qsizetype mostEvents = 64;

    explicit DBusMenuExporter(Source source, QObject* parent = nullptr);

    /// Tells hosts that the content may have changed. Those that keep a copy ask again.
    void invalidate();

    [[nodiscard]] uint version() const { return 3; }
    [[nodiscard]] QString textDirection() const;
    [[nodiscard]] QString status() const { return QStringLiteral("normal"); }
    [[nodiscard]] QStringList iconThemePath() const { return {}; }

public Q_SLOTS:
    // The bus finds types by the names written here, so these can't be aliases.
    Q_SCRIPTABLE uint GetLayout(int parentId, int recursionDepth, const QStringList& propertyNames,
                                orvane::DBusMenuLayoutItem& layout);
    Q_SCRIPTABLE QList<orvane::DBusMenuItemProperties> GetGroupProperties(const QList<int>& ids,
                                                                          const QStringList& propertyNames);
    Q_SCRIPTABLE QDBusVariant GetProperty(int id, const QString& name);
    Q_SCRIPTABLE void Event(int id, const QString& eventId, const QDBusVariant& data, uint timestamp);
    Q_SCRIPTABLE QList<int> EventGroup(const QList<orvane::DBusMenuEvent>& events);
    Q_SCRIPTABLE bool AboutToShow(int id);
    Q_SCRIPTABLE QList<int> AboutToShowGroup(const QList<int>& ids, QList<int>& idErrors);

Q_SIGNALS:
    Q_SCRIPTABLE void ItemsPropertiesUpdated(const QList<orvane::DBusMenuItemProperties>& updated,
                                             const QList<orvane::DBusMenuItemKeys>& removed);
    Q_SCRIPTABLE void LayoutUpdated(uint revision, int parent);
    Q_SCRIPTABLE void ItemActivationRequested(int id, uint timestamp);

    // Signals inside this process: a host, known by its unique bus name, opens, closes or uses the menu.
    void aboutToShow(const QString& host);
    void opened(const QString& host);
    void closed(const QString& host);
    void clicked(const QString& host);

private:
    enum class Rebuilt { same, properties, layout };

    Rebuilt rebuild();
    void announceProperties(const DBusMenuLayout& before);
    [[nodiscard]] const DBusMenuLayout::Node* find(int id) const;
    bool choose(int id, const QString& eventId);
    /// Empty when the call didn't come over the bus.
    [[nodiscard]] QString host() const;
    void tellOfEvent(int id, const QString& eventId);
    void refuseId(int id);
    /// True if the list is short enough; refuses the call otherwise.
    bool isWithin(qsizetype length, qsizetype most);
    bool mayCost(CallBudget& budget);

    Source m_source;
    DBusMenuLayout m_layout;
    /// The layout before the present one: a click on it may be under way.
    DBusMenuLayout m_before;
    int m_nextId = 1;
    uint m_revision = 1;
    /// True after AboutToShow() has rebuilt the menu and promised the host a new layout.
    bool m_awaited = false;
    CallBudget m_rebuilds{20, std::chrono::milliseconds(50)};
    CallBudget m_choices{20, std::chrono::milliseconds(50)};
};

} // namespace orvane
