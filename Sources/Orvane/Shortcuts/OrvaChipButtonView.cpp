#include "Orvane/Shortcuts/OrvaChipButtonView.h"

#include "OrvaneKit/Model/OrvaBindings.h"
#include "OrvaneKit/Theme/OrvaSymbol.h"
#include "OrvaneKit/Theme/OrvaTint.h"

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

constexpr int boxHeight = 22;
constexpr int inset = 8;
constexpr int gap = 5;
constexpr int symbolSide = 14;
constexpr double corner = 6;

} // namespace

OrvaChipButtonView::OrvaChipButtonView(const OrvaChipButton& button)
    : OrvaPushButtonView(button.action), m_symbol(button.chip.systemImage)
{
    setToolTip(button.help);
    themeChanged();
    follow(m_cancellables, button.chip.text, [this, help = button.help](const QString& text) {
        setTitle(text);
        if (!help.isEmpty())
            setAccessibleName(QStringLiteral("%1: %2").arg(help, text));
    });
    follow(m_cancellables, button.chip.prominent, [this](bool prominent) {
        m_prominent = prominent;
        update();
    });
}

void OrvaChipButtonView::themeChanged()
{
    setFont(orvaFont(OrvaFont::captionMedium));
    updateGeometry();
}

QSize OrvaChipButtonView::sizeHint() const
{
    const QFontMetricsF metrics(font());
    const int text = static_cast<int>(std::ceil(metrics.horizontalAdvance(title())));
    const int symbol = m_symbol ? symbolSide + gap : 0;
    const int height = std::max(boxHeight, static_cast<int>(std::ceil(metrics.height())) + 6);
    return QSize(text + symbol + 2 * (inset + orvaRingMargin), height + 2 * orvaRingMargin);
}

void OrvaChipButtonView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(ownOpacity());
    const QRectF box = shape();
    const double strength = isDown()      ? OrvaTint::pressedChip
                            : isHovered() ? OrvaTint::hoveredChip
                                          : OrvaTint::chip;
    painter.setPen(Qt::NoPen);
    painter.setBrush(faded(orvaColor(OrvaColor::primary), strength));
    painter.drawRoundedRect(box, corner, corner);

    const QColor ink = orvaColor(m_prominent ? OrvaColor::primary : OrvaColor::secondary);
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    const QRectF room = box.adjusted(inset, 0, -inset, 0);
    QRectF text = room;
    if (m_symbol) {
        const double x = mirrored ? room.right() - symbolSide : room.left();
        paintOrvaSymbol(painter, *m_symbol,
                        QRectF(x, box.center().y() - symbolSide / 2.0, symbolSide, symbolSide), ink);
        text =
            mirrored ? room.adjusted(0, 0, -symbolSide - gap, 0) : room.adjusted(symbolSide + gap, 0, 0, 0);
    }
    painter.setPen(ink);
    painter.drawText(text, Qt::AlignLeft | Qt::AlignVCenter, title());
    if (showsFocusRing())
        paintOrvaFocusRing(painter, box, corner);
}

} // namespace orvane
