// From the rows that an X server gives to the pixels of a ScreenImage. Pure; any thread.
#pragma once

#include "Platform/ScreenCapture.h"

#include <cstddef>
#include <cstdint>

namespace orvane {

/// The places of the three colours in a pixel of 32 bits.
struct PixelMasks {
    std::uint32_t red = 0xFF0000;
    std::uint32_t green = 0xFF00;
    std::uint32_t blue = 0xFF;

    /// Brings each colour to eight bits.
    [[nodiscard]] std::uint32_t convert(std::uint32_t pixel) const;
    friend bool operator==(const PixelMasks&, const PixelMasks&) = default;
};

/// A rectangle of whole pixels.
struct PixelRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    [[nodiscard]] bool isEmpty() const { return width <= 0 || height <= 0; }
    [[nodiscard]] PixelRect intersected(const PixelRect& other) const;
    /// Returns the smallest one that holds all of a rectangle.
    [[nodiscard]] static PixelRect around(const Rect& rect);
    friend bool operator==(const PixelRect&, const PixelRect&) = default;
};

/// Pixels as they were read: rows without gaps. The place is in the coordinates of the caller.
struct ReadPixels {
    PixelRect place;
    const std::byte* bytes = nullptr;
    PixelMasks masks;
};

[[nodiscard]] ScreenImage imageOf(const ReadPixels& read);

/// Draws `source`, in the coordinates of `read`, in another size. What wasn't read is black.
[[nodiscard]] ScreenImage scaledImage(const ReadPixels& read, const Rect& source, int width, int height,
                                      ScreenCapturer::Scaling scaling);

} // namespace orvane
