#include "PlatformLinux/Tray/StatusNotifierTypes.h"

#include <QDBusMetaType>
#include <QImage>
#include <QtEndian>

namespace orvane {

StatusNotifierPixmap StatusNotifierPixmap::of(const QImage& image)
{
    const QImage argb = image.convertToFormat(QImage::Format_ARGB32);
    StatusNotifierPixmap pixmap{argb.width(), argb.height(),
                                QByteArray(argb.sizeInBytes(), Qt::Uninitialized)};
    char* to = pixmap.bytes.data();
    for (int y = 0; y < argb.height(); ++y, to += qsizetype{4} * argb.width())
        qToBigEndian<quint32>(argb.constScanLine(y), argb.width(), to);
    return pixmap;
}

QDBusArgument& operator<<(QDBusArgument& argument, const StatusNotifierPixmap& pixmap)
{
    argument.beginStructure();
    argument << pixmap.width << pixmap.height << pixmap.bytes;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, StatusNotifierPixmap& pixmap)
{
    argument.beginStructure();
    argument >> pixmap.width >> pixmap.height >> pixmap.bytes;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const StatusNotifierToolTip& toolTip)
{
    argument.beginStructure();
    argument << toolTip.iconName << toolTip.icon << toolTip.title << toolTip.description;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, StatusNotifierToolTip& toolTip)
{
    argument.beginStructure();
    argument >> toolTip.iconName >> toolTip.icon >> toolTip.title >> toolTip.description;
    argument.endStructure();
    return argument;
}

void registerStatusNotifierTypes()
{
    qDBusRegisterMetaType<StatusNotifierPixmap>();
    qDBusRegisterMetaType<StatusNotifierPixmapList>();
    qDBusRegisterMetaType<StatusNotifierToolTip>();
}

} // namespace orvane
