// Pictures of what displays show at this moment, in their own pixels and without the pointer. Main thread,
// which never waits: pictures are taken on another thread.
//
// A picture may be absent: without the permission, when there is no such display or it went or changed in the
// middle, and when the system doesn't answer within some seconds. The reason isn't told.
#pragma once

#include "Platform/Geometry.h"

#include <QByteArray>

#include <cstdint>
#include <cstring>
#include <functional>
#include <memory>
#include <optional>

namespace orvane {

struct ScreenImage {
    int width = 0;
    int height = 0;
    /// Rows from the top without gaps, and four bytes for a pixel: a number 0xFFRRGGBB in the byte order of
    /// the machine.
    QByteArray pixels;

    /// The pixel must be inside.
    [[nodiscard]] std::uint32_t pixel(int x, int y) const
    {
        std::uint32_t value = 0;
        std::memcpy(&value, pixels.constData() + (qsizetype{y} * width + x) * 4, sizeof value);
        return value;
    }
};

/// Takes pictures, one after the other in the order in which they were asked for. Its end gives up those that
/// are outstanding: no handler is called any more.
class ScreenCapturer {
public:
    using Handler = std::function<void(std::optional<ScreenImage>)>;

    enum class Scaling { nearest, smooth };

    struct Part {
        /// In points of the display, from its upper left corner down. What is outside of the display is
        /// black.
        Rect source;
        /// The size of the picture in pixels.
        int width = 0;
        int height = 0;
        Scaling scaling = Scaling::nearest;
    };

    virtual ~ScreenCapturer() = default;

    /// `display` is the number that `Screen::deviceDescription` has. The handler is called in a later turn of
    /// the run loop; it may end the capturer.
    virtual void captureDisplay(std::uint32_t display, Handler handler) = 0;
    /// Reads only the part, so that it can be done for each frame of a moving picture.
    virtual void capturePart(std::uint32_t display, const Part& part, Handler handler) = 0;
};

class ScreenCapture {
public:
    virtual ~ScreenCapture() = default;

    /// Nothing is kept open without a capturer.
    [[nodiscard]] virtual std::unique_ptr<ScreenCapturer> makeCapturer() = 0;
};

} // namespace orvane
