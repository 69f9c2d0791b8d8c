#include "Desktop/Support/SnapZonesFixture.h"

#include "Support/Eventually.h"

#include <QColor>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <ostream>
#include <utility>

namespace orvane::tests {

namespace {

constexpr int controlOption = 0x1000 | 0x800;
/// Virtual key codes of the digits from 1 to 0, and of L.
constexpr int digits[] = {18, 19, 20, 21, 23, 22, 26, 28, 25, 29};
constexpr int letterL = 37;
constexpr const char* digitKeys[] = {"1", "2", "3", "4", "5", "6", "7", "8", "9", "0"};

constexpr const char* zoneNames[] = {
    "leftHalf", "rightHalf",  "topHalf",     "bottomHalf", "topLeft",
    "topRight", "bottomLeft", "bottomRight", "maximize",   "center",
};
constexpr const char* kindNames[] = {"Qt", "GTK header bar", "terminal"};

const QString yellow = QStringLiteral("#ffd500");
const QColor accent(0x1f, 0x6b, 0xe0);
/// The widest frame around the content of a window, and the space that a size increment may leave free.
constexpr int rim = 16;
/// The distance from a window at which its shadow can be seen.
constexpr int shadow = 48;

/// Returns the share of the accent colour in a pixel that had another colour before.
double shareOfAccent(QColor before, QColor now)
{
    const int parts[][3] = {{before.red(), now.red(), accent.red()},
                            {before.green(), now.green(), accent.green()},
                            {before.blue(), now.blue(), accent.blue()}};
    const auto& telling =
        *std::ranges::max_element(parts, {}, [](const auto& part) { return std::abs(part[2] - part[0]); });
    return double(telling[1] - telling[0]) / (telling[2] - telling[0]);
}

bool isSame(QColor one, QColor other)
{
    return std::abs(one.red() - other.red()) <= 2 && std::abs(one.green() - other.green()) <= 2 &&
           std::abs(one.blue() - other.blue()) <= 2;
}

QRect nearest(QRectF place)
{
    return QRect(QPoint(qRound(place.left()), qRound(place.top())),
                 QPoint(qRound(place.right()) - 1, qRound(place.bottom()) - 1));
}

bool edgesAgree(QRect one, QRect other)
{
    return std::abs(one.left() - other.left()) <= 1 && std::abs(one.top() - other.top()) <= 1 &&
           std::abs(one.right() - other.right()) <= 1 && std::abs(one.bottom() - other.bottom()) <= 1;
}

QString text(QRectF rect)
{
    return QStringLiteral("%1,%2 %3x%4").arg(rect.x()).arg(rect.y()).arg(rect.width()).arg(rect.height());
}

QString text(QRect rect)
{
    return text(QRectF(rect));
}

std::string text(QPoint point, QColor before, QColor now)
{
    return QStringLiteral("%1,%2 was %3 and is %4")
        .arg(point.x())
        .arg(point.y())
        .arg(before.name(), now.name())
        .toStdString();
}

QList<QPoint> grid(QRect place)
{
    constexpr int steps = 8;
    QList<QPoint> points;
    for (int row = 1; row < steps; ++row) {
        for (int column = 1; column < steps; ++column)
            points.append(place.topLeft() +
                          QPoint(place.width() * column / steps, place.height() * row / steps));
    }
    return points;
}

/// Returns points along the four sides of a rectangle, away from its round corners.
QList<QPoint> sides(QRect place)
{
    QList<QPoint> points;
    for (const int eighth : {2, 3, 4, 5, 6}) {
        const int x = place.left() + place.width() * eighth / 8;
        const int y = place.top() + place.height() * eighth / 8;
        points << QPoint(x, place.top()) << QPoint(x, place.bottom()) << QPoint(place.left(), y)
               << QPoint(place.right(), y);
    }
    return points;
}

} // namespace

QString nameOf(Zone zone)
{
    return QLatin1String(zoneNames[static_cast<int>(zone)]);
}

void PrintTo(Zone zone, std::ostream* out)
{
    *out << zoneNames[static_cast<int>(zone)];
}

void PrintTo(WindowKind kind, std::ostream* out)
{
    *out << kindNames[static_cast<int>(kind)];
}

QRectF placeOf(Zone zone, QRectF area, Gaps gaps)
{
    area.adjust(gaps.outer, gaps.outer, -gaps.outer, -gaps.outer);
    const QSizeF half = (area.size() - QSizeF(gaps.inner, gaps.inner)) / 2;
    enum Span { first, last, both };
    const auto part = [&](Span columns, Span rows) {
        QRectF place = area;
        if (columns == first)
            place.setWidth(half.width());
        if (columns == last)
            place.setLeft(area.right() - half.width());
        if (rows == first)
            place.setHeight(half.height());
        if (rows == last)
            place.setTop(area.bottom() - half.height());
        return place;
    };
    switch (zone) {
    case Zone::leftHalf:
        return part(first, both);
    case Zone::rightHalf:
        return part(last, both);
    case Zone::topHalf:
        return part(both, first);
    case Zone::bottomHalf:
        return part(both, last);
    case Zone::topLeft:
        return part(first, first);
    case Zone::topRight:
        return part(last, first);
    case Zone::bottomLeft:
        return part(first, last);
    case Zone::bottomRight:
        return part(last, last);
    case Zone::maximize:
        return area;
    case Zone::center:
        return QRectF(area.left() + 0.2 * area.width(), area.top() + 0.15 * area.height(), 0.6 * area.width(),
                      0.7 * area.height());
    }
    return {};
}

testing::AssertionResult fills(QRect frame, QRectF place, QSize increments)
{
    constexpr double half = 0.5 + 1e-6;
    const double shorterBy = place.right() - (frame.right() + 1);
    const double lowerBy = place.bottom() - (frame.bottom() + 1);
    const bool agrees = std::abs(frame.left() - place.left()) <= half &&
                        std::abs(frame.top() - place.top()) <= half && shorterBy >= -half &&
                        shorterBy <= increments.width() - 1 + half && lowerBy >= -half &&
                        lowerBy <= increments.height() - 1 + half;
    if (agrees)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "it stands at " << text(frame).toStdString() << ", and the zone is "
                                       << text(place).toStdString();
}

void SnapZonesDesktopTest::TearDown()
{
    m_hardware.release(Button::left);
    ShellDesktopTest::TearDown();
}

void SnapZonesDesktopTest::startSnapping(const Setup& setup)
{
    Stored stored{.enabled = QStringList{QStringLiteral("snapzones")} + setup.others,
                  .shortcuts = setup.shortcuts,
                  .more = setup.more};
    for (const Zone zone : allZones)
        stored.shortcuts[QStringLiteral("snapzones.") + nameOf(zone)] = {digits[static_cast<int>(zone)],
                                                                         controlOption};
    stored.shortcuts[QStringLiteral("snapzones.showLayouts")] = {letterL, controlOption};
    for (auto it = setup.settings.begin(); it != setup.settings.end(); ++it)
        stored.more[QStringLiteral("net.lindenrow.orvane.snapzones.") + it.key()] = it.value();
    start(stored);
    ASSERT_TRUE(program().waitForLog(QRegularExpression(QStringLiteral("Snap Zones active"))));
    settle();
}

SnapZonesDesktopTest::Target SnapZonesDesktopTest::open(WindowKind kind, QRect place)
{
    const QString title =
        QStringLiteral("%1 %2").arg(QLatin1String(kindNames[static_cast<int>(kind)])).arg(++m_opened);
    const QStringList geometry{QString::number(place.x()), QString::number(place.y()),
                               QString::number(place.width()), QString::number(place.height())};
    Target target;
    switch (kind) {
    case WindowKind::qt:
        target.peer =
            std::make_unique<Peer>(Peer::window(), QStringList{title} + geometry + QStringList{yellow});
        target.colour = QColor(yellow);
        break;
    case WindowKind::gtkHeaderBar:
        target.peer =
            std::make_unique<Peer>(Peer::gtkHeaderBar(), QStringList{title} + geometry + QStringList{yellow});
        target.colour = QColor(yellow);
        break;
    case WindowKind::terminal:
        target.colour = Qt::white;
        target.peer = std::make_unique<Peer>(
            QStringLiteral("xterm"), QStringList{QStringLiteral("-T"), title, QStringLiteral("-geometry"),
                                                 QStringLiteral("60x20+%1+%2").arg(place.x()).arg(place.y()),
                                                 QStringLiteral("-e"), QStringLiteral("cat")});
        break;
    }
    QRect last;
    const bool stands = eventually(15s, [&] {
        target.window = m_windows.find(title).value_or(0);
        if (target.window == 0 || m_windows.active() != target.window)
            return false;
        const QRect before = std::exchange(last, m_windows.frame(target.window));
        const bool isDecorated =
            kind == WindowKind::gtkHeaderBar || !m_windows.decorations(target.window).isNull();
        return isDecorated && before == last;
    });
    EXPECT_TRUE(stands) << title.toStdString() << " doesn't come up";
    return target;
}

WindowDrag SnapZonesDesktopTest::drag(const Target& target)
{
    return WindowDrag(m_hardware, m_windows, target.window, [this] { settle(); });
}

void SnapZonesDesktopTest::pressShortcut(Zone zone)
{
    chord({"Control_L", "Alt_L", digitKeys[static_cast<int>(zone)]});
}

void SnapZonesDesktopTest::settle()
{
    // The menu is asked for on the main thread. It is asked for twice, for events that came while the first
    // was answered.
    for (int i = 0; i < 2; ++i)
        EXPECT_TRUE(statusItem().menu().layout()) << "the main thread doesn't answer";
}

bool SnapZonesDesktopTest::nothingIsShown()
{
    settle();
    return shown().isEmpty();
}

bool SnapZonesDesktopTest::nothingIsShownSoon()
{
    settle();
    return eventually(5s, [&] { return shown().isEmpty(); });
}

SnapZonesDesktopTest::Look SnapZonesDesktopTest::look(const Target& target) const
{
    EXPECT_TRUE(eventually(20s, [&] {
        return m_screen.wallpaperIsAt({1200, 400}) && m_screen.wallpaperIsAt(second.bottomRight());
    }));
    Look found;
    EXPECT_TRUE(eventually(5s, [&] { // the window follows the pointer, and the preview the window
        const Look last = std::exchange(found, {m_screen.picture(), m_windows.frame(target.window)});
        return last.hidden == found.hidden && last.picture == found.picture;
    }));
    return found;
}

testing::AssertionResult SnapZonesDesktopTest::previewCovers(QRectF place, const Look& before,
                                                             const Target& dragged)
{
    const QRect expected = nearest(place);
    QList<ScreenWindow> windows;
    const bool isThere = eventually(5s, [&] {
        windows = shown();
        return std::ranges::any_of(
            windows, [&](const ScreenWindow& window) { return edgesAgree(window.geometry, expected); });
    });
    if (!isThere) {
        auto failure = testing::AssertionFailure()
                       << "no preview at " << text(place).toStdString() << ", but";
        for (const ScreenWindow& window : windows)
            failure << " " << text(window.geometry).toStdString();
        return failure;
    }
    testing::AssertionResult colours = testing::AssertionFailure();
    (void)eventually(5s, [&] {
        colours = coloursAreThoseOfAPreview(expected, before, dragged);
        return bool(colours);
    });
    return colours;
}

QRect SnapZonesDesktopTest::contentOf(const Target& target) const
{
    constexpr int headerBar = 50;
    constexpr int writing = 24; // a terminal's cursor stands in its first line
    const QMargins own = m_windows.ownMargins(target.window);
    const QRect content = m_windows.geometry(target.window).marginsRemoved(own);
    const bool hasHeaderBar = m_windows.decorations(target.window).top() == 0;
    return content.adjusted(rim, hasHeaderBar ? headerBar : writing, -rim, -rim);
}

testing::AssertionResult SnapZonesDesktopTest::coloursAreThoseOfAPreview(QRect place, const Look& before,
                                                                         const Target& dragged) const
{
    const QImage now = m_screen.picture();
    const QRect content = contentOf(dragged);
    // The window manager may have made the window as large as the place; then the preview colours the window.
    const auto colourBefore = [&](QPoint point) -> std::optional<QColor> {
        if (!now.rect().contains(point))
            return std::nullopt;
        if (content.contains(point))
            return dragged.colour;
        for (const QRect& window : {before.hidden, m_windows.frame(dragged.window)}) {
            if (window.marginsAdded({shadow, shadow, shadow, shadow}).contains(point))
                return std::nullopt;
        }
        return before.picture.pixelColor(point);
    };
    std::string wrong;
    const auto countOf = [&](const QList<QPoint>& points, double least, double most) {
        int right = 0;
        for (const QPoint& point : points) {
            const auto was = colourBefore(point);
            if (!was)
                continue;
            const QColor is = now.pixelColor(point);
            const double share = shareOfAccent(*was, is);
            if (share >= least && share <= most)
                ++right;
            else
                wrong = text(point, *was, is);
        }
        return right;
    };
    const bool composited = m_windows.isCompositing();
    const int inside = composited ? countOf(grid(place), 0.21, 0.29) : countOf(grid(place), -0.02, 0.02);
    const int border = composited ? countOf(sides(place), 0.75, 0.92) : countOf(sides(place), 0.95, 1.05);
    if (!wrong.empty())
        return testing::AssertionFailure() << "not the colour of a preview: " << wrong;
    const QRect frame = m_windows.frame(dragged.window).marginsAdded({rim, rim, rim, rim});
    const bool borderIsHidden = frame.contains(place); // the window manager has tiled it
    if (inside < 4 || (border < 4 && !borderIsHidden))
        return testing::AssertionFailure()
               << "too little of the preview can be seen to judge it: " << inside << " inside, " << border
               << " on its border; the window is at " << text(m_windows.frame(dragged.window)).toStdString();
    constexpr int beside = 3;
    for (const QPoint& point : sides(place.marginsAdded({beside, beside, beside, beside}))) {
        const auto was = colourBefore(point);
        if (was && m_windows.workArea(primary).contains(point) && !isSame(*was, now.pixelColor(point)))
            return testing::AssertionFailure()
                   << "beside the preview " << text(point, *was, now.pixelColor(point));
    }
    return testing::AssertionSuccess();
}

testing::AssertionResult SnapZonesDesktopTest::comesToFill(const Target& target, QRectF place)
{
    const QSize increments = m_windows.sizeIncrements(target.window);
    testing::AssertionResult result = testing::AssertionFailure();
    (void)eventually(5s, [&] {
        result = fills(m_windows.frame(target.window), place, increments);
        return bool(result);
    });
    return result;
}

} // namespace orvane::tests
