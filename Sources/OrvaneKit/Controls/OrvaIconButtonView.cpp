#include "OrvaneKit/Controls/OrvaIconButtonView.h"

#include "OrvaneKit/Theme/OrvaSymbol.h"

namespace orvane {

namespace {

constexpr int symbolSide = 16;
constexpr int hitSide = 24;
constexpr double corner = 6;

static_assert(2 * OrvaIconButtonView::margin + symbolSide == hitSide + 2 * orvaRingMargin);

} // namespace

OrvaIconButtonView::OrvaIconButtonView(const OrvaIconButton& button)
    : OrvaPushButtonView(button.action), m_symbol(button.systemImage)
{
    setToolTip(button.help);
    setAccessibleName(button.accessibleName.isEmpty() ? button.help : button.accessibleName);
}

QSize OrvaIconButtonView::sizeHint() const
{
    return QSize(symbolSide + 2 * margin, symbolSide + 2 * margin);
}

void OrvaIconButtonView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(ownOpacity());
    const QRectF box = shape();
    const bool hovered = isHovered();
    if (hovered || isDown()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(faded(orvaColor(OrvaColor::primary), isDown() ? 0.14 : 0.07));
        painter.drawRoundedRect(box, corner, corner);
    }
    paintOrvaSymbol(painter, m_symbol, rect().marginsRemoved(QMargins(margin, margin, margin, margin)),
                    orvaColor(hovered || isDown() ? OrvaColor::primary : OrvaColor::secondary));
    if (showsFocusRing())
        paintOrvaFocusRing(painter, box, corner);
}

} // namespace orvane
