#include "OrvaneKit/Controls/OrvaStepperView.h"

#include "OrvaneKit/Theme/OrvaSymbol.h"

#include <QLineEdit>
#include <QMouseEvent>
#include <QWheelEvent>

#include <algorithm>

namespace orvane {

namespace {

constexpr int boxHeight = 28;
constexpr int arrowsWidth = 24;
constexpr int textInset = 10;
constexpr double corner = 7;

} // namespace

OrvaStepperView::OrvaStepperView(Binding<int> value, int lower, int upper, int step,
                                 const Live<QString>& name)
    : m_value(std::move(value))
{
    setRange(lower, std::max(lower, upper));
    setSingleStep(std::max(1, step));
    setButtonSymbols(QAbstractSpinBox::NoButtons);
    setFrame(false);
    setKeyboardTracking(false);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    lineEdit()->setFrame(false);
    lineEdit()->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    themeChanged();
    m_value.follow(*this, [this](int shown) { setValue(shown); });
    follow(m_cancellables, name, [this](const QString& text) { setAccessibleName(text); });
    connect(this, &QSpinBox::valueChanged, this, &OrvaStepperView::valueEdited);
}

void OrvaStepperView::themeChanged()
{
    setOrvaFieldColors(*lineEdit());
}

void OrvaStepperView::valueEdited(int value)
{
    if (!m_value.isShowing())
        m_value.set(value);
}

QSize OrvaStepperView::sizeHint() const
{
    const QFontMetrics metrics(font());
    const int text = std::max({metrics.horizontalAdvance(textFromValue(minimum())),
                               metrics.horizontalAdvance(textFromValue(maximum())),
                               metrics.horizontalAdvance(QStringLiteral("00"))});
    const int height = std::max(boxHeight, metrics.height() + 10);
    return QSize(textInset * 2 + text + arrowsWidth + 2 * orvaRingMargin, height + 2 * orvaRingMargin);
}

QRectF OrvaStepperView::arrows() const
{
    QRectF box = shape();
    layoutDirection() == Qt::RightToLeft ? box.setWidth(arrowsWidth) : box.setLeft(box.right() - arrowsWidth);
    return box;
}

void OrvaStepperView::resizeEvent(QResizeEvent* event)
{
    QSpinBox::resizeEvent(event);
    QRectF text = shape().adjusted(textInset / 2.0, 1, -textInset / 2.0, -1);
    layoutDirection() == Qt::RightToLeft ? text.setLeft(arrows().right()) : text.setRight(arrows().left());
    lineEdit()->setGeometry(text.toRect());
}

void OrvaStepperView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !arrows().contains(event->position()))
        return event->ignore();
    interpretText();
    event->position().y() < arrows().center().y() ? stepUp() : stepDown();
}

void OrvaStepperView::mouseMoveEvent(QMouseEvent* event)
{
    event->accept();
}
void OrvaStepperView::mouseReleaseEvent(QMouseEvent* event)
{
    event->accept();
}
void OrvaStepperView::wheelEvent(QWheelEvent* event)
{
    event->ignore();
}

void OrvaStepperView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setOpacity(ownOpacity());
    paintOrvaControlBox(painter, shape(), corner, false);
    const QRectF area = arrows();
    paintOrvaSymbol(painter, QStringLiteral("chevron.up.chevron.down"),
                    QRectF(area.center() - QPointF(7, 7), QSizeF(14, 14)), orvaColor(OrvaColor::secondary),
                    SystemSymbol::Weight::semibold);
    if (showsFocusRing())
        paintOrvaFocusRing(painter, shape(), corner);
}

} // namespace orvane
