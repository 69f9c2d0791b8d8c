// A button with a symbol alone and no border.
#pragma once

#include "OrvaneKit/Controls/OrvaPushButtonView.h"
#include "OrvaneKit/Model/OrvaControls.h"

namespace orvane {

class OrvaIconButtonView final : public OrvaPushButtonView {
public:
    /// The space around the symbol on every side, in points: that of its hit area and that of the focus ring.
    static constexpr int margin = 4 + orvaRingMargin;

    explicit OrvaIconButtonView(const OrvaIconButton& button);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    [[nodiscard]] bool hitButton(const QPoint& position) const override { return shape().contains(position); }
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_symbol;
};

} // namespace orvane
