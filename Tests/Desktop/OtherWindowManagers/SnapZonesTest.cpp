// Snapping under window managers other than the one that the other tests use.
#include "Desktop/Support/SnapZonesFixture.h"
#include "Support/Eventually.h"

#include <QProcess>

namespace orvane::tests {
namespace {

/// A drag to an edge of one of the monitors, one for each kind.
struct Way {
    QPoint edge;
    Zone zone;
    QRect monitor;
};

/// Marco darkens the place in which it would put a window itself, and our preview with it. This switches that
/// off until the object's end; other window managers have no such setting.
class NoTilingOfMarcos {
public:
    NoTilingOfMarcos() { gsettings({QStringLiteral("set"), schema, key, QStringLiteral("false")}); }
    ~NoTilingOfMarcos() { gsettings({QStringLiteral("reset"), schema, key}); }
    NoTilingOfMarcos(const NoTilingOfMarcos&) = delete;
    NoTilingOfMarcos& operator=(const NoTilingOfMarcos&) = delete;

private:
    static void gsettings(const QStringList& arguments)
    {
        EXPECT_EQ(QProcess::execute(QStringLiteral("gsettings"), arguments), 0);
    }
    const QString schema = QStringLiteral("org.mate.Marco.general");
    const QString key = QStringLiteral("allow-tiling");
};

class SnapOfAKind : public SnapZonesDesktopTest, public testing::WithParamInterface<WindowKind> {
protected:
    static QList<Way> ways()
    {
        return {{{0, 450}, Zone::leftHalf, primary},
                {{720, 0}, Zone::maximize, primary},
                {second.bottomRight(), Zone::bottomRight, second},
                {{second.right(), 500}, Zone::rightHalf, second}};
    }
};

} // namespace

TEST_P(SnapOfAKind, ShortcutsPlaceTheWindow)
{
    startSnapping();
    const Target target = open(GetParam(), initial);
    ASSERT_NE(target.window, 0u);
    for (const Zone zone : allZones) {
        pressShortcut(zone);
        EXPECT_TRUE(comesToFill(target, placeOf(zone, m_windows.workArea(primary))))
            << nameOf(zone).toStdString();
    }
}

TEST_P(SnapOfAKind, DragsPlaceTheWindowThoughTheWindowManagerHasItsOwnIdeasOfEdges)
{
    // The gaps make sure that the place is set by the program.
    const Gaps gaps{.outer = 20, .inner = 12};
    startSnapping(
        {.settings = {{QStringLiteral("outerGap"), gaps.outer}, {QStringLiteral("innerGap"), gaps.inner}}});
    for (const Way& way : ways()) {
        const Target target = open(GetParam(), initial);
        ASSERT_NE(target.window, 0u);
        WindowDrag hand = drag(target);
        ASSERT_TRUE(hand.begin());
        ASSERT_TRUE(hand.moveTo(way.monitor.center()));
        ASSERT_TRUE(hand.moveTo(way.edge));
        EXPECT_TRUE(eventually(5s, [&] { return !shown().isEmpty(); }));
        hand.release();
        EXPECT_TRUE(comesToFill(target, placeOf(way.zone, m_windows.workArea(way.monitor), gaps)))
            << nameOf(way.zone).toStdString();
        EXPECT_TRUE(nothingIsShownSoon());
    }
}

TEST_P(SnapOfAKind, DragsShowThePreview)
{
    const NoTilingOfMarcos alone;
    startSnapping();
    for (const Way& way : ways()) {
        const Target target = open(GetParam(), initial);
        ASSERT_NE(target.window, 0u);
        WindowDrag hand = drag(target);
        ASSERT_TRUE(hand.begin());
        ASSERT_TRUE(hand.moveTo(way.monitor.center()));
        EXPECT_TRUE(nothingIsShownSoon());
        const Look before = look(target);
        ASSERT_TRUE(hand.moveTo(way.edge));
        EXPECT_TRUE(previewCovers(placeOf(way.zone, m_windows.workArea(way.monitor)), before, target))
            << nameOf(way.zone).toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Windows, SnapOfAKind,
                         testing::Values(WindowKind::qt, WindowKind::gtkHeaderBar, WindowKind::terminal));

} // namespace orvane::tests
