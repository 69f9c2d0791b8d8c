// The texts of the desktop picture, for translation.
#pragma once

#include <QCoreApplication>

namespace orvane {

struct DesktopPictureText {
    Q_DECLARE_TR_FUNCTIONS(DesktopPictureText)
};

} // namespace orvane
