// Displays that a test arranges. At first there is one of 1440 by 900 with a menu bar of 24 and a dock of 70
// points.
#pragma once

#include "Platform/NotificationCenter.h"
#include "Platform/Screens.h"

namespace orvane {

class FakeScreens : public Screens {
public:
    explicit FakeScreens(NotificationCenter& center) : m_center(center) {}

    static Screen screen(std::uint32_t number, Rect frame, Rect visibleFrame)
    {
        return {.frame = frame,
                .visibleFrame = visibleFrame,
                .localizedName = QStringLiteral("Display %1").arg(number),
                .deviceDescription = {{Screen::screenNumberKey(), number}}};
    }

    [[nodiscard]] QList<Screen> screens() const override { return list; }
    [[nodiscard]] std::optional<Screen> mainScreen() const override
    {
        if (main)
            return main;
        return list.isEmpty() ? std::nullopt : std::optional(list.first());
    }
    [[nodiscard]] QRectF windowGeometry(const Rect& frame) const override
    {
        return {frame.minX(), height() - frame.maxY(), frame.width(), frame.height()};
    }
    [[nodiscard]] Rect frameOfWindow(const QRectF& geometry) const override
    {
        return {{geometry.x(), height() - geometry.bottom()}, {geometry.width(), geometry.height()}};
    }

    /// Replaces the displays and posts the notification.
    void arrange(const QList<Screen>& screens)
    {
        list = screens;
        m_center.post(didChangeScreenParametersNotification());
    }

    QList<Screen> list{screen(1, {{0, 0}, {1440, 900}}, {{0, 70}, {1440, 806}})};
    /// The display of the focused window; absent for the primary one.
    std::optional<Screen> main;

private:
    [[nodiscard]] double height() const { return list.isEmpty() ? 0 : list.first().frame.height(); }

    NotificationCenter& m_center;
};

} // namespace orvane
