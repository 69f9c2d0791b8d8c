// A button of a symbol alone, without a border.
#pragma once

#include "OrvaneKit/Model/OrvaControls.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QPushButton>

namespace orvane {

class OrvaIconButtonView final : public OrvaControl<QPushButton> {
public:
    /// Space around the symbol on every side, points: that of its hit area and that of the focus ring.
    static constexpr int margin = 4 + orvaRingMargin;

    explicit OrvaIconButtonView(const OrvaIconButton& button);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    [[nodiscard]] bool hitButton(const QPoint& position) const override { return shape().contains(position); }
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_symbol;
};

} // namespace orvane
