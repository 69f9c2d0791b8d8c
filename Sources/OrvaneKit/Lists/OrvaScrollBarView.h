// A slim scroll bar for pages: only a thumb.
#pragma once

#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QScrollBar>

namespace orvane {

class OrvaScrollBarView final : public OrvaThemed<QScrollBar> {
public:
    /// In points; always the same.
    static constexpr int thickness = 12;

    /// `ground` is the colour behind it.
    explicit OrvaScrollBarView(OrvaColor ground = OrvaColor::window);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    [[nodiscard]] QRectF thumb() const;

    OrvaColor m_ground;
    double m_grip = 0; // the place in the thumb where the mouse holds it, in points
};

} // namespace orvane
