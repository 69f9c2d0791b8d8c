// Windows of every kind are placed where a person expects them, under several window managers.
#include "Contract/AccessibilityFixture.h"

#include "Contract/Support/ToolkitServer.h"

#include <QProcess>

#include <cmath>

#include <tuple>

namespace orvane::tests {

namespace {

constexpr auto deadline = 15s;

/// The session's window manager, or another one in its place for the object's life.
class WindowManagerInstead {
public:
    explicit WindowManagerInstead(const QString& name)
    {
        if (name == ofSession)
            return;
        m_isOther = true;
        m_process.setStandardErrorFile(QProcess::nullDevice());
        m_process.setStandardOutputFile(QProcess::nullDevice());
        replaceBy([&] { m_process.start(name, {u"--replace"_qs}); });
    }

    ~WindowManagerInstead()
    {
        if (!m_isOther)
            return;
        replaceBy([&] {
            QProcess own;
            own.setProgram(ofSession);
            own.setArguments({u"--replace"_qs, u"--compositor=on"_qs});
            own.setStandardErrorFile(QProcess::nullDevice());
            own.startDetached(); // the following tests need it
        });
        m_process.waitForFinished(5000);
    }
    WindowManagerInstead(const WindowManagerInstead&) = delete;
    WindowManagerInstead& operator=(const WindowManagerInstead&) = delete;

    static inline const QString ofSession = QStringLiteral("xfwm4");

private:
    template <typename Start>
    void replaceBy(Start start)
    {
        const ToolkitServer x = *ToolkitServer::ofApplication();
        const auto checkWindow = [&] {
            return x.property(x.root(), x.atom("_NET_SUPPORTING_WM_CHECK"), XCB_ATOM_WINDOW);
        };
        const QByteArray before = checkWindow();
        start();
        EXPECT_TRUE(eventually(deadline, [&] {
            const QByteArray now = checkWindow();
            return !now.isEmpty() && now != before;
        }));
        EXPECT_TRUE(settleWindowManager());
    }

    bool m_isOther = false;
    QProcess m_process;
};

/// The area is free of the panel and the dock, where some window managers allow no window, and its middle
/// isn't a whole number.
constexpr QRectF area(0, 60, 1435, 765);

QRectF half(const QRectF& whole, Qt::Edge edge)
{
    const QPointF middle = whole.center();
    switch (edge) {
    case Qt::LeftEdge:
        return {whole.topLeft(), QPointF(middle.x(), whole.bottom())};
    case Qt::RightEdge:
        return {QPointF(middle.x(), whole.top()), whole.bottomRight()};
    case Qt::TopEdge:
        return {whole.topLeft(), QPointF(whole.right(), middle.y())};
    case Qt::BottomEdge:
        break;
    }
    return {QPointF(whole.left(), middle.y()), whole.bottomRight()};
}

/// Returns the frame in whole pixels: edges are rounded, halves up.
QRect pixels(const QRectF& frame)
{
    const auto whole = [](double value) { return static_cast<int>(std::floor(value + 0.5)); };
    return {QPoint(whole(frame.left()), whole(frame.top())),
            QPoint(whole(frame.right()) - 1, whole(frame.bottom()) - 1)};
}

} // namespace

class WindowPlacement : public X11ElementsTest,
                        public ::testing::WithParamInterface<std::tuple<const char*, WindowKind>> {
protected:
    static QString managerName() { return QString::fromLatin1(std::get<0>(GetParam())); }
    static WindowKind kind() { return std::get<1>(GetParam()); }
    /// True where marco may keep the shadows on the screen too, as it sometimes does with a window that has
    /// just appeared; the window then ends short of the screen's edge.
    static bool keepsShadowsOnScreen()
    {
        return managerName() == u"marco"_qs && kind() == WindowKind::gtkHeaderBar;
    }

    /// True once the window fills the frame as far as the steps of its size allow, and never more.
    bool comesToFill(const ForeignWindow& window, const QRectF& frame)
    {
        const QRect wanted = pixels(frame);
        const QSize steps = m_windows.sizeIncrements(window.id);
        QRect seen;
        const bool fills = eventually(deadline, [&] {
            seen = window.frame();
            return seen.topLeft() == wanted.topLeft() && wanted.contains(seen) &&
                   wanted.width() - seen.width() < steps.width() &&
                   wanted.height() - seen.height() < steps.height();
        });
        EXPECT_TRUE(fills) << "wanted " << wanted.x() << ',' << wanted.y() << ' ' << wanted.width() << 'x'
                           << wanted.height() << ", seen " << seen.x() << ',' << seen.y() << ' '
                           << seen.width() << 'x' << seen.height();
        return fills;
    }

    WindowManagerInstead m_manager{managerName()};
};

INSTANTIATE_TEST_SUITE_P(Windows, WindowPlacement,
                         ::testing::Combine(::testing::Values("xfwm4", "openbox", "marco"),
                                            ::testing::Values(WindowKind::qt, WindowKind::gtkHeaderBar,
                                                              WindowKind::terminal)),
                         [](const auto& test) {
                             return std::get<0>(test.param) + std::string("_") +
                                    ::testing::PrintToString(std::get<1>(test.param));
                         });

TEST_P(WindowPlacement, TheFrameIsWhatTheServerShows)
{
    const ForeignWindow window(m_windows, kind(), u"Read"_qs);
    const AXUIElement element = elementOf(window);
    EXPECT_TRUE(eventually(deadline, [&] { return frameOf(element) == QRectF(window.frame()); }));
    EXPECT_TRUE(
        eventually(deadline, [&] { return m_windows.outermost(window.id).contains(window.frame()); }));
}

TEST_P(WindowPlacement, NeighbouringHalvesMeet)
{
    if (keepsShadowsOnScreen())
        GTEST_SKIP() << "The window manager keeps the shadows of such a window on the screen.";
    const ForeignWindow one(m_windows, kind(), u"One"_qs);
    const AXUIElement first = elementOf(one);
    const ForeignWindow other(m_windows, kind(), u"Other"_qs);
    const AXUIElement second = elementOf(other);
    for (const auto& [near, far] :
         {std::pair(Qt::LeftEdge, Qt::RightEdge), std::pair(Qt::TopEdge, Qt::BottomEdge)}) {
        place(first, half(area, near));
        place(second, half(area, far));
        comesToFill(one, half(area, near));
        comesToFill(other, half(area, far));
        // The last request of each kind is still to come, and some window managers do all of it anew.
        EXPECT_TRUE(settleWindowManager());
        EXPECT_FALSE(one.frame().intersects(other.frame()));
    }
}

TEST_P(WindowPlacement, TheCornersOfTheScreenAreReached)
{
    if (keepsShadowsOnScreen())
        GTEST_SKIP() << "The window manager keeps the shadows of such a window on the screen.";
    const ForeignWindow window(m_windows, kind(), u"Corner"_qs);
    const AXUIElement element = elementOf(window);
    const QRect free = m_windows.workArea({0, 0, 1440, 900});
    const QRectF bottomRight(free.bottomRight() + QPoint(1, 1) - QPoint(400, 400), QSizeF(400, 400));
    place(element, bottomRight);
    comesToFill(window, bottomRight);
    const QRectF topLeft(free.topLeft(), QSizeF(500, 300));
    place(element, topLeft);
    comesToFill(window, topLeft);
}

TEST_P(WindowPlacement, AMaximizedWindowIsRestoredFirst)
{
    const ForeignWindow window(m_windows, kind(), u"Maximized"_qs);
    const AXUIElement element = elementOf(window);
    const QMargins shadows = m_windows.ownMargins(window.id);
    const auto zoom = read<AXUIElement>(element, "AXZoomButton");
    ASSERT_TRUE(zoom);
    EXPECT_EQ(perform(*zoom, "AXPress"), AXError::success);
    ASSERT_TRUE(eventually(deadline, [&] {
        return window.hasState("_NET_WM_STATE_MAXIMIZED_HORZ") &&
               window.hasState("_NET_WM_STATE_MAXIMIZED_VERT");
    }));
    EXPECT_TRUE(settleWindowManager());
    // The frame isn't at an edge of the screen: marco sometimes keeps shadows on the screen too.
    const QRectF frame(201.5, 90, 700, 600.5);
    place(element, frame);
    // The shadows come back later, and the window has to be moved once more.
    EXPECT_TRUE(eventually(deadline, [&] { return m_windows.ownMargins(window.id) == shadows; }));
    EXPECT_TRUE(comesToFill(window, frame));
    EXPECT_FALSE(window.hasState("_NET_WM_STATE_MAXIMIZED_HORZ"));
    EXPECT_FALSE(window.hasState("_NET_WM_STATE_MAXIMIZED_VERT"));
}

TEST_P(WindowPlacement, AHungProgramsWindowIsMovedAllTheSame)
{
    if (keepsShadowsOnScreen())
        GTEST_SKIP() << "The window manager keeps the shadows of such a window on the screen.";
    const ForeignWindow window(m_windows, kind(), u"Hung"_qs);
    const AXUIElement element = elementOf(window);
    window.hang();
    m_accessibility.setMessagingTimeout(element, 250ms);
    const QRectF frame = half(area, Qt::LeftEdge);
    place(element, frame);
    // Some window managers don't change its size before it has answered; its place can change before.
    EXPECT_TRUE(eventually(deadline, [&] { return window.frame().topLeft() == pixels(frame).topLeft(); }));
    EXPECT_NE(frameOf(element), std::nullopt);
    window.resume();
    comesToFill(window, frame);
}

} // namespace orvane::tests
