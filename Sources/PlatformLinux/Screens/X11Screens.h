// The displays of an X server, kept up to date by its events: the monitors, and the space that panels and
// docks reserve. Nothing is listened to before the first question. Main thread.
#pragma once

#include "Platform/Screens.h"
#include "PlatformLinux/Screens/ScreenSpace.h"

#include <memory>

namespace orvane {

class NotificationCenter;
class ScreenWatch;

class X11Screens : public Screens {
public:
    /// The notification centre outlives this object.
    explicit X11Screens(NotificationCenter& center);
    ~X11Screens() override;

    [[nodiscard]] QList<Screen> screens() const override;
    [[nodiscard]] std::optional<Screen> mainScreen() const override;
    [[nodiscard]] QRectF windowGeometry(const Rect& frame) const override;
    [[nodiscard]] Rect frameOfWindow(const QRectF& geometry) const override;

    /// Converts between the server's pixels and the points of the displays at the present moment.
    [[nodiscard]] const ScreenSpace& space() const;
    [[nodiscard]] bool isListening() const { return m_watch != nullptr; }

private:
    [[nodiscard]] ScreenWatch& watch() const;

    NotificationCenter& m_center;
    mutable std::unique_ptr<ScreenWatch> m_watch;
};

} // namespace orvane
