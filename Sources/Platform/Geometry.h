// Points, sizes and rectangles of the desktop, in points. A rectangle is the corner of least x and y, and a
// size; the user of a rectangle says which way y runs.
#pragma once

namespace orvane {

struct Point {
    double x = 0;
    double y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

struct Size {
    double width = 0;
    double height = 0;
    friend bool operator==(const Size&, const Size&) = default;
};

struct Rect {
    Point origin;
    Size size;

    [[nodiscard]] double minX() const { return origin.x; }
    [[nodiscard]] double minY() const { return origin.y; }
    [[nodiscard]] double midX() const { return origin.x + size.width * 0.5; }
    [[nodiscard]] double midY() const { return origin.y + size.height * 0.5; }
    [[nodiscard]] double maxX() const { return origin.x + size.width; }
    [[nodiscard]] double maxY() const { return origin.y + size.height; }
    [[nodiscard]] double width() const { return size.width; }
    [[nodiscard]] double height() const { return size.height; }

    /// A point on one of the edges of greatest x and y is outside.
    [[nodiscard]] bool contains(Point point) const
    {
        return point.x >= minX() && point.x < maxX() && point.y >= minY() && point.y < maxY();
    }

    friend bool operator==(const Rect&, const Rect&) = default;
};

} // namespace orvane
