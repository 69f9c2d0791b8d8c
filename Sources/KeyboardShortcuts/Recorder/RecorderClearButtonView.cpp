#include "KeyboardShortcuts/Recorder/RecorderClearButtonView.h"

#include "KeyboardShortcuts/KeyboardShortcutsText.h"
#include "OrvaneKit/Theme/OrvaSymbol.h"

#include <QMouseEvent>

namespace orvane::KeyboardShortcuts {

namespace {

constexpr double symbolSide = 14;

} // namespace

RecorderClearButton::RecorderClearButton(QWidget* recorder) : OrvaThemed(recorder)
{
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::NoFocus);
    setCursor(Qt::ArrowCursor);
    setAccessibleName(KeyboardShortcutsText::tr("Clear shortcut"));
    resize(sizeHint());
    hide();
}

void RecorderClearButton::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        click();
    event->accept();
}

void RecorderClearButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const bool hovered = underMouse() && isEnabled();
    paintOrvaSymbol(
        painter, QStringLiteral("xmark.circle.fill"),
        QRectF((width() - symbolSide) / 2, (height() - symbolSide) / 2, symbolSide, symbolSide),
        faded(orvaColor(hovered ? OrvaColor::primary : OrvaColor::secondary), hovered ? 0.9 : 0.7));
}

} // namespace orvane::KeyboardShortcuts
