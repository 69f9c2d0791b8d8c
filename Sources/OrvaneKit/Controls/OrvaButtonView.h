// A push button.
#pragma once

#include "OrvaneKit/Controls/OrvaPushButtonView.h"
#include "OrvaneKit/Model/OrvaRows.h"

namespace orvane {

class OrvaButtonView final : public OrvaPushButtonView {
public:
    explicit OrvaButtonView(const OrvaButton& button);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void themeChanged() override;
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] double symbolWidth() const;

    std::optional<QString> m_symbol;
    OrvaButton::Role m_role;
    Cancellables m_cancellables;
};

} // namespace orvane
