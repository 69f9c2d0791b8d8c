// A whole number that can be typed and stepped through.
#pragma once

#include "OrvaneKit/Model/OrvaBindings.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QSpinBox>

namespace orvane {

class OrvaStepperView final : public OrvaControl<QSpinBox> {
public:
    OrvaStepperView(Binding<int> value, int lower, int upper, int step, const Live<QString>& name);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void themeChanged() override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void valueEdited(int value);
    [[nodiscard]] QRectF arrows() const;

    OrvaBoundValue<int> m_value;
    Cancellables m_cancellables;
};

} // namespace orvane
