#include "PlatformLinux/Screens/X11Screens.h"

#include "Platform/NotificationCenter.h"
#include "PlatformLinux/Screens/ScreenWatch.h"

namespace orvane {

X11Screens::X11Screens(NotificationCenter& center) : m_center(center) {}
X11Screens::~X11Screens() = default;

ScreenWatch& X11Screens::watch() const
{
    if (!m_watch) {
        m_watch = std::make_unique<ScreenWatch>();
        QObject::connect(m_watch.get(), &ScreenWatch::changed, m_watch.get(),
                         [&center = m_center] { center.post(didChangeScreenParametersNotification()); });
    }
    return *m_watch;
}

QList<Screen> X11Screens::screens() const
{
    return watch().screens();
}

std::optional<Screen> X11Screens::mainScreen() const
{
    const QList<Screen>& list = watch().screens();
    return list.isEmpty() ? std::nullopt : std::optional(list.at(watch().activeIndex()));
}

QRectF X11Screens::windowGeometry(const Rect& frame) const
{
    const Rect toolkit = space().toolkitFromCocoa(frame);
    return {toolkit.minX(), toolkit.minY(), toolkit.width(), toolkit.height()};
}

Rect X11Screens::frameOfWindow(const QRectF& geometry) const
{
    return space().cocoaFromToolkit({{geometry.x(), geometry.y()}, {geometry.width(), geometry.height()}});
}

const ScreenSpace& X11Screens::space() const
{
    return watch().space();
}

} // namespace orvane
