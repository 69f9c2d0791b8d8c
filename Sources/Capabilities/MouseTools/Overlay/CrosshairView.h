// Two lines through the pointer, across all displays.
#pragma once

#include "Capabilities/MouseTools/Overlay/MouseOverlayModel.h"
#include "OrvaneKit/Panels/OrvaOverlayWindow.h"

namespace orvane {

class CrosshairView : public QWidget {
public:
    /// The view becomes the content of `window`, and gives it its shape.
    CrosshairView(std::shared_ptr<MouseOverlayModel> model, OrvaOverlayWindow& window);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void pointMoved();
    void shapeWindow();
    [[nodiscard]] QRectF upright() const;
    [[nodiscard]] QRectF level() const;
    void updateLines();

    std::shared_ptr<MouseOverlayModel> m_model;
    OrvaOverlayWindow& m_window;
    QPointF m_point;
    Cancellables m_cancellables;
};

} // namespace orvane
