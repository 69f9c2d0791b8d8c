// Reads pixels of the root window over a connection of its own, through shared memory where the server is on
// this machine. One thread.
#pragma once

#include "PlatformLinux/ScreenCapture/PixelCopy.h"
#include "PlatformLinux/X11/XLink.h"

#include <cstddef>
#include <functional>
#include <memory>

namespace orvane {

class SharedPixels;

class ScreenReader {
public:
    /// Null without a server that answers, or when its pixels haven't 32 bits. Once `cancellation` is
    /// readable, nothing is waited for any more.
    [[nodiscard]] static std::unique_ptr<ScreenReader> open(int cancellation);
    ~ScreenReader();
    ScreenReader(const ScreenReader&) = delete;
    ScreenReader& operator=(const ScreenReader&) = delete;

    /// Passes the pixels of `part` to `use`, which mustn't keep them. Both rectangles are in pixels of the
    /// root window. Returns false, without a call, when they can't be had or no display has just the place
    /// `display`.
    [[nodiscard]] bool read(const PixelRect& display, const PixelRect& part,
                            const std::function<void(const ReadPixels&)>& use);
    [[nodiscard]] bool isLost() const { return m_link->isLost(); }

private:
    explicit ScreenReader(std::unique_ptr<XLink> link);
    [[nodiscard]] bool readMasks();
    [[nodiscard]] bool canShare() const;
    SharedPixels* shared(XExchange& exchange, std::size_t size);

    std::unique_ptr<XLink> m_link;
    PixelMasks m_masks;
    /// Null where nothing can be shared.
    std::unique_ptr<SharedPixels> m_shared;
    bool m_triesToShare = false;
};

} // namespace orvane
