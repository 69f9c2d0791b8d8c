#include "KeyboardShortcuts/Recorder/RecorderTextView.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace orvane::KeyboardShortcuts {

namespace {

constexpr QChar enclosingCircle = u'\u20DD';
constexpr QChar enclosingKeycap = u'\u20E3';

constexpr double keycapGap = 2;
constexpr double keycapInset = 4;
constexpr double keycapCorner = 3;
constexpr double keycapScale = 0.85; // for the character in the keycap

QFont keycapFont(QFont font)
{
    if (font.pixelSize() > 0)
        font.setPixelSize(std::max(1, qRound(font.pixelSize() * keycapScale)));
    else
        font.setPointSizeF(font.pointSizeF() * keycapScale);
    return font;
}

} // namespace

RecorderText::RecorderText(const QString& text, const QFont& font) : m_plain(text), m_font(font)
{
    if (text.size() < 2 || (text.back() != enclosingKeycap && text.back() != enclosingCircle))
        return;
    m_enclosed = text.at(text.size() - 2);
    m_plain.chop(2);
}

double RecorderText::keycapWidth() const
{
    const QFontMetricsF metrics(keycapFont(m_font));
    return std::ceil(std::max(metrics.horizontalAdvance(m_enclosed), metrics.capHeight()) + 2 * keycapInset);
}

double RecorderText::width() const
{
    const double plain = std::ceil(QFontMetricsF(m_font).horizontalAdvance(m_plain));
    return m_enclosed.isEmpty() ? plain : plain + keycapGap + keycapWidth();
}

void RecorderText::paint(QPainter& painter, const QRectF& box, const QRectF& room) const
{
    const double keycap = m_enclosed.isEmpty() ? 0 : keycapGap + keycapWidth();
    const double width = std::min(this->width(), room.width());
    const double x = std::round(std::clamp(box.center().x() - width / 2, room.left(), room.right() - width));
    painter.setFont(m_font);
    const QString plain =
        QFontMetricsF(m_font).elidedText(m_plain, Qt::ElideRight, std::max(0.0, room.width() - keycap));
    painter.drawText(QRectF(x, box.top(), width - keycap, box.height()),
                     Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextDontClip, plain);
    if (m_enclosed.isEmpty())
        return;
    const double height = std::ceil(QFontMetricsF(m_font).capHeight()) + 2 * keycapInset;
    paintKeycap(painter, QRectF(x + width - keycapWidth(), std::round(box.center().y() - height / 2),
                                keycapWidth(), height));
}

void RecorderText::paintKeycap(QPainter& painter, const QRectF& keycap) const
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setFont(keycapFont(m_font));
    painter.drawText(keycap, Qt::AlignCenter | Qt::TextSingleLine | Qt::TextDontClip, m_enclosed);
    QColor line = painter.pen().color();
    line.setAlphaF(line.alphaF() * 0.5F);
    painter.setPen(QPen(line, 1));
    painter.drawRoundedRect(keycap.adjusted(0.5, 0.5, -0.5, -0.5), keycapCorner, keycapCorner);
    painter.restore();
}

} // namespace orvane::KeyboardShortcuts
