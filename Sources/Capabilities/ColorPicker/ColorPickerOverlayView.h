// The window's content during a pick: the picture of the display, and a loupe above the pointer.
#pragma once

#include "Capabilities/ColorPicker/ColorPickerOverlayModel.h"

#include <QWidget>

namespace orvane {

class ColorPickerOverlayView : public QWidget {
public:
    /// The loupe's diameter, in points.
    static constexpr double loupe = 132;

    explicit ColorPickerOverlayView(std::shared_ptr<ColorPickerOverlayModel> model);

    /// Returns the middle of the loupe for a place of the pointer.
    [[nodiscard]] static QPointF loupeCenter(QPointF cursor);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void cursorMoved();
    void paintLoupe(QPainter& painter) const;
    void paintLabel(QPainter& painter, QPointF center) const;
    [[nodiscard]] static QRect loupeBounds(QPointF cursor);

    std::shared_ptr<ColorPickerOverlayModel> m_model;
    /// A view of the model's pixels.
    QImage m_background;
    QPointF m_cursor;
    Cancellables m_cancellables;
};

} // namespace orvane
