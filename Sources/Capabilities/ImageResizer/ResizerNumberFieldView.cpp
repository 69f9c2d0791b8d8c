#include "Capabilities/ImageResizer/ResizerNumberFieldView.h"

#include <QIntValidator>

#include <algorithm>

namespace orvane {

namespace {

constexpr int mostDigits = 6;
constexpr int largestNumber = 999'999;
constexpr int inset = 6;
constexpr double corner = 6;

} // namespace

ResizerNumberFieldView::ResizerNumberFieldView(const ResizerNumberField& field) : m_value(field.value)
{
    setFrame(false);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setPlaceholderText(field.prompt);
    setAccessibleName(field.name);
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setValidator(new QIntValidator(0, largestNumber, this));
    constexpr int beside = orvaRingMargin + inset - 2; // 2 are the line edit's own
    setTextMargins(beside, 0, beside, 0);
    themeChanged();
    m_value.follow(*this, [this](int number) { showNumber(number); });
    connect(this, &QLineEdit::textEdited, this, [this](const QString& text) {
        bool isNumber = false;
        const int number = text.toInt(&isNumber);
        if (isNumber)
            m_value.set(number);
    });
}

void ResizerNumberFieldView::showNumber(int number)
{
    // "012" and "12" are one number: what is being typed stays as it is.
    bool isNumber = false;
    if (text().toInt(&isNumber) != number || !isNumber)
        setText(QString::number(number));
}

void ResizerNumberFieldView::focusOutEvent(QFocusEvent* event)
{
    setText(QString::number(m_value.get()));
    OrvaControl::focusOutEvent(event);
}

void ResizerNumberFieldView::themeChanged()
{
    setFont(orvaFont(OrvaFont::body));
    setOrvaFieldColors(*this);
    updateGeometry();
}

QSize ResizerNumberFieldView::sizeHint() const
{
    const int width =
        fontMetrics().horizontalAdvance(QString(mostDigits, u'0')) + 2 * (inset + orvaRingMargin) + 2;
    return {width, std::max(24, fontMetrics().height() + 8) + 2 * orvaRingMargin};
}

void ResizerNumberFieldView::paintEvent(QPaintEvent* event)
{
    {
        QPainter painter(this);
        paintOrvaControlBox(painter, shape(), corner, false);
        if (hasFocus())
            paintOrvaFocusRing(painter, shape(), corner);
    }
    QLineEdit::paintEvent(event);
}

} // namespace orvane
