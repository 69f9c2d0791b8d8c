#include "PlatformLinux/X11/WindowTexts.h"

#include <QByteArray>
#include <QList>

namespace orvane {

WindowClass windowClassOf(const std::string& property)
{
    const QList<QByteArray> parts = QByteArray::fromStdString(property).split('\0');
    return {QString::fromLatin1(parts.value(0)), QString::fromLatin1(parts.value(1))};
}

QString windowTitleOf(const std::string& name, const std::string& oldName)
{
    return name.empty() ? QString::fromLatin1(oldName) : QString::fromUtf8(name);
}

QString desktopEntryIDOf(const std::string& property)
{
    const QLatin1StringView suffix(".desktop");
    QString id = QString::fromStdString(property).section(u'/', -1);
    if (id.endsWith(suffix))
        id.chop(suffix.size());
    return id;
}

} // namespace orvane
