// Helpers of the view kit's widget tests: rendering, finding, and a user's keys and mouse.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"
#include "OrvaneKit/Controls/OrvaTextView.h"
#include "OrvaneKit/Lists/OrvaStackView.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWidget>

#include <chrono>
#include <memory>

namespace orvane::tests {

inline std::unique_ptr<QWidget> rendered(const AnyView& view)
{
    return std::unique_ptr<QWidget>(view.makeWidget());
}

/// Handles events until the condition holds; false when it doesn't within five seconds.
template <class Condition>
bool waitUntil(Condition condition)
{
    const QDeadlineTimer deadline(std::chrono::seconds(5));
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    return true;
}

/// Returns every widget of this class below the given one, that one included, in the order in which they were
/// made.
template <class Widget>
QList<Widget*> all(QWidget& root)
{
    QList<Widget*> found;
    if (auto* own = dynamic_cast<Widget*>(&root))
        found.append(own);
    for (QWidget* child : root.findChildren<QWidget*>()) {
        if (auto* match = dynamic_cast<Widget*>(child))
            found.append(match);
    }
    return found;
}

/// True if neither the widget nor anything between it and the root is hidden.
inline bool isPartOf(const QWidget& root, const QWidget& widget)
{
    for (const QWidget* step = &widget; step && step != &root; step = step->parentWidget()) {
        if (isLeftOut(*step))
            return false;
    }
    return true;
}

inline int shownDividers(QWidget& root)
{
    int count = 0;
    for (const OrvaDividerView* divider : all<OrvaDividerView>(root))
        count += isPartOf(root, *divider) ? 1 : 0;
    return count;
}

inline QStringList shownTexts(QWidget& root)
{
    QStringList texts;
    for (const OrvaTextView* text : all<OrvaTextView>(root)) {
        if (isPartOf(root, *text))
            texts.append(text->text());
    }
    return texts;
}

inline void press(QWidget& widget, Qt::Key key, const QString& text = {})
{
    QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier, text);
    QApplication::sendEvent(&widget, &down);
    QKeyEvent up(QEvent::KeyRelease, key, Qt::NoModifier, text);
    QApplication::sendEvent(&widget, &up);
}

inline void mouse(QWidget& widget, QEvent::Type type, const QPointF& at)
{
    const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, at, widget.mapToGlobal(at),
                      type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, held, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}

inline void clickAt(QWidget& widget, const QPointF& at)
{
    mouse(widget, QEvent::MouseButtonPress, at);
    mouse(widget, QEvent::MouseButtonRelease, at);
}

inline void click(QWidget& widget)
{
    clickAt(widget, QRectF(widget.rect()).center());
}

/// Shows a window and waits until it has the keyboard.
inline void showActive(QWidget& window)
{
    window.show();
    window.activateWindow();
    waitUntil([&] { return window.isActiveWindow(); });
}

} // namespace orvane::tests
