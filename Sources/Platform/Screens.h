// The displays of the desktop at the present moment. Main thread.
//
// The unit is points, in a space bound to the primary display: its lower left corner is the origin, and y
// runs upwards.
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
    /// The frame without the parts that panels and docks reserve.
    Rect visibleFrame;
    /// Pixels for each point.
    double backingScaleFactor = 1;
    QString localizedName;
    /// Holds the display's number under `screenNumberKey()`; a display keeps its number for as long as it is
    /// connected.
    QVariantMap deviceDescription;

    static QString screenNumberKey() { return QStringLiteral("NSScreenNumber"); }

    friend bool operator==(const Screen&, const Screen&) = default;
};

class Screens {
public:
    /// Posted on the default notification centre when a display has come, gone, moved or changed its size, or
    /// when a visible frame has changed. The lists below are new by then.
    static QString didChangeScreenParametersNotification()
    {
        return QStringLiteral("NSApplicationDidChangeScreenParametersNotification");
    }

    virtual ~Screens() = default;

    /// Returns the displays, the primary one first. They are kept, so a call costs the copying of a list.
    /// Empty while there is no display.
    [[nodiscard]] virtual QList<Screen> screens() const = 0;
    /// Returns the display that has the window with the keyboard's focus; the primary one when no window has
    /// it.
    [[nodiscard]] virtual std::optional<Screen> mainScreen() const = 0;

    /// Converts between `frame` and the place of a window of this program that covers it, in the coordinates
    /// of the user interface toolkit.
    [[nodiscard]] virtual QRectF windowGeometry(const Rect& frame) const = 0;
    [[nodiscard]] virtual Rect frameOfWindow(const QRectF& geometry) const = 0;
};

} // namespace orvane
