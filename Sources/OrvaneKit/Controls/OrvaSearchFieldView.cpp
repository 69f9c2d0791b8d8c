#include "OrvaneKit/Controls/OrvaSearchFieldView.h"

#include "OrvaneKit/Model/KitText.h"
#include "OrvaneKit/Theme/OrvaSymbol.h"

#include <QMouseEvent>

#include <algorithm>

namespace orvane {

namespace {

constexpr int boxHeight = 30;
constexpr int inset = 9;
constexpr int symbolSide = 16;
constexpr int gap = 6;
constexpr double corner = 7;

} // namespace

OrvaSearchFieldView::OrvaSearchFieldView(const QString& name)
{
    setFrame(false);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setPlaceholderText(KitText::tr("Search"));
    setAccessibleName(name);
    constexpr int beside = orvaRingMargin + inset + symbolSide + gap - 2; // 2 are the line edit's own
    setTextMargins(beside, 0, beside, 0);
    themeChanged();
}

void OrvaSearchFieldView::themeChanged()
{
    setFont(orvaFont(OrvaFont::body));
    setOrvaFieldColors(*this);
    updateGeometry();
}

QSize OrvaSearchFieldView::sizeHint() const
{
    const int height = std::max(boxHeight, fontMetrics().height() + 10);
    return QSize(200, height + 2 * orvaRingMargin);
}

QSize OrvaSearchFieldView::minimumSizeHint() const
{
    return QSize(120, sizeHint().height());
}

QRectF OrvaSearchFieldView::symbolRect() const
{
    const QRectF box = shape();
    const double x = isMirrored() ? box.right() - inset - symbolSide : box.left() + inset;
    return QRectF(x, box.center().y() - symbolSide / 2.0, symbolSide, symbolSide);
}

QRectF OrvaSearchFieldView::clearRect() const
{
    if (text().isEmpty())
        return {};
    const QRectF box = shape();
    const double x = isMirrored() ? box.left() + inset : box.right() - inset - symbolSide;
    return QRectF(x, box.center().y() - symbolSide / 2.0, symbolSide, symbolSide);
}

void OrvaSearchFieldView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && clearRect().adjusted(-4, -4, 4, 4).contains(event->position()))
        clear();
    else
        QLineEdit::mousePressEvent(event);
}

void OrvaSearchFieldView::mouseMoveEvent(QMouseEvent* event)
{
    const bool onClear = clearRect().adjusted(-4, -4, 4, 4).contains(event->position());
    setCursor(onClear ? Qt::ArrowCursor : Qt::IBeamCursor);
    QLineEdit::mouseMoveEvent(event);
}

void OrvaSearchFieldView::paintEvent(QPaintEvent* event)
{
    {
        QPainter painter(this);
        paintOrvaControlBox(painter, shape(), corner, false);
        paintOrvaSymbol(painter, QStringLiteral("magnifyingglass"), symbolRect(),
                        orvaColor(OrvaColor::secondary));
        if (!text().isEmpty())
            paintOrvaSymbol(painter, QStringLiteral("xmark.circle.fill"), clearRect(),
                            orvaColor(OrvaColor::secondary));
        // Keys arrive here however the focus came, so a field always shows it.
        if (hasFocus())
            paintOrvaFocusRing(painter, shape(), corner);
    }
    QLineEdit::paintEvent(event);
}

} // namespace orvane
