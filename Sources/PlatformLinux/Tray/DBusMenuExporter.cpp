#include "PlatformLinux/Tray/DBusMenuExporter.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QGuiApplication>
#include <QPalette>
#include <QPointer>
#include <QSet>

#include <utility>

namespace orvane {

DBusMenuExporter::DBusMenuExporter(Source source, QObject* parent)
    : QObject(parent), m_source(std::move(source))
{
    registerDBusMenuTypes();
}

QString DBusMenuExporter::textDirection() const
{
    return QGuiApplication::isRightToLeft() ? QStringLiteral("rtl") : QStringLiteral("ltr");
}

void DBusMenuExporter::invalidate()
{
    m_awaited = false;
    Q_EMIT LayoutUpdated(++m_revision, 0);
}

DBusMenuExporter::Rebuilt DBusMenuExporter::rebuild()
{
    if (!mayCost(m_rebuilds))
        return Rebuilt::same;
    const QPointer<DBusMenuExporter> self(this);
    const Menu menu = m_source();
    if (!self)
        return Rebuilt::same;
    DBusMenuLayout fresh(menu, m_nextId, QGuiApplication::palette().color(QPalette::WindowText));
    if (fresh.matches(m_layout)) {
        // The new layout reads the same: the numbers stay, so that an open menu isn't rebuilt, and lead to
        // the fresh items.
        fresh.renumber(m_layout.firstId());
        const DBusMenuLayout before = std::exchange(m_layout, std::move(fresh));
        for (int id = before.firstId(); id < before.endId(); ++id) {
            if (before.node(id)->properties != m_layout.node(id)->properties) {
                announceProperties(before);
                return Rebuilt::properties;
            }
        }
        return Rebuilt::same;
    }
    m_nextId = fresh.endId();
    m_before = std::exchange(m_layout, std::move(fresh));
    ++m_revision;
    return Rebuilt::layout;
}

void DBusMenuExporter::announceProperties(const DBusMenuLayout& before)
{
    DBusMenuItemPropertiesList updated;
    DBusMenuItemKeysList removed;
    for (int id = before.firstId(); id < before.endId(); ++id) {
        const QVariantMap& was = before.node(id)->properties;
        const QVariantMap& is = m_layout.node(id)->properties;
        QVariantMap changed;
        for (auto it = is.begin(); it != is.end(); ++it) {
            if (was.value(it.key()) != *it)
                changed.insert(it.key(), *it);
        }
        QStringList gone;
        for (auto it = was.begin(); it != was.end(); ++it) {
            if (!is.contains(it.key()))
                gone.append(it.key());
        }
        if (!changed.isEmpty())
            updated.append({id, changed});
        if (!gone.isEmpty())
            removed.append({id, gone});
    }
    Q_EMIT ItemsPropertiesUpdated(updated, removed);
}

uint DBusMenuExporter::GetLayout(int parentId, int recursionDepth, const QStringList& propertyNames,
                                 DBusMenuLayoutItem& layout)
{
    if (!isWithin(propertyNames.size(), mostNames))
        return m_revision;
    const QPointer<DBusMenuExporter> self(this);
    if (parentId == 0 && !std::exchange(m_awaited, false)) {
        rebuild();
        if (!self)
            return 0;
    }
    if (!m_layout.node(parentId)) {
        refuseId(parentId);
        return m_revision;
    }
    layout = m_layout.exported(parentId, recursionDepth, propertyNames);
    return m_revision;
}

DBusMenuItemPropertiesList DBusMenuExporter::GetGroupProperties(const QList<int>& ids,
                                                                const QStringList& propertyNames)
{
    DBusMenuItemPropertiesList list;
    if (!isWithin(ids.size(), mostItems) || !isWithin(propertyNames.size(), mostNames))
        return list;
    QSet<int> answered;
    const auto add = [&](int id) {
        const auto* node = m_layout.node(id);
        if (node && !answered.contains(id)) {
            answered.insert(id);
            list.append({id, chosenProperties(node->properties, propertyNames)});
        }
    };
    if (ids.isEmpty()) {
        add(0);
        for (int id = m_layout.firstId(); id < m_layout.endId(); ++id)
            add(id);
    }
    for (const int id : ids)
        add(id);
    return list;
}

QDBusVariant DBusMenuExporter::GetProperty(int id, const QString& name)
{
    const auto* node = m_layout.node(id);
    if (!node || !node->properties.contains(name)) {
        refuseId(id);
        return QDBusVariant(QVariant(QStringLiteral("")));
    }
    return QDBusVariant(node->properties.value(name));
}

const DBusMenuLayout::Node* DBusMenuExporter::find(int id) const
{
    if (id == 0)
        return m_layout.node(0);
    const auto* node = m_layout.node(id);
    return node ? node : m_before.node(id);
}

QString DBusMenuExporter::host() const
{
    return calledFromDBus() ? message().service() : QString();
}

void DBusMenuExporter::tellOfEvent(int id, const QString& eventId)
{
    if (eventId == QLatin1String("clicked"))
        Q_EMIT clicked(host());
    else if (id == 0 && eventId == QLatin1String("opened"))
        Q_EMIT opened(host());
    else if (id == 0 && eventId == QLatin1String("closed"))
        Q_EMIT closed(host());
}

bool DBusMenuExporter::choose(int id, const QString& eventId)
{
    const auto* node = find(id);
    if (!node)
        return false;
    tellOfEvent(id, eventId);
    const MenuItem& item = node->item;
    if (eventId != QLatin1String("clicked") || !item.action || !item.enabled || item.view ||
        item.kind != MenuItem::Kind::item || !mayCost(m_choices))
        return true;
    QMetaObject::invokeMethod(
        this, [item] { item.action(item); }, Qt::QueuedConnection);
    return true;
}

void DBusMenuExporter::Event(int id, const QString& eventId, const QDBusVariant&, uint)
{
    if (!choose(id, eventId))
        refuseId(id);
}

QList<int> DBusMenuExporter::EventGroup(const DBusMenuEventList& events)
{
    QList<int> unknown;
    if (!isWithin(events.size(), mostEvents))
        return unknown;
    for (const DBusMenuEvent& one : events) {
        if (!choose(one.id, one.eventId))
            unknown.append(one.id);
    }
    if (!events.isEmpty() && unknown.size() == events.size())
        refuseId(unknown.front());
    return unknown;
}

bool DBusMenuExporter::AboutToShow(int id)
{
    if (id != 0) {
        // Submenus were sent with the whole menu.
        if (!m_layout.node(id))
            refuseId(id);
        return false;
    }
    Q_EMIT aboutToShow(host());
    const QPointer<DBusMenuExporter> self(this);
    const Rebuilt what = rebuild();
    if (!self)
        return false;
    if (what != Rebuilt::layout)
        return false;
    m_awaited = true;
    // The answer should be enough, but the client library of GTK panels drops it when the call was
    // AboutToShowGroup(), and would show its old copy.
    Q_EMIT LayoutUpdated(m_revision, 0);
    return true;
}

QList<int> DBusMenuExporter::AboutToShowGroup(const QList<int>& ids, QList<int>& idErrors)
{
    QList<int> needUpdate;
    if (!isWithin(ids.size(), mostItems))
        return needUpdate;
    for (const int id : QSet<int>(ids.begin(), ids.end())) {
        if (!m_layout.node(id))
            idErrors.append(id);
        else if (AboutToShow(id))
            needUpdate.append(id);
    }
    return needUpdate;
}

bool DBusMenuExporter::isWithin(qsizetype length, qsizetype most)
{
    if (length <= most)
        return true;
    if (calledFromDBus())
        sendErrorReply(QDBusError::LimitsExceeded,
                       QStringLiteral("A list of %1 is too long: there may be %2").arg(length).arg(most));
    return false;
}

/// Calls of this process aren't counted: it means them.
bool DBusMenuExporter::mayCost(CallBudget& budget)
{
    return !calledFromDBus() || budget.spend(std::chrono::steady_clock::now());
}

void DBusMenuExporter::refuseId(int id)
{
    if (calledFromDBus())
        sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("No item %1 with that in this menu").arg(id));
}

} // namespace orvane
