#include "PlatformLinux/DesktopPicture/RootPicture.h"

#include "Platform/PlatformError.h"
#include "PlatformLinux/DesktopPicture/DesktopPictureText.h"
#include "PlatformLinux/X11/XExchange.h"

#include <QImage>
#include <QRect>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <memory>
#include <string_view>

#include <xcb/randr.h>

namespace orvane {

namespace {

using namespace std::chrono_literals;

constexpr auto patience = 5s;

[[noreturn]] void fail(const QString& reason)
{
    throw PlatformError(PlatformError::Kind::failed, reason);
}

QImage imageOf(const Pictures::Pixels& pixels)
{
    return QImage(reinterpret_cast<const uchar*>(pixels.bytes.constData()), pixels.size.width,
                  pixels.size.height, qsizetype{pixels.size.width} * 4, QImage::Format_RGBA8888_Premultiplied)
        .convertToFormat(QImage::Format_RGB32);
}

/// Returns the middle of the picture in the size of a display. The worker makes it smaller; where it has to
/// be larger, that is done here.
QImage fitted(Pictures& pictures, const QString& path, QSize display)
{
    const auto size = pictures.measure(path, {});
    if (!size)
        fail(DesktopPictureText::tr("The picture can’t be read."));
    const double scale =
        std::max(double(display.width()) / size->width, double(display.height()) / size->height);
    const Pictures::Size most{static_cast<int>(std::ceil(size->width * scale)),
                              static_cast<int>(std::ceil(size->height * scale))};
    const auto pixels = pictures.thumbnail(path, most, {});
    if (!pixels)
        fail(DesktopPictureText::tr("The picture can’t be read."));
    QImage image = imageOf(*pixels);
    if (image.width() < display.width() || image.height() < display.height())
        image = image.scaled(display, Qt::KeepAspectRatioByExpanding, Qt::SmoothTransformation);
    return image.copy((image.width() - display.width()) / 2, (image.height() - display.height()) / 2,
                      display.width(), display.height());
}

/// The connection whose end leaves the new picture, and what is needed of the server.
class RootWindow {
public:
    RootWindow()
    {
        static constexpr std::array extensions{&xcb_randr_id};
        m_link = XLink::open({.extensions = extensions}, within(patience)).link;
        if (!m_link)
            fail(DesktopPictureText::tr("The X server doesn’t answer."));
        m_size = {m_link->screen().width_in_pixels, m_link->screen().height_in_pixels};
        const xcb_setup_t& setup = m_link->setup();
        const bool isOrdinary =
            setup.image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST && (depth() == 24 || depth() == 32);
        if (!isOrdinary)
            throw PlatformError(PlatformError::Kind::unsupported,
                                DesktopPictureText::tr("The X server’s pixels are of an unknown form."));
    }

    void show(Pictures& pictures, const QString& path, const QList<Screen>& screens)
    {
        const QList<QRect> places = placesOf(screens);
        const Old old = readOld();
        const xcb_pixmap_t pixmap = copyOf(old);
        for (const QRect& place : places)
            draw(pixmap, fitted(pictures, path, place.size()), place.topLeft());
        announce(pixmap);
        // Frees the memory of the old picture, which was kept for its program's sake.
        if (old.pixmap != XCB_PIXMAP_NONE && old.isKept)
            xcb_kill_client(m_link->xcb(), old.pixmap);
        // Without this the server would free the new one at the end of the connection.
        xcb_set_close_down_mode(m_link->xcb(), XCB_CLOSE_DOWN_RETAIN_PERMANENT);
        synchronize();
    }

private:
    struct Old {
        xcb_pixmap_t pixmap = XCB_PIXMAP_NONE;
        bool isKept = false; // by a program that has ended, as this one's are
    };

    [[nodiscard]] XExchange exchange() const { return {*m_link, within(patience)}; }
    [[nodiscard]] std::uint8_t depth() const { return m_link->screen().root_depth; }

    void synchronize() const
    {
        if (exchange().synchronize() != XOutcome::answered)
            fail(DesktopPictureText::tr("The X server doesn’t answer."));
    }

    [[nodiscard]] xcb_atom_t atom(std::string_view name) const
    {
        const auto reply = exchange().reply<xcb_intern_atom_reply_t>(
            xcb_intern_atom(m_link->xcb(), 0, static_cast<std::uint16_t>(name.size()), name.data()));
        return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    }

    /// Returns the places of the displays, which are known by their names, in pixels of the root window.
    [[nodiscard]] QList<QRect> placesOf(const QList<Screen>& screens) const
    {
        XExchange asking = exchange();
        const auto monitors = asking.reply<xcb_randr_get_monitors_reply_t>(
            xcb_randr_get_monitors(m_link->xcb(), m_link->root(), 1));
        QList<QRect> places;
        for (auto each = xcb_randr_get_monitors_monitors_iterator(monitors.get()); monitors && each.rem > 0;
             xcb_randr_monitor_info_next(&each)) {
            const auto name =
                asking.reply<xcb_get_atom_name_reply_t>(xcb_get_atom_name(m_link->xcb(), each.data->name));
            const QString text = name ? QString::fromUtf8(xcb_get_atom_name_name(name.get()),
                                                          xcb_get_atom_name_name_length(name.get()))
                                      : QString();
            const auto isThis = [&text](const Screen& screen) { return screen.localizedName == text; };
            if (std::ranges::any_of(screens, isThis))
                places.append({each.data->x, each.data->y, each.data->width, each.data->height});
        }
        return places;
    }

    [[nodiscard]] Old readOld() const
    {
        XExchange asking = exchange();
        const auto ofRoot =
            asking.numbers(asking.askProperty(m_link->root(), atom("_XROOTPMAP_ID"), XCB_ATOM_PIXMAP));
        const auto kept =
            asking.numbers(asking.askProperty(m_link->root(), atom("ESETROOT_PMAP_ID"), XCB_ATOM_PIXMAP));
        if (ofRoot.empty())
            return {};
        return {ofRoot.front(), !kept.empty() && kept.front() == ofRoot.front()};
    }

    /// Makes a pixmap of the root window's size that shows what another shows, as far as it does.
    [[nodiscard]] xcb_pixmap_t copyOf(const Old& old)
    {
        xcb_connection_t* const xcb = m_link->xcb();
        const xcb_pixmap_t pixmap = xcb_generate_id(xcb);
        xcb_create_pixmap(xcb, depth(), pixmap, m_link->root(), static_cast<std::uint16_t>(m_size.width()),
                          static_cast<std::uint16_t>(m_size.height()));
        m_context = xcb_generate_id(xcb);
        const std::uint32_t black = m_link->screen().black_pixel;
        xcb_create_gc(xcb, m_context, pixmap, XCB_GC_FOREGROUND, &black);
        const xcb_rectangle_t all{0, 0, static_cast<std::uint16_t>(m_size.width()),
                                  static_cast<std::uint16_t>(m_size.height())};
        xcb_poly_fill_rectangle(xcb, pixmap, m_context, 1, &all);
        if (old.pixmap == XCB_PIXMAP_NONE)
            return pixmap;
        const auto geometry = exchange().reply<xcb_get_geometry_reply_t>(xcb_get_geometry(xcb, old.pixmap));
        if (geometry && geometry->depth == depth())
            xcb_copy_area(xcb, old.pixmap, pixmap, m_context, 0, 0, 0, 0, geometry->width, geometry->height);
        return pixmap;
    }

    /// In strips that fit into a request.
    void draw(xcb_pixmap_t pixmap, const QImage& image, QPoint place) const
    {
        const qint64 longest = qint64{m_link->setup().maximum_request_length} * 4 - 64;
        const int rows = std::max<int>(1, static_cast<int>(longest / (qint64{image.width()} * 4)));
        for (int y = 0; y < image.height(); y += rows) {
            const QImage strip = image.copy(0, y, image.width(), std::min(rows, image.height() - y));
            xcb_put_image(m_link->xcb(), XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, m_context,
                          static_cast<std::uint16_t>(strip.width()),
                          static_cast<std::uint16_t>(strip.height()), static_cast<std::int16_t>(place.x()),
                          static_cast<std::int16_t>(place.y() + y), 0, depth(),
                          static_cast<std::uint32_t>(strip.sizeInBytes()), strip.constBits());
            synchronize();
        }
    }

    void announce(xcb_pixmap_t pixmap) const
    {
        xcb_connection_t* const xcb = m_link->xcb();
        for (const char* name : {"_XROOTPMAP_ID", "ESETROOT_PMAP_ID"})
            xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, m_link->root(), atom(name), XCB_ATOM_PIXMAP, 32,
                                1, &pixmap);
        xcb_change_window_attributes(xcb, m_link->root(), XCB_CW_BACK_PIXMAP, &pixmap);
        xcb_clear_area(xcb, 0, m_link->root(), 0, 0, 0, 0);
    }

    std::unique_ptr<XLink> m_link;
    QSize m_size;
    xcb_gcontext_t m_context = XCB_NONE;
};

} // namespace

void RootPicture::set(Pictures& pictures, const QString& path, const QList<Screen>& screens)
{
    RootWindow().show(pictures, path, screens);
}

} // namespace orvane
