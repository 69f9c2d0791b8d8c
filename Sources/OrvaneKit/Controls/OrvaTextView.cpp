#include "OrvaneKit/Controls/OrvaTextView.h"

#include "OrvaneKit/Lists/OrvaStackView.h"
#include "OrvaneKit/Model/OrvaBindings.h"

#include <QStyle>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

// No paragraph becomes narrower than this; a longer word breaks.
constexpr int narrowest = 72;

/// Lays the text out in lines of the given width; returns their height.
double layOut(QTextLayout& layout, double width, Qt::Alignment alignment)
{
    QTextOption option(alignment);
    // The text's own direction and not the page's, or its full stop would stand before it.
    option.setTextDirection(layout.text().isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    double height = 0;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        line.setPosition(QPointF(0, height));
        height += std::ceil(line.height());
    }
    layout.endLayout();
    return height;
}

QString withLineSeparators(QString text)
{
    return text.replace(u'\n', QChar::LineSeparator);
}

/// Splits the text into single digits and the text between them, whose letters may be joined.
QStringList runs(const QString& text)
{
    QStringList found;
    bool joins = false;
    for (const QChar character : text) {
        const bool digit = character.isDigit();
        if (joins && !digit)
            found.last().append(character);
        else
            found.append(QString(character));
        joins = !digit;
    }
    return found;
}

} // namespace

OrvaTextView::OrvaTextView(const Live<QString>& text, OrvaFont font, OrvaColor color, Wrapping wrapping)
    : m_font(font), m_color(color), m_wrapping(wrapping)
{
    setTextFormat(Qt::PlainText);
    setFont(orvaFont(font));
    setWordWrap(wrapping == Wrapping::paragraph);
    follow(m_cancellables, text, [this](const QString& shown) { show(shown); });
    QSizePolicy policy(QSizePolicy::Preferred,
                       wrapping == Wrapping::paragraph ? QSizePolicy::Minimum : QSizePolicy::Fixed);
    policy.setHeightForWidth(wrapping == Wrapping::paragraph);
    setSizePolicy(policy);
}

void OrvaTextView::show(const QString& text)
{
    if (text == this->text() && !text.isEmpty())
        return;
    setText(text);
    setLeftOut(*this, text.isEmpty());
}

void OrvaTextView::setColor(OrvaColor color)
{
    m_color = color;
    update();
}

void OrvaTextView::themeChanged()
{
    setFont(orvaFont(m_font));
    updateGeometry();
}

double OrvaTextView::digitWidth() const
{
    const QFontMetricsF metrics(font());
    double widest = 0;
    for (char16_t digit = u'0'; digit <= u'9'; ++digit)
        widest = std::max(widest, metrics.horizontalAdvance(QChar(digit)));
    return widest;
}

double OrvaTextView::lineWidth() const
{
    const QFontMetricsF metrics(font());
    if (m_wrapping == Wrapping::paragraph) {
        double widest = 0;
        for (const QString& line : text().split(u'\n'))
            widest = std::max(widest, metrics.horizontalAdvance(line));
        return widest;
    }
    double width = 0;
    for (const QString& run : runs(text()))
        width += run.front().isDigit() ? digitWidth() : metrics.horizontalAdvance(run);
    return width;
}

QSize OrvaTextView::sizeHint() const
{
    // Without this one point more, the rounding of glyph positions may break the last word off.
    const int width = static_cast<int>(std::ceil(lineWidth())) + 1;
    return QSize(width, heightForWidth(width));
}

QSize OrvaTextView::minimumSizeHint() const
{
    const QSize whole = sizeHint();
    if (m_wrapping == Wrapping::singleLine)
        return whole;
    return QSize(std::min(whole.width(), narrowest), QFontMetrics(font()).height());
}

int OrvaTextView::heightForWidth(int width) const
{
    if (m_wrapping == Wrapping::singleLine)
        return QFontMetrics(font()).height();
    QTextLayout layout(withLineSeparators(text()), font());
    return static_cast<int>(std::ceil(layOut(layout, std::max(width, 1), alignment())));
}

void OrvaTextView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setOpacity(ownOpacity());
    painter.setPen(orvaColor(m_color));
    if (m_wrapping == Wrapping::singleLine) {
        paintSingleLine(painter);
        return;
    }
    QTextLayout layout(withLineSeparators(text()), font(), this);
    // The letters may run the other way than the page, so the alignment is the page's.
    const double used = layOut(layout, width(), QStyle::visualAlignment(layoutDirection(), alignment()));
    layout.draw(&painter, QPointF(0, std::max(0.0, std::floor((height() - used) / 2))));
}

void OrvaTextView::paintSingleLine(QPainter& painter) const
{
    const QFontMetricsF metrics(font());
    const double baseline = (height() - metrics.height()) / 2 + metrics.ascent();
    const double digit = digitWidth();
    double x = isRightToLeft() ? 0 : width() - lineWidth(); // at the trailing edge
    for (const QString& run : runs(text())) {
        const double own = metrics.horizontalAdvance(run);
        const double cell = run.front().isDigit() ? digit : own;
        painter.drawText(QPointF(x + (cell - own) / 2, baseline), run);
        x += cell;
    }
}

} // namespace orvane
