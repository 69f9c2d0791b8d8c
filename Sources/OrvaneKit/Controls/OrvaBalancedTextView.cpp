#include "OrvaneKit/Controls/OrvaBalancedTextView.h"

#include "OrvaneKit/Controls/OrvaTextView.h"

#include <QEvent>
#include <QStyle>

namespace orvane {

OrvaBalancedTextView::OrvaBalancedTextView(const OrvaText& text, Qt::Alignment alignment)
    : m_text(new OrvaTextView(text.text, text.font, text.color)), m_alignment(alignment)
{
    m_text->setParent(this);
    m_text->setAlignment(alignment);
    setSizePolicy(m_text->sizePolicy());
}

QSize OrvaBalancedTextView::sizeHint() const
{
    return m_text->sizeHint();
}

QSize OrvaBalancedTextView::minimumSizeHint() const
{
    return m_text->minimumSizeHint();
}

int OrvaBalancedTextView::heightForWidth(int width) const
{
    return m_text->heightForWidth(width);
}

bool OrvaBalancedTextView::event(QEvent* event)
{
    // The text has changed, or its font has.
    if (event->type() == QEvent::LayoutRequest) {
        updateGeometry();
        place();
    }
    return QWidget::event(event);
}

void OrvaBalancedTextView::resizeEvent(QResizeEvent*)
{
    place();
}

void OrvaBalancedTextView::place()
{
    const QSize size(balanced(width()), height());
    m_text->setGeometry(QStyle::alignedRect(layoutDirection(), m_alignment, size, rect()));
}

int OrvaBalancedTextView::balanced(int width) const
{
    const int height = m_text->heightForWidth(width);
    int tooNarrow = 0;
    int enough = width;
    while (enough - tooNarrow > 1) {
        const int middle = (enough + tooNarrow) / 2;
        (m_text->heightForWidth(middle) > height ? tooNarrow : enough) = middle;
    }
    return enough;
}

} // namespace orvane
