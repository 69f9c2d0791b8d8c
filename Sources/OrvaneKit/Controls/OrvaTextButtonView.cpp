#include "OrvaneKit/Controls/OrvaTextButtonView.h"

#include "OrvaneKit/Theme/OrvaSymbol.h"

#include <cmath>

namespace orvane {

namespace {

constexpr int inset = OrvaTextButtonView::margin - orvaRingMargin;
constexpr int rise = 2;
constexpr int symbolSide = 12;
constexpr int symbolGap = 3;
constexpr double corner = 4;

} // namespace

OrvaTextButtonView::OrvaTextButtonView(const OrvaTextButton& button)
    : OrvaPushButtonView(button.action), m_symbol(button.systemImage)
{
    setTitle(button.title);
    setAccessibleDescription(button.help);
    setToolTip(button.help);
    themeChanged();
}

void OrvaTextButtonView::themeChanged()
{
    setFont(orvaFont(OrvaFont::callout));
    updateGeometry();
}

QSize OrvaTextButtonView::sizeHint() const
{
    const QFontMetricsF metrics(font());
    const int text = static_cast<int>(std::ceil(metrics.horizontalAdvance(title())));
    const int symbol = m_symbol ? symbolGap + symbolSide : 0;
    return QSize(text + symbol + 2 * margin,
                 static_cast<int>(std::ceil(metrics.height())) + 2 * (rise + orvaRingMargin));
}

void OrvaTextButtonView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(ownOpacity());
    const QRectF box = shape();
    const QColor ink = faded(orvaColor(OrvaColor::link), isDown() ? 0.7 : 1);
    if (isHovered()) {
        QFont underlined = font();
        underlined.setUnderline(true);
        painter.setFont(underlined);
    }
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    const int symbol = m_symbol ? symbolGap + symbolSide : 0;
    const QRectF room = box.adjusted(inset, 0, -inset, 0);
    const QRectF text = mirrored ? room.adjusted(symbol, 0, 0, 0) : room.adjusted(0, 0, -symbol, 0);
    painter.setPen(ink);
    painter.drawText(text, Qt::AlignLeft | Qt::AlignVCenter, title());
    if (m_symbol) {
        const double x = mirrored ? room.left() : room.right() - symbolSide;
        paintOrvaSymbol(painter, *m_symbol,
                        QRectF(x, box.center().y() - symbolSide / 2.0, symbolSide, symbolSide), ink,
                        SystemSymbol::Weight::semibold);
    }
    if (showsFocusRing())
        paintOrvaFocusRing(painter, box, corner);
}

} // namespace orvane
