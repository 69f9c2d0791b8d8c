#include "PlatformLinux/ScreenCapture/ScreenReader.h"

#include "PlatformLinux/ScreenCapture/SharedPixels.h"

#include <array>
#include <bit>
#include <vector>

#include <sys/socket.h>
#include <xcb/randr.h>
#include <xcb/shm.h>

namespace orvane {

namespace {

constexpr std::chrono::seconds patience(3);
constexpr std::uint32_t allPlanes = ~std::uint32_t{0};
constexpr std::size_t bytesPerPixel = 4;

bool hasDisplay(const xcb_randr_get_monitors_reply_t* reply, const PixelRect& place)
{
    if (!reply)
        return false;
    for (auto at = xcb_randr_get_monitors_monitors_iterator(reply); at.rem;
         xcb_randr_monitor_info_next(&at)) {
        if (PixelRect{at.data->x, at.data->y, at.data->width, at.data->height} == place)
            return true;
    }
    return false;
}

} // namespace

std::unique_ptr<ScreenReader> ScreenReader::open(int cancellation)
{
    static const std::array extensions{&xcb_shm_id, &xcb_randr_id};
    auto opened = XLink::open({.extensions = extensions, .cancellation = cancellation}, within(patience));
    if (!opened.link)
        return nullptr;
    auto reader = std::unique_ptr<ScreenReader>(new ScreenReader(std::move(opened.link)));
    return reader->readMasks() ? std::move(reader) : nullptr;
}

ScreenReader::ScreenReader(std::unique_ptr<XLink> link) : m_link(std::move(link))
{
    m_triesToShare = canShare();
}
ScreenReader::~ScreenReader() = default;

bool ScreenReader::readMasks()
{
    const xcb_setup_t& setup = m_link->setup();
    const xcb_screen_t& screen = m_link->screen();
    // Another order of the bytes is that of a server on another machine.
    constexpr auto ownOrder =
        std::endian::native == std::endian::little ? XCB_IMAGE_ORDER_LSB_FIRST : XCB_IMAGE_ORDER_MSB_FIRST;
    if (setup.image_byte_order != ownOrder)
        return false;
    bool hasWords = false;
    for (auto formats = xcb_setup_pixmap_formats_iterator(&setup); formats.rem; xcb_format_next(&formats)) {
        hasWords =
            hasWords || (formats.data->depth == screen.root_depth && formats.data->bits_per_pixel == 32);
    }
    for (auto depths = xcb_screen_allowed_depths_iterator(&screen); depths.rem; xcb_depth_next(&depths)) {
        for (auto visuals = xcb_depth_visuals_iterator(depths.data); visuals.rem;
             xcb_visualtype_next(&visuals)) {
            const xcb_visualtype_t& visual = *visuals.data;
            if (visual.visual_id == screen.root_visual)
                m_masks = {visual.red_mask, visual.green_mask, visual.blue_mask};
        }
    }
    return hasWords;
}

/// A descriptor can't be sent over the network: the connection would break.
bool ScreenReader::canShare() const
{
    if (!m_link->extension(xcb_shm_id))
        return false;
    sockaddr_storage address{};
    socklen_t length = sizeof address;
    return ::getsockname(xcb_get_file_descriptor(m_link->xcb()), reinterpret_cast<sockaddr*>(&address),
                         &length) == 0 &&
           address.ss_family == AF_UNIX;
}

/// The memory is kept for the next picture.
SharedPixels* ScreenReader::shared(XExchange& exchange, std::size_t size)
{
    if (!m_triesToShare)
        return nullptr;
    if (m_shared && m_shared->size() >= size)
        return m_shared.get();
    m_shared.reset();
    const auto version = exchange.reply<xcb_shm_query_version_reply_t>(xcb_shm_query_version(exchange.xcb()));
    const bool takesDescriptors = version && (version->major_version > 1 ||
                                              (version->major_version == 1 && version->minor_version >= 2));
    if (takesDescriptors)
        m_shared = SharedPixels::make(exchange, size);
    m_triesToShare = m_shared != nullptr || exchange.isLate();
    return m_shared.get();
}

bool ScreenReader::read(const PixelRect& display, const PixelRect& part,
                        const std::function<void(const ReadPixels&)>& use)
{
    XExchange exchange(*m_link, within(patience));
    const auto x = static_cast<std::int16_t>(part.x);
    const auto y = static_cast<std::int16_t>(part.y);
    const auto width = static_cast<std::uint16_t>(part.width);
    const auto height = static_cast<std::uint16_t>(part.height);
    const std::size_t size = std::size_t{width} * height * bytesPerPixel;
    const SharedPixels* memory = shared(exchange, size);
    const std::byte* bytes = nullptr;
    XcbReply<xcb_get_image_reply_t> image;
    constexpr std::uint8_t activeOnes = 1;
    xcb_randr_get_monitors_cookie_t monitorsCookie;
    // The displays are asked for behind the picture: what is there then was there when it was taken.
    if (memory) {
        const auto cookie = xcb_shm_get_image(exchange.xcb(), m_link->root(), x, y, width, height, allPlanes,
                                              XCB_IMAGE_FORMAT_Z_PIXMAP, memory->segment(), 0);
        monitorsCookie = xcb_randr_get_monitors(exchange.xcb(), m_link->root(), activeOnes);
        if (exchange.reply<xcb_shm_get_image_reply_t>(cookie))
            bytes = memory->bytes();
    } else {
        const auto cookie = xcb_get_image(exchange.xcb(), XCB_IMAGE_FORMAT_Z_PIXMAP, m_link->root(), x, y,
                                          width, height, allPlanes);
        monitorsCookie = xcb_randr_get_monitors(exchange.xcb(), m_link->root(), activeOnes);
        image = exchange.reply<xcb_get_image_reply_t>(cookie);
        if (image && static_cast<std::size_t>(xcb_get_image_data_length(image.get())) >= size)
            bytes = reinterpret_cast<const std::byte*>(xcb_get_image_data(image.get()));
    }
    const auto monitors = exchange.reply<xcb_randr_get_monitors_reply_t>(monitorsCookie);
    if (!bytes || !hasDisplay(monitors.get(), display))
        return false;
    use({part, bytes, m_masks});
    return true;
}

} // namespace orvane
