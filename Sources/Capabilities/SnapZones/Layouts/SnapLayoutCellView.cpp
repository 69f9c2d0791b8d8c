#include "Capabilities/SnapZones/Layouts/SnapLayoutCellView.h"

#include "OrvaneKit/Theme/OrvaSymbol.h"

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

constexpr int titleSize = 9;
constexpr double symbolSide = 28;
constexpr double gap = 6; // between the symbol and the title
constexpr double corner = 8;
constexpr int titleRoom = 4; // at each side of the title

} // namespace

SnapLayoutCellView::SnapLayoutCellView(SnapZone zone) : m_zone(zone)
{
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
    setText(title(zone));
    setAccessibleName(title(zone));
    themeChanged();
    setWidth(box.width());
}

int SnapLayoutCellView::neededWidth() const
{
    const double text = QFontMetricsF(font()).horizontalAdvance(QPushButton::text());
    return std::max(box.width(), static_cast<int>(std::ceil(text)) + 2 * titleRoom);
}

void SnapLayoutCellView::setWidth(int width)
{
    m_width = width;
    setFixedSize(sizeHint());
}

void SnapLayoutCellView::themeChanged()
{
    QFont own = orvaFont(OrvaFont::body);
    own.setPixelSize(titleSize);
    setFont(own);
}

void SnapLayoutCellView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(ownOpacity());
    const QRectF place = shape();
    const bool chosen = isDown() || underMouse();
    painter.setPen(Qt::NoPen);
    painter.setBrush(chosen ? faded(orvaColor(OrvaColor::accent), isDown() ? 0.32 : 0.18)
                            : faded(orvaColor(OrvaColor::primary), 0.05));
    painter.drawRoundedRect(place, corner, corner);

    const QFontMetricsF metrics(font());
    const double top = place.center().y() - (symbolSide + gap + metrics.height()) / 2;
    const QColor ink = orvaColor(OrvaColor::primary);
    paintOrvaSymbol(painter, symbol(m_zone), QRectF(place.left(), top, place.width(), symbolSide),
                    chosen ? orvaColor(OrvaColor::link) : ink);
    painter.setPen(ink);
    painter.drawText(QRectF(place.left(), top + symbolSide + gap, place.width(), metrics.height()),
                     Qt::AlignCenter, text());
    if (showsFocusRing())
        paintOrvaFocusRing(painter, place, corner);
}

} // namespace orvane
