#include "Desktop/Support/PatternWindow.h"

#include <stdexcept>
#include <vector>

#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace orvane::tests {

struct PatternWindow::State {
    Display* display = nullptr;
    Window window = 0;
    QRect place;
    QStringList noted;
};

PatternWindow::PatternWindow(QRect place) : m_state(std::make_unique<State>())
{
    State& state = *m_state;
    state.place = place;
    state.display = XOpenDisplay(nullptr);
    if (!state.display)
        throw std::runtime_error("no display");
    const auto width = static_cast<unsigned>(place.width());
    const auto height = static_cast<unsigned>(place.height());
    XSetWindowAttributes attributes{};
    attributes.override_redirect = True;
    attributes.event_mask =
        ButtonPressMask | ButtonReleaseMask | KeyPressMask | StructureNotifyMask | ExposureMask;
    state.window = XCreateWindow(state.display, DefaultRootWindow(state.display), place.x(), place.y(), width,
                                 height, 0, CopyFromParent, InputOutput, CopyFromParent,
                                 CWOverrideRedirect | CWEventMask, &attributes);
    std::vector<std::uint32_t> pixels;
    for (int y = place.top(); y <= place.bottom(); ++y) {
        for (int x = place.left(); x <= place.right(); ++x)
            pixels.push_back(color({x, y}));
    }
    const int screen = DefaultScreen(state.display);
    const auto depth = static_cast<unsigned>(DefaultDepth(state.display, screen));
    XImage* image = XCreateImage(state.display, DefaultVisual(state.display, screen), depth, ZPixmap, 0,
                                 reinterpret_cast<char*>(pixels.data()), width, height, 32, 0);
    const Pixmap pixmap = XCreatePixmap(state.display, state.window, width, height, depth);
    XPutImage(state.display, pixmap, DefaultGC(state.display, screen), image, 0, 0, 0, 0, width, height);
    XSetWindowBackgroundPixmap(state.display, state.window, pixmap);
    XFreePixmap(state.display, pixmap);
    image->data = nullptr; // the list's own
    XDestroyImage(image);
    XMapRaised(state.display, state.window);
    XEvent event;
    do
        XWindowEvent(state.display, state.window, StructureNotifyMask, &event);
    while (event.type != MapNotify);
    XSetInputFocus(state.display, state.window, RevertToPointerRoot, CurrentTime);
    XSync(state.display, False);
}

PatternWindow::~PatternWindow()
{
    XCloseDisplay(m_state->display);
}

std::uint32_t PatternWindow::color(QPoint pixel) const
{
    const QPoint inside = pixel - m_state->place.topLeft();
    auto hash = static_cast<std::uint32_t>(inside.x() * 7919 + inside.y() * 104729 + 1);
    hash ^= hash >> 7;
    hash *= 2654435761u;
    return hash >> 8;
}

QString PatternWindow::hex(QPoint pixel) const
{
    return QStringLiteral("#%1").arg(QString::number(color(pixel), 16), 6, u'0').toUpper();
}

QStringList PatternWindow::noted()
{
    State& state = *m_state;
    XSync(state.display, False);
    while (XPending(state.display) > 0) {
        XEvent event;
        XNextEvent(state.display, &event);
        if (event.type == ButtonPress)
            state.noted << QStringLiteral("press");
        else if (event.type == ButtonRelease)
            state.noted << QStringLiteral("release");
        else if (event.type == KeyPress)
            state.noted << QStringLiteral("key %1").arg(event.xkey.keycode);
    }
    return state.noted;
}

std::uint32_t PatternWindow::id() const
{
    return static_cast<std::uint32_t>(m_state->window);
}

} // namespace orvane::tests
