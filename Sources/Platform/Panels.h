// What a panel of the program's own asks of the desktop, where the toolkit has no words for it. Main thread.
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

    /// Whether what is behind a window shows where the window is transparent. Kept and not asked for.
    virtual bool isCompositing() const = 0;

    /// From its next showing on, the window is on all desktops, above those that fill the screen, and in no
    /// task bar and no pager. It holds for one showing.
    virtual void joinAllSpaces(QWindow& window) = 0;

    /// The margins of the window, in the toolkit's points, that hold nothing but its shadow: clicks there go
    /// to what is behind, and the desktop places the window as though they weren't there. For a window with
    /// its size, again after each change of it.
    virtual void setShadowMargins(QWindow& window, const QMargins& margins) = 0;

    /// Gives the keyboard to a window that is shown, whichever program has it: for what the user has just
    /// asked for. It has it a moment after the return.
    virtual void makeKey(QWindow& window) = 0;
};

} // namespace orvane
