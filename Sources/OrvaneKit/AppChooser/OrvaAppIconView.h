// The icon of a program, as the desktop draws it.
#pragma once

#include <QIcon>
#include <QString>

class QWidget;

namespace orvane {

/// `iconName` is a name in the desktop's theme or an absolute path; where it is neither, the icon of programs
/// in general stands in. Hidden from assistive technology: the program's name stands beside it.
struct OrvaAppIcon {
    QString iconName;
    int side = 20; // points
};

[[nodiscard]] QIcon orvaAppIcon(const QString& iconName);
QWidget* makeOrvaWidget(const OrvaAppIcon& icon);

} // namespace orvane
