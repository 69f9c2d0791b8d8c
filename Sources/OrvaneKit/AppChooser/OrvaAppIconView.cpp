#include "OrvaneKit/AppChooser/OrvaAppIconView.h"

#include <QDir>
#include <QLabel>

namespace orvane {

QIcon orvaAppIcon(const QString& iconName)
{
    const QIcon icon = QDir::isAbsolutePath(iconName) ? QIcon(iconName) : QIcon::fromTheme(iconName);
    return icon.isNull() ? QIcon::fromTheme(QStringLiteral("application-x-executable")) : icon;
}

QWidget* makeOrvaWidget(const OrvaAppIcon& icon)
{
    auto* label = new QLabel;
    label->setFixedSize(icon.side, icon.side);
    label->setPixmap(
        orvaAppIcon(icon.iconName).pixmap(QSize(icon.side, icon.side), label->devicePixelRatioF()));
    return label;
}

} // namespace orvane
