// A chip that is a button.
#pragma once

#include "Orvane/Shortcuts/ShortcutViews.h"
#include "OrvaneKit/Controls/OrvaPushButtonView.h"

namespace orvane {

class OrvaChipButtonView final : public OrvaPushButtonView {
public:
    explicit OrvaChipButtonView(const OrvaChipButton& button);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void themeChanged() override;
    void paintEvent(QPaintEvent* event) override;

private:
    std::optional<QString> m_symbol;
    bool m_prominent = false;
    Cancellables m_cancellables;
};

} // namespace orvane
