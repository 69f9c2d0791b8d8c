// A text whose lines are about equally long, so that no word is left alone on the last one.
#pragma once

#include "OrvaneKit/Model/OrvaLayout.h"

#include <QWidget>

namespace orvane {

class OrvaTextView;

class OrvaBalancedTextView final : public QWidget {
public:
    /// At the leading edge or in the middle of the width that it gets.
    OrvaBalancedTextView(const OrvaText& text, Qt::Alignment alignment);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void place();
    /// The narrowest that needs no more lines than `width`.
    [[nodiscard]] int balanced(int width) const;

    OrvaTextView* m_text;
    Qt::Alignment m_alignment;
};

} // namespace orvane
