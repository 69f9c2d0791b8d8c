#include "OrvaneKit/Controls/OrvaButtonView.h"

#include "OrvaneKit/Model/OrvaBindings.h"
#include "OrvaneKit/Theme/OrvaSymbol.h"

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

constexpr int boxHeight = 28;
constexpr int inset = 14;
constexpr double symbolSide = 16;
constexpr double symbolGap = 6;
constexpr double corner = 7;

} // namespace

OrvaButtonView::OrvaButtonView(const OrvaButton& button)
    : OrvaPushButtonView(button.action), m_symbol(button.systemImage), m_role(button.role)
{
    setAccessibleDescription(button.accessibleDescription);
    themeChanged();
    follow(m_cancellables, button.title, [this](const QString& title) { setTitle(title); });
    follow(m_cancellables, button.enabled, [this](bool enabled) { setEnabled(enabled); });
}

void OrvaButtonView::themeChanged()
{
    setFont(orvaFont(OrvaFont::body));
    updateGeometry();
}

double OrvaButtonView::symbolWidth() const
{
    return m_symbol ? symbolSide + (title().isEmpty() ? 0 : symbolGap) : 0;
}

QSize OrvaButtonView::sizeHint() const
{
    const QFontMetricsF metrics(font());
    const double width = 2 * inset + symbolWidth() + metrics.horizontalAdvance(title());
    const int height = std::max(boxHeight, static_cast<int>(metrics.height()) + 10);
    return QSize(static_cast<int>(std::ceil(width)) + 2 * orvaRingMargin, height + 2 * orvaRingMargin);
}

void OrvaButtonView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setOpacity(ownOpacity());
    const QRectF box = shape();
    if (isDefault())
        paintOrvaDefaultBox(painter, box, corner, isDown());
    else
        paintOrvaControlBox(painter, box, corner, isDown());

    const double textWidth = QFontMetricsF(font()).horizontalAdvance(title());
    double x = box.center().x() - (symbolWidth() + textWidth) / 2;
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    const OrvaColor plain = m_role == OrvaButton::Role::destructive ? OrvaColor::red : OrvaColor::primary;
    const QColor ink = orvaColor(isDefault() ? OrvaColor::onAccent : plain);
    if (m_symbol) {
        const double symbolX = mirrored ? x + textWidth + symbolWidth() - symbolSide : x;
        paintOrvaSymbol(painter, *m_symbol,
                        QRectF(symbolX, box.center().y() - symbolSide / 2, symbolSide, symbolSide), ink);
    }
    x += mirrored ? 0 : symbolWidth();
    painter.setPen(ink);
    painter.drawText(QRectF(x, box.top(), textWidth + 1, box.height()), Qt::AlignLeft | Qt::AlignVCenter,
                     title());
    if (showsFocusRing())
        paintOrvaFocusRing(painter, box, corner);
}

} // namespace orvane
