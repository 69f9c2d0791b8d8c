// Where the home window goes, as arithmetic. Points; rectangles are those of the content, without the frame
// that the desktop puts around it.
#pragma once

#include <QList>
#include <QRect>

namespace orvane::HomeWindowPlacement {

inline constexpr QSize contentSize{940, 640};

/// What a desktop's frame may take, the title bar on top.
inline constexpr QMargins frameRoom{8, 32, 8, 8};

/// Of the wanted size in the middle of a screen; as large as that has room for where it is smaller.
QRect centred(QSize wanted, const QRect& screen);

/// Whether enough of the title bar is on one of the screens for a mouse to hold it.
bool isReachable(const QRect& window, const QList<QRect>& screens);

} // namespace orvane::HomeWindowPlacement
