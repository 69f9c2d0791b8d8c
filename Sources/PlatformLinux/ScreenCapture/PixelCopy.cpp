#include "PlatformLinux/ScreenCapture/PixelCopy.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <vector>

namespace orvane {

namespace {

constexpr std::uint32_t opaque = 0xFF000000;
constexpr qsizetype bytesPerPixel = 4;

std::uint32_t eightBits(std::uint32_t pixel, std::uint32_t mask)
{
    const int shift = std::countr_zero(mask);
    const std::uint32_t most = mask >> shift;
    if (most == 0)
        return 0;
    const std::uint32_t value = (pixel & mask) >> shift;
    return most == 0xFF ? value : static_cast<std::uint32_t>(std::lround(value * 255.0 / most));
}

std::uint32_t readPixel(const ReadPixels& read, std::size_t index)
{
    std::uint32_t pixel = 0;
    std::memcpy(&pixel, read.bytes + index * bytesPerPixel, sizeof pixel);
    return read.masks.convert(pixel);
}

ScreenImage emptyImage(int width, int height)
{
    return {width, height, QByteArray(qsizetype{width} * height * bytesPerPixel, Qt::Uninitialized)};
}

/// Where the pixels of a line of the picture come from: two neighbours of the line that was read, and the
/// weight of the second one, out of 256. -1 is black.
struct Sample {
    int first = -1;
    int second = -1;
    std::uint32_t weight = 0;
};

std::vector<Sample> samples(double origin, double length, int count, int place, int placeLength,
                            ScreenCapturer::Scaling scaling)
{
    const auto index = [&](double position) {
        const double at = position - place;
        return at >= 0 && at < placeLength ? static_cast<int>(at) : -1;
    };
    std::vector<Sample> list(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        const double middle = origin + (i + 0.5) * length / count;
        Sample& sample = list[static_cast<std::size_t>(i)];
        if (scaling == ScreenCapturer::Scaling::nearest) {
            sample = {index(std::floor(middle)), -1, 0};
            continue;
        }
        const double below = std::floor(middle - 0.5);
        sample = {index(below), index(below + 1),
                  static_cast<std::uint32_t>(std::lround((middle - 0.5 - below) * 256))};
    }
    return list;
}

/// Weighs all four channels at once, two in each half.
std::uint32_t mixed(std::uint32_t a, std::uint32_t b, std::uint32_t weight)
{
    constexpr std::uint32_t even = 0x00FF00FF;
    const std::uint32_t rest = 256 - weight;
    const std::uint32_t low = ((a & even) * rest + (b & even) * weight) >> 8 & even;
    const std::uint32_t high = ((a >> 8 & even) * rest + (b >> 8 & even) * weight) & ~even;
    return low | high;
}

} // namespace

std::uint32_t PixelMasks::convert(std::uint32_t pixel) const
{
    if (*this == PixelMasks{})
        return pixel | opaque;
    return opaque | eightBits(pixel, red) << 16 | eightBits(pixel, green) << 8 | eightBits(pixel, blue);
}

PixelRect PixelRect::intersected(const PixelRect& other) const
{
    const int left = std::max(x, other.x);
    const int top = std::max(y, other.y);
    const int right = std::min(x + width, other.x + other.width);
    const int bottom = std::min(y + height, other.y + other.height);
    return {left, top, std::max(0, right - left), std::max(0, bottom - top)};
}

PixelRect PixelRect::around(const Rect& rect)
{
    const int left = static_cast<int>(std::floor(rect.minX()));
    const int top = static_cast<int>(std::floor(rect.minY()));
    return {left, top, static_cast<int>(std::ceil(rect.maxX())) - left,
            static_cast<int>(std::ceil(rect.maxY())) - top};
}

ScreenImage imageOf(const ReadPixels& read)
{
    ScreenImage image = emptyImage(read.place.width, read.place.height);
    auto* to = reinterpret_cast<std::byte*>(image.pixels.data());
    const std::size_t count = static_cast<std::size_t>(image.pixels.size()) / bytesPerPixel;
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t pixel = readPixel(read, i);
        std::memcpy(to + i * bytesPerPixel, &pixel, sizeof pixel);
    }
    return image;
}

ScreenImage scaledImage(const ReadPixels& read, const Rect& source, int width, int height,
                        ScreenCapturer::Scaling scaling)
{
    ScreenImage image = emptyImage(width, height);
    auto* to = reinterpret_cast<std::byte*>(image.pixels.data());
    const auto columns =
        samples(source.minX(), source.width(), width, read.place.x, read.place.width, scaling);
    const auto rows =
        samples(source.minY(), source.height(), height, read.place.y, read.place.height, scaling);
    const auto at = [&read](int x, int y) {
        if (x < 0 || y < 0)
            return opaque;
        return readPixel(read, static_cast<std::size_t>(y) * static_cast<std::size_t>(read.place.width) +
                                   static_cast<std::size_t>(x));
    };
    for (const Sample& row : rows) {
        for (const Sample& column : columns) {
            std::uint32_t pixel = at(column.first, row.first);
            if (scaling == ScreenCapturer::Scaling::smooth) {
                const std::uint32_t upper = mixed(pixel, at(column.second, row.first), column.weight);
                const std::uint32_t lower =
                    mixed(at(column.first, row.second), at(column.second, row.second), column.weight);
                pixel = mixed(upper, lower, row.weight) | opaque;
            }
            std::memcpy(to, &pixel, sizeof pixel);
            to += bytesPerPixel;
        }
    }
    return image;
}

} // namespace orvane
