// Checks that the tests' own look at windows agrees with what is seen, under the window manager that runs.
#include "Desktop/Support/Peer.h"
#include "Desktop/Support/Screen.h"
#include "Desktop/Support/WindowDrag.h"
#include "Desktop/Support/Windows.h"
#include "Support/Eventually.h"

#include <QColor>
#include <QImage>

#include <algorithm>
#include <array>
#include <memory>

#include <gtest/gtest.h>

namespace orvane::tests {
namespace {

class WindowsSupportTest : public testing::TestWithParam<const char*> {
protected:
    /// Returns the picture of a dark window without a pattern, which lies behind where the looked at one
    /// comes. The desktop itself won't do: it repaints some time after a window has gone.
    QImage openBackdrop()
    {
        const QColor dark(0x20, 0x20, 0x20);
        m_backdrop = std::make_unique<Peer>(Peer::window(),
                                            QStringList{QStringLiteral("Backdrop"), QStringLiteral("860"),
                                                        QStringLiteral("160"), QStringLiteral("500"),
                                                        QStringLiteral("440"), dark.name()});
        QImage picture;
        EXPECT_TRUE(eventually(15s, [&] {
            const WindowId backdrop = m_windows.find(QStringLiteral("Backdrop")).value_or(0);
            if (backdrop == 0 || m_windows.active() != backdrop)
                return false;
            picture = m_screen.picture();
            const QRect content = m_windows.geometry(backdrop) & picture.rect();
            for (int y = content.top(); y <= content.bottom(); ++y) {
                for (int x = content.left(); x <= content.right(); ++x) {
                    if (picture.pixelColor(x, y) != dark)
                        return false;
                }
            }
            return content.contains(QRect(900, 200, 420, 360));
        }));
        return picture;
    }
    void open()
    {
        const QString kind = QLatin1String(GetParam());
        const QString title = QStringLiteral("Looked at");
        const QStringList place{QStringLiteral("960"), QStringLiteral("240"), QStringLiteral("300"),
                                QStringLiteral("240"), QStringLiteral("#ffd500")};
        if (kind == QStringLiteral("xterm"))
            m_peer = std::make_unique<Peer>(kind, QStringList{QStringLiteral("-T"), title,
                                                              QStringLiteral("-geometry"),
                                                              QStringLiteral("40x18+960+240")});
        else
            m_peer =
                std::make_unique<Peer>(kind == QStringLiteral("qt") ? Peer::window() : Peer::gtkHeaderBar(),
                                       QStringList{title} + place);
        QRect last;
        ASSERT_TRUE(eventually(15s, [&] {
            m_window = m_windows.find(title).value_or(0);
            const QRect before = std::exchange(last, m_windows.frame(m_window));
            return m_window != 0 && m_windows.active() == m_window && !last.isEmpty() && before == last;
        }));
    }

    Screen m_screen;
    Windows m_windows;
    Hardware m_hardware;
    std::unique_ptr<Peer> m_backdrop;
    std::unique_ptr<Peer> m_peer;
    WindowId m_window = 0;
};

/// Returns the share of a line of pixels that got brighter. A shadow makes none brighter.
double shareBrightened(const QImage& before, const QImage& now, QRect line)
{
    int brightened = 0, all = 0;
    for (int y = line.top(); y <= line.bottom(); ++y) {
        for (int x = line.left(); x <= line.right(); ++x, ++all)
            brightened += qGray(now.pixel(x, y)) > qGray(before.pixel(x, y)) + 8;
    }
    return double(brightened) / all;
}

} // namespace

TEST_P(WindowsSupportTest, TheFrameIsWhatIsSeen)
{
    const QImage before = openBackdrop();
    open();
    struct Edge {
        QRect inside, outside;
    };
    std::array<Edge, 4> edges;
    QImage now;
    // A program that decorates itself settles some frames after it is shown, and the window manager may move
    // it until then.
    const bool isSeen = eventually(10s, [&] {
        const QRect frame = m_windows.frame(m_window);
        // Without the corners, which may be round.
        const QRect across = frame.adjusted(20, 0, -20, 0), along = frame.adjusted(0, 20, 0, -20);
        // A GTK window draws a line of a pixel around itself, in the margin that it reports as not its own.
        const int beside = m_windows.ownMargins(m_window).isNull() ? 1 : 2;
        edges = {{{{across.left(), frame.top(), across.width(), 1},
                   {across.left(), frame.top() - beside, across.width(), 1}},
                  {{across.left(), frame.bottom(), across.width(), 1},
                   {across.left(), frame.bottom() + beside, across.width(), 1}},
                  {{frame.left(), along.top(), 1, along.height()},
                   {frame.left() - beside, along.top(), 1, along.height()}},
                  {{frame.right(), along.top(), 1, along.height()},
                   {frame.right() + beside, along.top(), 1, along.height()}}}};
        now = m_screen.picture();
        return m_windows.frame(m_window) == frame && std::ranges::all_of(edges, [&](const Edge& edge) {
                   return shareBrightened(before, now, edge.inside) >= 0.7 &&
                          shareBrightened(before, now, edge.outside) <= 0.05;
               });
    });
    EXPECT_TRUE(isSeen);
    for (const auto& edge : edges) {
        EXPECT_GE(shareBrightened(before, now, edge.inside), 0.7)
            << edge.inside.x() << "," << edge.inside.y() << " " << edge.inside.width();
        EXPECT_LE(shareBrightened(before, now, edge.outside), 0.05)
            << edge.outside.x() << "," << edge.outside.y() << " " << edge.outside.width();
    }
}

TEST_P(WindowsSupportTest, AHandDragsItByItsTitleBar)
{
    open();
    const QRect before = m_windows.frame(m_window);
    WindowDrag hand(m_hardware, m_windows, m_window, [] {});
    ASSERT_TRUE(hand.begin());
    const QPoint grip = hand.pointer();
    ASSERT_TRUE(hand.moveTo(grip + QPoint(150, 90)));
    hand.release();
    EXPECT_TRUE(eventually(5s,
                           [&] {
                               return (m_windows.frame(m_window).topLeft() - before.topLeft() -
                                       QPoint(150, 90))
                                          .manhattanLength() <= 16; // the distance that GTK ignores
                           }))
        << m_windows.frame(m_window).x() << "," << m_windows.frame(m_window).y();
    EXPECT_EQ(m_windows.frame(m_window).size(), before.size());
}

INSTANTIATE_TEST_SUITE_P(Kinds, WindowsSupportTest, testing::Values("qt", "gtk", "xterm"));

} // namespace orvane::tests
