// The wishes of the program's own panels that the toolkit can't pass on to the desktop. Main thread.
#pragma once

#include <QMargins>
#include <QString>

class QWindow;

namespace orvane {

class Panels {
public:
    /// Posted on the default notification centre when `isCompositing()` has another answer.
    static QString didChangeCompositingNotification()
    {
        return QStringLiteral("OrvaneDidChangeCompositingNotification");
    }

    virtual ~Panels() = default;

    /// True if a transparent part of a window shows what is behind it. The answer is a kept one; nobody is
    /// asked.
    [[nodiscard]] virtual bool isCompositing() const = 0;

    /// Puts the window, from its next showing on, on all desktops, above windows that fill the screen, and in
    /// no task bar and no pager. It holds for one showing.
    virtual void joinAllSpaces(QWindow& window) = 0;

    /// Sets the margins of the window, in the toolkit's points, that hold nothing but its shadow: clicks
    /// there go to what is behind, and the desktop places the window as if they weren't there. To be called
    /// once the window has its size, and again after each change of it.
    virtual void setShadowMargins(QWindow& window, const QMargins& margins) = 0;

    /// Gives the keyboard to a window that is shown, whichever program has it. Meant for what the user has
    /// just asked for. The window has the keyboard a moment after the return.
    virtual void makeKey(QWindow& window) = 0;
};

} // namespace orvane
