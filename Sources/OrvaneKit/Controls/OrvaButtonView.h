// A push button.
#pragma once

#include "OrvaneKit/Model/OrvaRows.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QPushButton>

namespace orvane {

class OrvaButtonView final : public OrvaControl<QPushButton> {
public:
    explicit OrvaButtonView(const OrvaButton& button);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void themeChanged() override;
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] double symbolWidth() const;

    QString m_title;
    std::optional<QString> m_symbol;
    OrvaButton::Role m_role;
    Cancellables m_cancellables;
};

} // namespace orvane
