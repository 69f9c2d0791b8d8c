// The desktop picture by whatever draws the desktop at the moment.
#pragma once

#include "Platform/DesktopPicture.h"
#include "Platform/Pictures.h"

namespace orvane {

class LinuxDesktopPicture : public DesktopPicture {
public:
    explicit LinuxDesktopPicture(Pictures& pictures) : m_pictures(pictures) {}

    void set(const QString& path, const QList<Screen>& screens) override;

private:
    Pictures& m_pictures;
};

/// Returns the script for Plasma's shell that sets the picture on all displays.
[[nodiscard]] QString plasmaScript(const QString& path);

} // namespace orvane
