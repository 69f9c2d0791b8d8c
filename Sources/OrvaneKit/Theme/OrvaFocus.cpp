#include "OrvaneKit/Theme/OrvaFocus.h"

#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QWidget>

namespace orvane {

bool canTakeTab(const QWidget& widget)
{
    return (widget.focusPolicy() & Qt::TabFocus) && widget.isEnabled() && widget.isVisible();
}

// The parts of one widget may stand apart in the window's chain, so all of it is read.
QList<QWidget*> focusPlaces(const QWidget& root)
{
    QList<QWidget*> places;
    QWidget* const start = root.window();
    QWidget* step = start;
    do {
        const bool isPlace = step->focusPolicy() != Qt::NoFocus && !step->focusProxy();
        if (isPlace && (step == &root || root.isAncestorOf(step)))
            places.append(step);
        step = step->nextInFocusChain(); // null in a window that is about to be gone
    } while (step && step != start);
    return places;
}

QList<QWidget*> tabStops(const QWidget& root)
{
    QList<QWidget*> stops = focusPlaces(root);
    stops.removeIf([&root](const QWidget* place) { return place == &root || !canTakeTab(*place); });
    return stops;
}

QWidget* firstTabStop(const QWidget& root)
{
    return tabStops(root).value(0);
}

QWidget* chainTabs(QWidget* before, const QList<QWidget*>& widgets)
{
    for (QWidget* widget : widgets) {
        if (before)
            QWidget::setTabOrder(before, widget);
        before = widget;
    }
    return before;
}

bool isUsedByKeyboard(const QWidget* widget)
{
    const auto* use = dynamic_cast<const OrvaKeyboardUse*>(widget);
    return use && use->isUsedByKeyboard();
}

void handFocusOn(const QWidget* from, QWidget& to)
{
    to.setFocus(isUsedByKeyboard(from) ? Qt::TabFocusReason : Qt::OtherFocusReason);
}

} // namespace orvane
