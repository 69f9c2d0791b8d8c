// A piece of memory that the X server can write to. One thread.
#pragma once

#include "PlatformLinux/X11/XExchange.h"

#include <cstddef>
#include <memory>

#include <xcb/shm.h>

namespace orvane {

class SharedPixels {
public:
    /// Null when the server refuses it, or there is no memory.
    [[nodiscard]] static std::unique_ptr<SharedPixels> make(XExchange& exchange, std::size_t size);
    ~SharedPixels();
    SharedPixels(const SharedPixels&) = delete;
    SharedPixels& operator=(const SharedPixels&) = delete;

    [[nodiscard]] xcb_shm_seg_t segment() const { return m_segment; }
    [[nodiscard]] const std::byte* bytes() const { return m_bytes; }
    [[nodiscard]] std::size_t size() const { return m_size; }

private:
    SharedPixels(XLink& link, std::byte* bytes, std::size_t size)
        : m_link(link), m_bytes(bytes), m_size(size), m_segment(xcb_generate_id(link.xcb()))
    {
    }

    XLink& m_link;
    std::byte* m_bytes;
    std::size_t m_size;
    xcb_shm_seg_t m_segment;
    bool m_isAttached = false;
};

} // namespace orvane
