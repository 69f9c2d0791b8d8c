// A slider over a range of doubles, with or without steps.
#pragma once

#include "OrvaneKit/Model/OrvaBindings.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QSlider>

namespace orvane {

class OrvaSliderView final : public OrvaControl<QSlider> {
public:
    /// `detail` is what assistive technology reads besides the position.
    OrvaSliderView(Binding<double> value, double lower, double upper, std::optional<double> step,
                   const QString& name, const Live<QString>& detail);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void showValue(double value);
    void positionChanged(int position);
    void dragTo(double x);
    [[nodiscard]] QRectF groove() const;
    [[nodiscard]] bool mirrored() const { return layoutDirection() == Qt::RightToLeft; }

    OrvaBoundValue<double> m_value;
    double m_lower;
    double m_upper;
    std::optional<double> m_step;
    Cancellables m_cancellables;
};

} // namespace orvane
