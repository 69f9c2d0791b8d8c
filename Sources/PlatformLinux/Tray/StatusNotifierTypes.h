// The structures that the StatusNotifierItem protocol sends.
#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QList>
#include <QString>

class QImage;

namespace orvane {

/// (iiay): ARGB32 in network byte order, rows without padding.
struct StatusNotifierPixmap {
    int width = 0;
    int height = 0;
    QByteArray bytes;

    static StatusNotifierPixmap of(const QImage& image);
};
using StatusNotifierPixmapList = QList<StatusNotifierPixmap>;

/// (sa(iiay)ss)
struct StatusNotifierToolTip {
    QString iconName;
    StatusNotifierPixmapList icon;
    QString title;
    QString description;
};

QDBusArgument& operator<<(QDBusArgument& argument, const StatusNotifierPixmap& pixmap);
const QDBusArgument& operator>>(const QDBusArgument& argument, StatusNotifierPixmap& pixmap);
QDBusArgument& operator<<(QDBusArgument& argument, const StatusNotifierToolTip& toolTip);
const QDBusArgument& operator>>(const QDBusArgument& argument, StatusNotifierToolTip& toolTip);

/// Has to be called before any of these is sent or received; more than once does no harm.
void registerStatusNotifierTypes();

} // namespace orvane

Q_DECLARE_METATYPE(orvane::StatusNotifierPixmap)
Q_DECLARE_METATYPE(orvane::StatusNotifierToolTip)
