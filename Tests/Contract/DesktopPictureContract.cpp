// The picture behind all windows: the fake one, and what a person sees on the private desktop.
#include "Contract/Support/PluggedMonitor.h"
#include "Desktop/Support/Screen.h"
#include "Fakes/FakeDesktopPicture.h"
#include "Fakes/FakeLogSink.h"
#include "Fakes/FakeScreens.h"
#include "PlatformLinux/DesktopPicture/LinuxDesktopPicture.h"
#include "PlatformLinux/DesktopPicture/RootPicture.h"
#include "PlatformLinux/Screens/X11Screens.h"
#include "PlatformLinux/Worker/WorkerPictures.h"
#include "PlatformLinux/X11/XExchange.h"
#include "Support/Eventually.h"

#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

#include <memory>

#include <gtest/gtest.h>

namespace orvane::tests {

namespace {

constexpr QColor red(200, 30, 20);
constexpr QColor blue(20, 40, 210);

bool isNear(QColor one, QColor other)
{
    return qAbs(one.red() - other.red()) < 4 && qAbs(one.green() - other.green()) < 4 &&
           qAbs(one.blue() - other.blue()) < 4;
}

/// Two displays side by side, with pictures of one colour.
class FakeDesk {
public:
    DesktopPicture& service() { return m_service; }
    QList<orvane::Screen> screens() { return m_screens.list; }
    QString file(QColor color)
    {
        const QString path = u'/' + color.name();
        m_colors.insert(path, color);
        return path;
    }
    bool shows(int index, QColor color)
    {
        const QString path = m_service.pictures.value(m_screens.list.at(index).localizedName);
        return m_colors.contains(path) && m_colors.value(path) == color;
    }

private:
    NotificationCenter m_center;
    FakeScreens m_screens{m_center};
    FakeDesktopPicture m_service;
    QMap<QString, QColor> m_colors;

public:
    FakeDesk()
    {
        m_screens.list.append(FakeScreens::screen(2, {{1440, 0}, {1280, 1000}}, {{1440, 0}, {1280, 1000}}));
    }
};

class RealDesk {
public:
    /// At first the desktop has no settings, as on the first day of a person's account.
    RealDesk()
    {
        removeSettings();
        EXPECT_TRUE(eventually(20s, [this] { return screens().size() == 2; }));
    }
    ~RealDesk() { removeSettings(); }
    RealDesk(const RealDesk&) = delete;
    RealDesk& operator=(const RealDesk&) = delete;

    DesktopPicture& service() { return m_service; }
    QList<orvane::Screen> screens() { return m_screens.screens(); }
    QString file(QColor color)
    {
        const QString path = m_folder.filePath(color.name().mid(1) + QStringLiteral(".png"));
        QImage image(160, 100, QImage::Format_RGB32);
        image.fill(color);
        EXPECT_TRUE(image.save(path));
        return path;
    }
    bool shows(int index, QColor color)
    {
        const Rect frame = screens().at(index).frame;
        const QPoint middle = m_screens.windowGeometry(frame).center().toPoint();
        return eventually(15s, [&] {
            const QImage pixel = m_screen.picture(QRect(middle, QSize(1, 1)));
            return !pixel.isNull() && isNear(pixel.pixelColor(0, 0), color);
        });
    }

private:
    static void removeSettings()
    {
        QProcess::execute(QStringLiteral("xfconf-query"),
                          {QStringLiteral("-c"), QStringLiteral("xfce4-desktop"), QStringLiteral("-p"),
                           QStringLiteral("/backdrop"), QStringLiteral("-r"), QStringLiteral("-R")});
    }

    PluggedMonitor m_second;
    NotificationCenter m_center;
    X11Screens m_screens{m_center};
    FakeLogSink m_log;
    WorkerPictures m_pictures{m_log};
    LinuxDesktopPicture m_service{m_pictures};
    QTemporaryDir m_folder;
    tests::Screen m_screen;
};

template <class Desk>
class DesktopPictureContract : public testing::Test {
protected:
    Desk desk;
};

using Desks = testing::Types<FakeDesk, RealDesk>;
TYPED_TEST_SUITE(DesktopPictureContract, Desks);

/// The root window's picture, as other programs find it.
class RootPictureLiveTest : public testing::Test {
protected:
    RootPictureLiveTest()
    {
        static constexpr std::array<xcb_extension_t*, 0> none{};
        link = XLink::open({.extensions = none}, within(10s)).link;
    }
    ~RootPictureLiveTest() override
    {
        if (const xcb_pixmap_t kept = pixmap())
            xcb_kill_client(link->xcb(), kept);
        for (const char* name : {"_XROOTPMAP_ID", "ESETROOT_PMAP_ID"})
            xcb_delete_property(link->xcb(), link->root(), atom(name));
        const std::uint32_t nothing = XCB_NONE;
        xcb_change_window_attributes(link->xcb(), link->root(), XCB_CW_BACK_PIXMAP, &nothing);
        (void)exchange().synchronize();
    }

    [[nodiscard]] XExchange exchange() const { return {*link, within(10s)}; }
    [[nodiscard]] xcb_atom_t atom(std::string_view name) const
    {
        return exchange()
            .reply<xcb_intern_atom_reply_t>(
                xcb_intern_atom(link->xcb(), 0, static_cast<std::uint16_t>(name.size()), name.data()))
            ->atom;
    }
    [[nodiscard]] xcb_pixmap_t pixmap() const
    {
        XExchange asking = exchange();
        const auto found =
            asking.numbers(asking.askProperty(link->root(), atom("_XROOTPMAP_ID"), XCB_ATOM_PIXMAP));
        return found.empty() ? xcb_pixmap_t{XCB_NONE} : found.front();
    }
    [[nodiscard]] QColor colorAt(QPoint place) const
    {
        const auto reply = exchange().reply<xcb_get_image_reply_t>(xcb_get_image(
            link->xcb(), XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap(), static_cast<std::int16_t>(place.x()),
            static_cast<std::int16_t>(place.y()), 1, 1, ~0U));
        if (!reply || xcb_get_image_data_length(reply.get()) < 4)
            return {};
        const std::uint8_t* const bytes = xcb_get_image_data(reply.get());
        return {bytes[2], bytes[1], bytes[0]};
    }
    QString save(const QImage& image)
    {
        const QString path = folder.filePath(QStringLiteral("p.png"));
        EXPECT_TRUE(image.save(path));
        return path;
    }

    std::unique_ptr<XLink> link;
    QTemporaryDir folder;
    NotificationCenter center;
    X11Screens screens{center};
    FakeLogSink log;
    WorkerPictures pictures{log};
};

} // namespace

TYPED_TEST(DesktopPictureContract, EachDisplayShowsWhatItWasGiven)
{
    const auto screens = this->desk.screens();
    ASSERT_EQ(screens.size(), 2);
    this->desk.service().set(this->desk.file(red), screens);
    EXPECT_TRUE(this->desk.shows(0, red));
    EXPECT_TRUE(this->desk.shows(1, red));
    this->desk.service().set(this->desk.file(blue), {screens.at(1)});
    EXPECT_TRUE(this->desk.shows(1, blue));
    EXPECT_TRUE(this->desk.shows(0, red));
    this->desk.service().set(this->desk.file(red), {});
    EXPECT_TRUE(this->desk.shows(1, blue)) << "no display, no change";
}

TEST_F(RootPictureLiveTest, ThePictureFillsTheDisplayWithoutDistortion)
{
    // A wide picture, the display's middle part of which is red.
    QImage image(4000, 900, QImage::Format_RGB32);
    image.fill(blue);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 1300; x < 2700; ++x)
            image.setPixelColor(x, y, red);
    RootPicture::set(pictures, save(image), screens.screens());
    EXPECT_TRUE(isNear(colorAt({720, 450}), red));
    EXPECT_TRUE(isNear(colorAt({40, 450}), red)) << "20 of the 1440 points at each side are blue";
    EXPECT_TRUE(isNear(colorAt({5, 450}), blue));
    EXPECT_TRUE(isNear(colorAt({1434, 895}), blue));
}

TEST_F(RootPictureLiveTest, ASmallPictureIsEnlargedAndTheOldOneFreed)
{
    QImage image(16, 10, QImage::Format_RGB32);
    image.fill(red);
    RootPicture::set(pictures, save(image), screens.screens());
    const xcb_pixmap_t first = pixmap();
    ASSERT_NE(first, xcb_pixmap_t{XCB_NONE});
    EXPECT_TRUE(isNear(colorAt({0, 0}), red));
    EXPECT_TRUE(isNear(colorAt({1439, 899}), red));
    image.fill(blue);
    RootPicture::set(pictures, save(image), screens.screens());
    EXPECT_TRUE(isNear(colorAt({720, 450}), blue));
    EXPECT_FALSE(exchange().reply<xcb_get_geometry_reply_t>(xcb_get_geometry(link->xcb(), first)));
}

TEST_F(RootPictureLiveTest, WhatIsNoPictureIsRefused)
{
    const QString path = folder.filePath(QStringLiteral("text.jpg"));
    QFile file(path);
    ASSERT_TRUE(file.open(QFile::WriteOnly) && file.write("text") == 4);
    file.close();
    EXPECT_THROW(RootPicture::set(pictures, path, screens.screens()), PlatformError);
    EXPECT_EQ(pixmap(), xcb_pixmap_t{XCB_NONE});
}

} // namespace orvane::tests
