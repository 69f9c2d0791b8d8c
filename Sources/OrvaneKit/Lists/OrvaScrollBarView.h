// A slim scroll bar for pages: a thumb, and nothing else.
#pragma once

#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QScrollBar>

namespace orvane {

class OrvaScrollBarView final : public OrvaThemed<QScrollBar> {
public:
    /// Points; always the same.
    static constexpr int thickness = 12;

    /// `ground` is what it stands on.
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
    double m_grip = 0; // where in the thumb the mouse holds it, points
};

} // namespace orvane
