#include "OrvaneKit/Theme/SymbolPath.h"

#include <QPointF>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <numbers>

namespace orvane {

namespace {

struct Arc {
    double radius;
    bool isLarge;
    bool isClockwise;
    QPointF end;
};

constexpr double pi = std::numbers::pi;

double angle(QPointF from)
{
    return std::atan2(from.y(), from.x());
}

QPointF onUnitCircle(double angle)
{
    return {std::cos(angle), std::sin(angle)};
}

/// A cubic curve is close enough to a circle for at most a quarter of it.
void addCurves(QPainterPath& path, QPointF middle, double radius, double from, double turn)
{
    const int pieces = static_cast<int>(std::ceil(std::abs(turn) / (pi / 2 + 0.001)));
    const double piece = turn / pieces;
    const double reach = radius * std::tan(piece / 4) * 4 / 3;
    for (int i = 0; i < pieces; ++i) {
        const double begin = from + piece * i;
        const double end = begin + piece;
        const QPointF first = middle + radius * onUnitCircle(begin);
        const QPointF last = middle + radius * onUnitCircle(end);
        path.cubicTo(first + reach * onUnitCircle(begin + pi / 2), last - reach * onUnitCircle(end + pi / 2),
                     last);
    }
}

/// Two points and a radius give two circles with two arcs each; the flags choose one of the four.
void addArc(QPainterPath& path, const Arc& arc)
{
    const QPointF begin = path.currentPosition();
    const QPointF half = (begin - arc.end) / 2;
    const double halfSquared = QPointF::dotProduct(half, half);
    if (halfSquared == 0)
        return;
    // A circle that is too small to reach both points is enlarged until it does.
    const double radius = std::max(arc.radius, std::sqrt(halfSquared));
    const double distance = std::sqrt(std::max(0.0, radius * radius / halfSquared - 1));
    const double side = arc.isLarge != arc.isClockwise ? distance : -distance;
    const QPointF middle = (begin + arc.end) / 2 + side * QPointF(half.y(), -half.x());

    const double from = angle(begin - middle);
    double turn = angle(arc.end - middle) - from;
    if (arc.isClockwise && turn < 0)
        turn += 2 * pi;
    else if (!arc.isClockwise && turn > 0)
        turn -= 2 * pi;
    addCurves(path, middle, radius, from, turn);
}

class Reader {
public:
    explicit Reader(QByteArrayView data) : m_next(data.begin()), m_end(data.end()) {}

    std::optional<QPainterPath> path()
    {
        QPainterPath path;
        for (char command = 0; skipSeparators(), m_next != m_end;) {
            if (*m_next >= 'A' && *m_next <= 'Z')
                command = *m_next++;
            // The first command sets the position, and only a command with numbers can be repeated without
            // its letter.
            else if (command == 0 || command == 'Z')
                return std::nullopt;
            if (path.elementCount() == 0 && command != 'M')
                return std::nullopt;
            add(command, path);
            if (m_failed)
                return std::nullopt;
            if (command == 'M')
                command = 'L'; // further points after a move are lines
        }
        return path;
    }

private:
    void add(char command, QPainterPath& path)
    {
        const QPointF here = path.currentPosition();
        switch (command) {
        case 'M':
            path.moveTo(point());
            break;
        case 'L':
            path.lineTo(point());
            break;
        case 'H':
            path.lineTo(number(), here.y());
            break;
        case 'V':
            path.lineTo(here.x(), number());
            break;
        case 'C': {
            const QPointF first = point(), second = point();
            path.cubicTo(first, second, point());
            break;
        }
        case 'A':
            addArc(path, arc());
            break;
        case 'Z':
            path.closeSubpath();
            break;
        default:
            m_failed = true;
        }
    }

    Arc arc()
    {
        const double radius = number(), otherRadius = number(), rotation = number();
        const double isLarge = number(), isClockwise = number();
        m_failed |= radius != otherRadius || radius <= 0 || rotation != 0;
        return {radius, isLarge != 0, isClockwise != 0, point()};
    }

    QPointF point()
    {
        const double x = number();
        return {x, number()};
    }

    double number()
    {
        skipSeparators();
        double value = 0;
        const auto [behind, error] = std::from_chars(m_next, m_end, value);
        m_failed |= error != std::errc() || !std::isfinite(value);
        m_next = behind;
        return m_failed ? 0 : value;
    }

    void skipSeparators()
    {
        m_next = std::find_if_not(m_next, m_end, [](char each) {
            return each == ' ' || each == ',' || each == '\n' || each == '\r' || each == '\t';
        });
    }

    const char* m_next;
    const char* m_end;
    bool m_failed = false;
};

} // namespace

std::optional<QPainterPath> symbolPath(QByteArrayView data)
{
    return Reader(data).path();
}

} // namespace orvane
