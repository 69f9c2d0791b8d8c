#include "OrvaneCore/Windows/ScreenGeometry.h"

#include "Platform/Platform.h"

#include <algorithm>

namespace orvane::ScreenGeometry {

namespace {

Point flipped(Point point)
{
    return {point.x, primaryHeight() - point.y};
}

/// The far corner in one space is the origin in the other.
Rect flipped(const Rect& rect)
{
    return {{rect.minX(), primaryHeight() - rect.maxY()}, rect.size};
}

bool isNumber(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Float:
    case QMetaType::Double:
        return true;
    default:
        return false;
    }
}

} // namespace

double primaryHeight()
{
    const Screens& displays = platform().screens;
    const QList<Screen> screens = displays.screens();
    const auto atOrigin =
        std::ranges::find(screens, Point{0, 0}, [](const Screen& s) { return s.frame.origin; });
    if (atOrigin != screens.end())
        return atOrigin->frame.height();
    const std::optional<Screen> main = displays.mainScreen();
    return main ? main->frame.height() : 0;
}

Point cocoaPointFromAX(Point point)
{
    return flipped(point);
}

Point axPointFromCocoa(Point point)
{
    return flipped(point);
}

Rect cocoaRectFromAX(const Rect& rect)
{
    return flipped(rect);
}

Rect axRectFromCocoa(const Rect& rect)
{
    return flipped(rect);
}

std::optional<Screen> screenForAXPoint(Point point)
{
    const Point cocoa = cocoaPointFromAX(point);
    const QList<Screen> screens = platform().screens.screens();
    const auto found =
        std::ranges::find_if(screens, [&](const Screen& s) { return s.frame.contains(cocoa); });
    return found == screens.end() ? std::nullopt : std::optional(*found);
}

std::uint32_t displayID(const Screen& screen)
{
    const QVariant number = screen.deviceDescription.value(Screen::screenNumberKey());
    return isNumber(number) ? number.toUInt() : 0;
}

} // namespace orvane::ScreenGeometry
