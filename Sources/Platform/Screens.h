// The displays of the desktop, as they stand. Main thread.
//
// Points, in a space that hangs on the primary display: its lower left corner is the origin, and y runs
// upwards.
#pragma once

#include "Platform/Geometry.h"

#include <QList>
#include <QRectF>
#include <QString>
#include <QVariantMap>

#include <optional>

namespace orvane {

struct Screen {
    Rect frame;
    /// The frame without what panels and docks keep for themselves.
    Rect visibleFrame;
    /// Pixels in a point.
    double backingScaleFactor = 1;
    QString localizedName;
    /// Holds the display's number under `screenNumberKey()`; a display keeps it for as long as it is
    /// connected.
    QVariantMap deviceDescription;

    static QString screenNumberKey() { return QStringLiteral("NSScreenNumber"); }

    friend bool operator==(const Screen&, const Screen&) = default;
};

class Screens {
public:
    /// Posted on the default notification centre when a display has come, gone, moved or changed its size, or
    /// when a visible frame is another one. The lists below are new by then.
    static QString didChangeScreenParametersNotification()
    {
        return QStringLiteral("NSApplicationDidChangeScreenParametersNotification");
    }

    virtual ~Screens() = default;

    /// The primary display first. Kept and not asked for: costs the copying of a list. Empty while there is
    /// no display.
    virtual QList<Screen> screens() const = 0;
    /// The one that has the window with the keyboard's focus; the primary one when no window has it.
    virtual std::optional<Screen> mainScreen() const = 0;

    /// Where a window of this program has to stand, in the coordinates of the user interface toolkit, to
    /// cover `frame`; and back.
    virtual QRectF windowGeometry(const Rect& frame) const = 0;
    virtual Rect frameOfWindow(const QRectF& geometry) const = 0;
};

} // namespace orvane
