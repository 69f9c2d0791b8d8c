// The picture behind all windows. Any thread but the main one: a call blocks, on the desktop and on the disk,
// each at most for a time limit of the platform's.
#pragma once

#include "Platform/Screens.h"

#include <QList>
#include <QString>

namespace orvane {

class DesktopPicture {
public:
    virtual ~DesktopPicture() = default;

    /// Shows a picture on displays, in their order; how it fills them stays as the user has set it. A desktop
    /// that has one picture for all displays shows it on all. Nothing is done for no displays. Throws
    /// PlatformError; displays that were done before keep the new picture.
    virtual void set(const QString& path, const QList<Screen>& screens) = 0;
};

} // namespace orvane
