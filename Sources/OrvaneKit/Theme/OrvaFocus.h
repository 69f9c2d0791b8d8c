// The order in which Tab goes through a part of a window, and the passing on of the focus. Main thread.
#pragma once

#include <QList>

class QWidget;

namespace orvane {

/// Returns true if Tab stops at the widget now: it is in the order of Tab, enabled and visible.
[[nodiscard]] bool canTakeTab(const QWidget& widget);

/// Returns all widgets in `root` that the focus can be on, `root` and hidden and disabled ones too, in the
/// order of Tab.
[[nodiscard]] QList<QWidget*> focusPlaces(const QWidget& root);

/// Returns the widgets below `root` at which Tab stops now, in its order.
[[nodiscard]] QList<QWidget*> tabStops(const QWidget& root);
/// Returns null where there is none.
[[nodiscard]] QWidget* firstTabStop(const QWidget& root);

/// Puts the widgets one after the other in the order of Tab, the first one after `before` if that is given.
/// Returns the last one, or `before` when there are none.
QWidget* chainTabs(QWidget* before, const QList<QWidget*>& widgets);

/// Returns true if the widget was last used with the keyboard; false for null.
[[nodiscard]] bool isUsedByKeyboard(const QWidget* widget);
/// Gives `to` the focus in place of `from`, which may be null. It shows a focus ring if `from` was used with
/// the keyboard.
void handFocusOn(const QWidget* from, QWidget& to);

} // namespace orvane
