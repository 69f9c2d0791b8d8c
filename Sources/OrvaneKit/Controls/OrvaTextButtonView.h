// A button without a box.
#pragma once

#include "OrvaneKit/Model/OrvaLayout.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QPushButton>

namespace orvane {

class OrvaTextButtonView final : public OrvaControl<QPushButton> {
public:
    /// Space beside the text, points, for the focus ring.
    static constexpr int margin = 2 + orvaRingMargin;

    explicit OrvaTextButtonView(const OrvaTextButton& button);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void themeChanged() override;
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_title;
    std::optional<QString> m_symbol;
};

} // namespace orvane
