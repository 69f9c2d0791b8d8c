// The arithmetic of the home window's place, in points; rectangles are those of the content, without the
// frame that the desktop puts around it.
#pragma once

#include <QList>
#include <QRect>

namespace orvane::HomeWindowPlacement {

inline constexpr QSize contentSize{940, 640};

/// The room for a desktop's frame, with the title bar on top.
inline constexpr QMargins frameRoom{8, 32, 8, 8};

/// Returns a rectangle of the wanted size in the middle of a screen, or as large as the screen has room for.
QRect centred(QSize wanted, const QRect& screen);

/// Returns true if enough of the title bar is on one of the screens for a mouse to hold it.
bool isReachable(const QRect& window, const QList<QRect>& screens);

} // namespace orvane::HomeWindowPlacement
