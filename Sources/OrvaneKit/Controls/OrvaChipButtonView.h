// A chip that is a button.
#pragma once

#include "OrvaneKit/Model/OrvaLayout.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QPushButton>

namespace orvane {

class OrvaChipButtonView final : public OrvaControl<QPushButton> {
public:
    explicit OrvaChipButtonView(const OrvaChipButton& button);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void themeChanged() override;
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_text;
    std::optional<QString> m_symbol;
    bool m_prominent = false;
    Cancellables m_cancellables;
};

} // namespace orvane
