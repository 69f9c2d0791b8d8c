// A symbol as its file describes it: outlines that are filled, stroked or both, in one colour.
#pragma once

#include <QByteArray>
#include <QPainterPath>
#include <QRectF>

#include <optional>
#include <vector>

class QPainter;

namespace orvane {

class SymbolPicture {
public:
    /// The side of the square in which every symbol is drawn.
    static constexpr double side = 24;

    /// Reads the elements of SVG that the family uses: groups, paths, circles and rectangles, in black on a
    /// square of 24. Nothing for a file with anything else, which couldn't be drawn correctly.
    [[nodiscard]] static std::optional<SymbolPicture> read(const QByteArray& svg);

    /// Fills `rect`. The width of the strokes is in the units of the symbol.
    void draw(QPainter& painter, const QRectF& rect, double strokeWidth) const;

private:
    struct Shape {
        QPainterPath path;
        bool isFilled;
        bool isStroked;
    };
    class Reader;

    std::vector<Shape> m_shapes;
};

} // namespace orvane
