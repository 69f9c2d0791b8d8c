#include "Desktop/Support/KeyWindow.h"

#include "Desktop/Support/WindowManager.h"

#include <QDeadlineTimer>

#include <stdexcept>

#include <poll.h>

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace orvane::tests {

struct KeyWindow::State {
    Display* display = XOpenDisplay(nullptr);
    Window window = 0;
    QStringList keys;
    QByteArray typed;
};

KeyWindow::KeyWindow() : m_state(std::make_unique<State>())
{
    Display* display = m_state->display;
    if (!display)
        throw std::runtime_error("There is no X display to open");
    XSetWindowAttributes attributes = {};
    attributes.override_redirect = True;
    m_state->window = XCreateWindow(display, DefaultRootWindow(display), 400, 300, 200, 100, 0,
                                    CopyFromParent, InputOutput, nullptr, CWOverrideRedirect, &attributes);
    int supported = 0;
    XkbSetDetectableAutoRepeat(display, True, &supported);
    XSelectInput(display, m_state->window, KeyPressMask | KeyReleaseMask | ButtonPressMask | ExposureMask);
    XMapRaised(display, m_state->window);
    XEvent event;
    XWindowEvent(display, m_state->window, ExposureMask, &event);
    if (!settleWindowManager())
        throw std::runtime_error("The window manager doesn't answer");
    XSetInputFocus(display, m_state->window, RevertToParent, CurrentTime);
    XSync(display, False);
}

KeyWindow::~KeyWindow()
{
    XCloseDisplay(m_state->display);
}

QStringList KeyWindow::keys()
{
    read();
    return m_state->keys;
}

QByteArray KeyWindow::typed()
{
    read();
    return m_state->typed;
}

bool KeyWindow::waitFor(std::chrono::milliseconds limit, const std::function<bool()>& condition)
{
    constexpr int recheck = 20; // in ms, for conditions that no event of the window announces
    const QDeadlineTimer end(limit);
    while (!condition()) {
        if (end.hasExpired())
            return condition();
        pollfd wait{ConnectionNumber(m_state->display), POLLIN, 0};
        ::poll(&wait, 1, recheck);
    }
    return true;
}

void KeyWindow::read()
{
    static constexpr const char* names[] = {"shift", "lock", "control", "alt", "num", "hyper", "super"};
    while (XPending(m_state->display)) {
        XEvent event;
        XNextEvent(m_state->display, &event);
        if (event.type == MappingNotify)
            XRefreshKeyboardMapping(&event.xmapping);
        if (event.type != KeyPress && event.type != KeyRelease && event.type != ButtonPress)
            continue;
        // Keys and buttons have their number and the modifiers at the same places of the event.
        QString text = QLatin1String(event.type == ButtonPress ? "b"
                                     : event.type == KeyPress  ? "+"
                                                               : "-") +
                       QString::number(event.xkey.keycode);
        QStringList modifiers;
        for (unsigned bit = 0; bit < std::size(names); ++bit) {
            if (event.xkey.state & (1u << bit))
                modifiers.append(QLatin1String(names[bit]));
        }
        if (!modifiers.isEmpty())
            text += QLatin1Char('/') + modifiers.join(QLatin1Char('+'));
        m_state->keys.append(text);
        if (event.type == ButtonPress)
            continue;
        char typed[8];
        const int length = XLookupString(&event.xkey, typed, sizeof typed, nullptr, nullptr);
        if (event.type == KeyPress)
            m_state->typed.append(typed, length);
    }
}

} // namespace orvane::tests
