// A text whose lines are about equally long, so that no single word is left on the last one.
#pragma once

#include "OrvaneKit/Model/OrvaLayout.h"

#include <QWidget>

namespace orvane {

class OrvaTextView;

class OrvaBalancedTextView final : public QWidget {
public:
    /// The text is at the leading edge or in the middle of its width.
    OrvaBalancedTextView(const OrvaText& text, Qt::Alignment alignment);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void place();
    /// Returns the smallest width that needs no more lines than `width`.
    [[nodiscard]] int balanced(int width) const;

    OrvaTextView* m_text;
    Qt::Alignment m_alignment;
};

} // namespace orvane
