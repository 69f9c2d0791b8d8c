// The image resizer as a person uses it: pictures dragged from the file manager with the mouse.
#include "Desktop/Support/AccessibleTree.h"
#include "Desktop/Support/FileWindow.h"
#include "Desktop/Support/ShellFixture.h"
#include "Desktop/Support/Windows.h"
#include "Support/Eventually.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>

#include <gmock/gmock.h>

namespace orvane::tests {
namespace {

constexpr int control = 0x1000;
constexpr int option = 0x800;
constexpr StoredShortcut controlOptionR{15, control | option};
const QString windowTitle = QStringLiteral("Image Resizer");

/// From the corner of the file manager's window to the first file in it, with or without the bar that warns
/// root: it doesn't tell assistive technology of its files.
constexpr QPoint firstFile(219, 172);

/// Puts a window's top left corner there.
bool moveWindow(const Windows& windows, WindowId window, QPoint place)
{
    QProcess::execute(QStringLiteral("wmctrl"),
                      {QStringLiteral("-i"), QStringLiteral("-r"), QString::number(window),
                       QStringLiteral("-e"), QStringLiteral("0,%1,%2,-1,-1").arg(place.x()).arg(place.y())});
    return eventually(10s, [&] { return (windows.frame(window).topLeft() - place).manhattanLength() < 4; });
}

class ImageResizerDesktopTest : public ShellDesktopTest {
protected:
    void SetUp() override
    {
        ShellDesktopTest::SetUp();
        start({.enabled = {QStringLiteral("imageresizer")},
               .shortcuts = {{QStringLiteral("imageresizer.open"), controlOptionR}}});
    }

    /// Presses the shortcut until the window is there: features come on some moments after the start. The
    /// window has the keyboard then.
    WindowId openWindow()
    {
        EXPECT_TRUE(eventually(20s, [this] {
            chord({"Control_L", "Alt_L", "r"});
            return eventually(1s, [this] { return windows.find(windowTitle).has_value(); });
        }));
        const WindowId window = windows.find(windowTitle).value_or(0);
        EXPECT_TRUE(eventually(10s, [&] { return windows.active() == window; }));
        return window;
    }

    QString addPicture(const QString& name)
    {
        QImage image(2000, 1500, QImage::Format_RGB32);
        image.fill(Qt::darkGreen);
        EXPECT_TRUE(image.save(folder.filePath(name)));
        return folder.filePath(name);
    }

    /// Drags as a hand does, in many small motions, the last ones about the target: both programs answer each
    /// other between them.
    void drag(QPoint from, QPoint to)
    {
        constexpr int steps = 30;
        constexpr int motionsAtTheTarget = 30;
        m_hardware.movePointer(from);
        m_hardware.press(Button::left);
        int motion = 0;
        (void)eventually(30s, [&] {
            ++motion;
            const QPoint on = from + (to - from) * std::min(motion, steps) / steps;
            m_hardware.movePointer(on + QPoint(motion % 2, 0));
            return motion == steps + motionsAtTheTarget;
        });
        m_hardware.release(Button::left);
    }

    QTemporaryDir folder;
    Windows windows;
};

} // namespace

TEST_F(ImageResizerDesktopTest, ADroppedPictureIsResizedBesideTheOriginal)
{
    addPicture(QStringLiteral("photo.png"));
    const WindowId resizer = openWindow();
    ASSERT_TRUE(moveWindow(windows, resizer, {760, 60}));
    const FileWindow files(folder.path(), m_hardware);
    const auto thunar = windows.find(QDir(folder.path()).dirName() + QStringLiteral(" - Thunar"));
    ASSERT_TRUE(thunar);
    ASSERT_TRUE(moveWindow(windows, *thunar, {20, 60}));

    const QPoint file = windows.frame(*thunar).topLeft() + firstFile;
    const AccessibleTree ours(program().pid());
    const QPoint target = windows.geometry(resizer).center() - QPoint(0, 120);
    ASSERT_TRUE(eventually(30s, [&] {
        drag(file, target);
        return eventually(
            3s, [&] { return ours.find("push button", QStringLiteral("Resize 1 Image")).has_value(); });
    }));

    ASSERT_TRUE(clickOn(QStringLiteral("Resize 1 Image"), QStringLiteral("push button")));
    const QString copy = folder.filePath(QStringLiteral("photo (Medium).png"));
    EXPECT_TRUE(eventually(30s, [&] { return QFile::exists(copy); }));
    EXPECT_EQ(QImage(copy).size(), QSize(1024, 768));
    EXPECT_EQ(QImage(folder.filePath(QStringLiteral("photo.png"))).size(), QSize(2000, 1500));
    EXPECT_TRUE(eventually(10s, [&] {
        return ours.find("label", QStringLiteral("Resized 1 of 1 image — saved next to the originals."))
            .has_value();
    }));
}

} // namespace orvane::tests
