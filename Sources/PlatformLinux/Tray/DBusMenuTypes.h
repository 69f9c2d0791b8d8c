// The structures that com.canonical.dbusmenu sends.
#pragma once

#include <QDBusArgument>
#include <QDBusVariant>
#include <QList>
#include <QStringList>
#include <QVariantMap>

#include <vector>

namespace orvane {

/// (ia{sv})
struct DBusMenuItemProperties {
    int id = 0;
    QVariantMap properties;
};
using DBusMenuItemPropertiesList = QList<DBusMenuItemProperties>;

/// (ias)
struct DBusMenuItemKeys {
    int id = 0;
    QStringList names;
};
using DBusMenuItemKeysList = QList<DBusMenuItemKeys>;

/// (ia{sv}av), whose variants are the same again
struct DBusMenuLayoutItem {
    int id = 0;
    QVariantMap properties;
    std::vector<DBusMenuLayoutItem> children;
};

/// (isvu)
struct DBusMenuEvent {
    int id = 0;
    QString eventId;
    QDBusVariant data;
    uint timestamp = 0;
};
using DBusMenuEventList = QList<DBusMenuEvent>;

/// aas
using DBusMenuShortcut = QList<QStringList>;

QDBusArgument& operator<<(QDBusArgument& argument, const DBusMenuItemProperties& item);
const QDBusArgument& operator>>(const QDBusArgument& argument, DBusMenuItemProperties& item);
QDBusArgument& operator<<(QDBusArgument& argument, const DBusMenuItemKeys& item);
const QDBusArgument& operator>>(const QDBusArgument& argument, DBusMenuItemKeys& item);
QDBusArgument& operator<<(QDBusArgument& argument, const DBusMenuLayoutItem& item);
const QDBusArgument& operator>>(const QDBusArgument& argument, DBusMenuLayoutItem& item);
QDBusArgument& operator<<(QDBusArgument& argument, const DBusMenuEvent& event);
const QDBusArgument& operator>>(const QDBusArgument& argument, DBusMenuEvent& event);

/// Has to be called before any of these is sent or received; more than once does no harm.
void registerDBusMenuTypes();

} // namespace orvane

Q_DECLARE_METATYPE(orvane::DBusMenuItemProperties)
Q_DECLARE_METATYPE(orvane::DBusMenuItemKeys)
Q_DECLARE_METATYPE(orvane::DBusMenuLayoutItem)
Q_DECLARE_METATYPE(orvane::DBusMenuEvent)
