#include "Orvane/Home/HomeWindowPlacement.h"

#include <algorithm>

namespace orvane {

namespace {

constexpr QSize grip(80, 16); // the smallest part of a title bar that can be dragged

} // namespace

QRect HomeWindowPlacement::centred(QSize wanted, const QRect& screen)
{
    const QRect room = screen.marginsRemoved(frameRoom);
    QRect window(QPoint(), wanted.boundedTo(room.size()));
    window.moveCenter(room.center());
    return window;
}

bool HomeWindowPlacement::isReachable(const QRect& window, const QList<QRect>& screens)
{
    const QRect titleBar(window.left(), window.top() - frameRoom.top(), window.width(), frameRoom.top());
    return std::any_of(screens.begin(), screens.end(), [&](const QRect& screen) {
        const QRect held = titleBar.intersected(screen);
        return held.width() >= grip.width() && held.height() >= grip.height();
    });
}

} // namespace orvane
