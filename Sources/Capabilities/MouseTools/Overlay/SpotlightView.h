// Everything dim but a circle around the pointer, with a ring. Without a compositor, the ring alone.
#pragma once

#include "Capabilities/MouseTools/Overlay/MouseOverlayModel.h"
#include "OrvaneKit/Panels/OrvaOverlayWindow.h"

namespace orvane {

class SpotlightView : public QWidget {
public:
    /// The view becomes the content of `window`, and gives it its shape.
    SpotlightView(std::shared_ptr<MouseOverlayModel> model, OrvaOverlayWindow& window);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void pointMoved();
    void shapeWindow();
    [[nodiscard]] QRect touched() const;

    std::shared_ptr<MouseOverlayModel> m_model;
    OrvaOverlayWindow& m_window;
    QPointF m_point;
    Cancellables m_cancellables;
};

} // namespace orvane
