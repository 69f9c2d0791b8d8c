#include "PlatformLinux/Screens/ScreenSpace.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace orvane {

namespace {

using Display = ScreenSpace::Display;

Point middle(const Rect& rect)
{
    return {rect.midX(), rect.midY()};
}

/// Returns the distance of a value from a range.
double distance(double value, double least, double greatest)
{
    return std::max({0.0, least - value, value - greatest});
}

double distance(Point point, const Rect& rect)
{
    return std::hypot(distance(point.x, rect.minX(), rect.maxX()),
                      distance(point.y, rect.minY(), rect.maxY()));
}

Rect toolkitFrame(const Display& display)
{
    const Rect& pixels = display.pixels;
    return {pixels.origin, {pixels.width() / display.scale, pixels.height() / display.scale}};
}

template <typename FrameOf>
const Display* displayAt(const std::vector<Display>& displays, Point point, FrameOf frameOf)
{
    const Display* nearest = nullptr;
    double least = std::numeric_limits<double>::infinity();
    for (const Display& display : displays) {
        const Rect frame = frameOf(display);
        if (frame.contains(point))
            return &display;
        const double away = distance(point, frame);
        if (away < least) {
            least = away;
            nearest = &display;
        }
    }
    return nearest;
}

Point scaled(Point point, Point about, double factor)
{
    return {about.x + (point.x - about.x) * factor, about.y + (point.y - about.y) * factor};
}

Rect scaled(const Rect& rect, const Display* display, double factor)
{
    if (!display)
        return rect;
    return {scaled(rect.origin, display->pixels.origin, factor),
            {rect.width() * factor, rect.height() * factor}};
}

Rect moved(const Rect& rect, double x, double y)
{
    return {{rect.origin.x + x, rect.origin.y + y}, rect.size};
}

} // namespace

const Display* ScreenSpace::displayAtNative(Point native) const
{
    return displayAt(m_displays, native, [](const Display& display) { return display.pixels; });
}

const Display* ScreenSpace::displayAtToolkit(Point toolkit) const
{
    return displayAt(m_displays, toolkit, toolkitFrame);
}

Rect ScreenSpace::primaryInToolkit() const
{
    return m_displays.empty() ? Rect{} : toolkitFrame(m_displays.front());
}

Point ScreenSpace::toolkitFromNative(Point native) const
{
    const Display* display = displayAtNative(native);
    return display ? scaled(native, display->pixels.origin, 1 / display->scale) : native;
}

Point ScreenSpace::axFromNative(Point native) const
{
    const Point toolkit = toolkitFromNative(native);
    const Point corner = primaryInToolkit().origin;
    return {toolkit.x - corner.x, toolkit.y - corner.y};
}

Rect ScreenSpace::axFromNative(const Rect& native) const
{
    const Display* display = displayAtNative(middle(native));
    const Point corner = primaryInToolkit().origin;
    return moved(scaled(native, display, display ? 1 / display->scale : 1), -corner.x, -corner.y);
}

Point ScreenSpace::nativeFromAX(Point ax) const
{
    const Point corner = primaryInToolkit().origin;
    const Point toolkit{ax.x + corner.x, ax.y + corner.y};
    const Display* display = displayAtToolkit(toolkit);
    return display ? scaled(toolkit, display->pixels.origin, display->scale) : toolkit;
}

Rect ScreenSpace::nativeFromAX(const Rect& ax) const
{
    const Point corner = primaryInToolkit().origin;
    const Rect toolkit = moved(ax, corner.x, corner.y);
    const Display* display = displayAtToolkit(middle(toolkit));
    return scaled(toolkit, display, display ? display->scale : 1);
}

Point ScreenSpace::cocoaFromNative(Point native) const
{
    const Point ax = axFromNative(native);
    return {ax.x, primaryInToolkit().height() - ax.y};
}

Rect ScreenSpace::cocoaFromNative(const Rect& native) const
{
    const Rect ax = axFromNative(native);
    return {{ax.minX(), primaryInToolkit().height() - ax.maxY()}, ax.size};
}

Rect ScreenSpace::cocoaFromToolkit(const Rect& toolkit) const
{
    const Rect primary = primaryInToolkit();
    return {{toolkit.minX() - primary.minX(), primary.maxY() - toolkit.maxY()}, toolkit.size};
}

Rect ScreenSpace::toolkitFromCocoa(const Rect& cocoa) const
{
    const Rect primary = primaryInToolkit();
    return {{primary.minX() + cocoa.minX(), primary.maxY() - cocoa.maxY()}, cocoa.size};
}

Point ScreenSpace::cocoaOfPointer(Point toolkit) const
{
    const Point corner = primaryInToolkit().origin;
    Point cocoa{toolkit.x - corner.x, primaryInToolkit().height() - (toolkit.y - corner.y)};
    if (const Display* display = displayAtToolkit(toolkit)) {
        const double top = cocoaFromToolkit(toolkitFrame(*display)).maxY();
        cocoa.y = std::min(cocoa.y, top - 0.5 / display->scale);
    }
    return cocoa;
}

double ScreenSpace::scaleAtNative(Point native) const
{
    const Display* display = displayAtNative(native);
    return display ? display->scale : 1;
}

double ScreenSpace::scaleAtAX(Point ax) const
{
    const Point corner = primaryInToolkit().origin;
    const Display* display = displayAtToolkit({ax.x + corner.x, ax.y + corner.y});
    return display ? display->scale : 1;
}

} // namespace orvane
