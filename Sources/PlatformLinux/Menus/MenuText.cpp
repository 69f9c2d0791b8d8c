#include "PlatformLinux/Menus/MenuText.h"

namespace orvane {

QString plainMenuTitle(const QString& title)
{
    constexpr qsizetype longest = 300;
    // The way through UTF-8 and back replaces halves of surrogate pairs, which the bus refuses.
    QString plain = QString::fromUtf8(title.left(longest).toUtf8());
    if (title.size() > longest)
        plain.replace(plain.size() - 1, 1, QChar(0x2026));
    for (QChar& c : plain) {
        if (c.category() == QChar::Other_Control || c == QChar::LineSeparator ||
            c == QChar::ParagraphSeparator)
            c = u' ';
    }
    return plain;
}

QString dbusMenuLabel(const QString& title)
{
    return plainMenuTitle(title).replace(u'_', QLatin1String("__"));
}

QString widgetMenuText(const QString& title)
{
    return plainMenuTitle(title).replace(u'&', QLatin1String("&&"));
}

} // namespace orvane
