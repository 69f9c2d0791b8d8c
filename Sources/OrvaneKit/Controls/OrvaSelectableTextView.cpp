#include "OrvaneKit/Controls/OrvaSelectableTextView.h"

#include "OrvaneKit/Controls/OrvaMenuView.h"
#include "OrvaneKit/Lists/OrvaStackView.h"
#include "OrvaneKit/Model/KitText.h"
#include "OrvaneKit/Model/OrvaBindings.h"

#include <QAction>
#include <QContextMenuEvent>

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

constexpr int ring = orvaRingMargin;
constexpr int ownMargin = 2; // the line edit's own margin at either side
constexpr int narrowest = 72;
constexpr double corner = 4;

} // namespace

OrvaSelectableTextView::OrvaSelectableTextView(const Live<QString>& text)
{
    setReadOnly(true);
    setCursor(Qt::IBeamCursor);
    setFrame(false);
    setFocusPolicy(Qt::StrongFocus);
    setTextMargins(ring - ownMargin, 0, ring - ownMargin, 0);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    themeChanged();
    follow(m_cancellables, text, [this](const QString& shown) { showText(shown); });
}

void OrvaSelectableTextView::showText(const QString& text)
{
    setAccessibleName(text);
    if (text != this->text())
        setText(text);
    setCursorPosition(0);
    setToolTip(isElided() ? text : QString());
    setLeftOut(*this, text.isEmpty());
    updateGeometry();
}

void OrvaSelectableTextView::themeChanged()
{
    setFont(orvaFont(OrvaFont::body));
    setOrvaFieldColors(*this);
    updateGeometry();
}

double OrvaSelectableTextView::lineWidth() const
{
    return QFontMetricsF(font()).horizontalAdvance(text());
}

QRectF OrvaSelectableTextView::textRect() const
{
    return QRectF(rect()).adjusted(ring, 0, -ring, 0);
}

bool OrvaSelectableTextView::isElided() const
{
    return std::ceil(lineWidth()) > textRect().width();
}

QSize OrvaSelectableTextView::sizeHint() const
{
    // One point more is for the cursor behind the last letter.
    return QSize(static_cast<int>(std::ceil(lineWidth())) + 1 + 2 * ring, fontMetrics().height() + 2 * ring);
}

QSize OrvaSelectableTextView::minimumSizeHint() const
{
    const QSize whole = sizeHint();
    return QSize(std::min(whole.width(), narrowest), whole.height());
}

void OrvaSelectableTextView::resizeEvent(QResizeEvent* event)
{
    QLineEdit::resizeEvent(event);
    setToolTip(isElided() ? text() : QString());
}

void OrvaSelectableTextView::focusInEvent(QFocusEvent* event)
{
    OrvaControl::focusInEvent(event);
    // The whole text is marked when the keyboard arrives, with its beginning visible.
    if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason)
        setSelection(static_cast<int>(text().size()), -static_cast<int>(text().size()));
}

void OrvaSelectableTextView::focusOutEvent(QFocusEvent* event)
{
    OrvaControl::focusOutEvent(event);
    if (event->reason() == Qt::PopupFocusReason || event->reason() == Qt::ActiveWindowFocusReason)
        return;
    deselect();
    setCursorPosition(0);
}

void OrvaSelectableTextView::contextMenuEvent(QContextMenuEvent* event)
{
    auto* menu = new OrvaMenuView(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(KitText::tr("Copy"), this, [this] {
        if (!hasSelectedText())
            selectAll();
        copy();
    });
    menu->addAction(KitText::tr("Select All"), this, &QLineEdit::selectAll);
    menu->popup(event->globalPos());
}

void OrvaSelectableTextView::paintEvent(QPaintEvent* event)
{
    if (isElided() && !hasFocus() && !hasSelectedText()) {
        QPainter painter(this);
        painter.setOpacity(ownOpacity());
        painter.setPen(orvaColor(OrvaColor::primary));
        paintOrvaElidedText(painter, textRect(), layoutDirection(), text(), Qt::ElideMiddle);
        return;
    }
    QLineEdit::paintEvent(event);
    if (showsFocusRing()) {
        QPainter painter(this);
        paintOrvaFocusRing(painter, shape(), corner);
    }
}

} // namespace orvane
