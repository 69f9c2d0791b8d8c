#include "PlatformLinux/Screens/Struts.h"

#include <algorithm>
#include <limits>

namespace orvane {

namespace {

using Strip = Strut::Strip;

/// Some panels give the pixel after the last one.
constexpr double leastOverlap = 2;

bool runsAlong(const Strip& strip, double least, double greatest)
{
    return std::min(strip.last + 1, greatest) - std::max(strip.first, least) >= leastOverlap;
}

Strip wholeEdge(std::uint32_t depth)
{
    return {double(depth), 0, std::numeric_limits<double>::max()};
}

} // namespace

std::optional<Strut> strutOf(std::span<const std::uint32_t> partial, std::span<const std::uint32_t> whole)
{
    constexpr std::size_t edges = 4;
    constexpr std::size_t edgesAndRanges = 12;
    Strut strut;
    if (partial.size() >= edgesAndRanges) {
        const auto strip = [partial](std::size_t edge) {
            return Strip{double(partial[edge]), double(partial[edges + 2 * edge]),
                         double(partial[edges + 2 * edge + 1])};
        };
        strut = {strip(0), strip(1), strip(2), strip(3)};
    } else if (whole.size() >= edges) {
        strut = {wholeEdge(whole[0]), wholeEdge(whole[1]), wholeEdge(whole[2]), wholeEdge(whole[3])};
    }
    const bool keepsAny =
        strut.left.depth > 0 || strut.right.depth > 0 || strut.top.depth > 0 || strut.bottom.depth > 0;
    return keepsAny ? std::optional(strut) : std::nullopt;
}

Rect visiblePart(const Rect& display, Size root, std::span<const Strut> struts)
{
    double left = display.minX();
    double right = display.maxX();
    double top = display.minY();
    double bottom = display.maxY();
    const auto isAcross = [&](double x) { return x > display.minX() && x < display.maxX(); };
    const auto isDown = [&](double y) { return y > display.minY() && y < display.maxY(); };
    const auto runsAlongX = [&](const Strip& strip) {
        return runsAlong(strip, display.minX(), display.maxX());
    };
    const auto runsAlongY = [&](const Strip& strip) {
        return runsAlong(strip, display.minY(), display.maxY());
    };
    for (const Strut& strut : struts) {
        const double fromRight = root.width - strut.right.depth;
        const double fromBottom = root.height - strut.bottom.depth;
        if (isAcross(strut.left.depth) && runsAlongY(strut.left))
            left = std::max(left, strut.left.depth);
        if (isAcross(fromRight) && runsAlongY(strut.right))
            right = std::min(right, fromRight);
        if (isDown(strut.top.depth) && runsAlongX(strut.top))
            top = std::max(top, strut.top.depth);
        if (isDown(fromBottom) && runsAlongX(strut.bottom))
            bottom = std::min(bottom, fromBottom);
    }
    // Panels that meet leave nothing to show; they are taken for a mistake then.
    if (left >= right || top >= bottom)
        return display;
    return {{left, top}, {right - left, bottom - top}};
}

} // namespace orvane
