// A button without a box.
#pragma once

#include "OrvaneKit/Controls/OrvaPushButtonView.h"
#include "OrvaneKit/Model/OrvaLayout.h"

namespace orvane {

class OrvaTextButtonView final : public OrvaPushButtonView {
public:
    /// The space beside the text for the focus ring, in points.
    static constexpr int margin = 2 + orvaRingMargin;

    explicit OrvaTextButtonView(const OrvaTextButton& button);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void themeChanged() override;
    void paintEvent(QPaintEvent* event) override;

private:
    std::optional<QString> m_symbol;
};

} // namespace orvane
