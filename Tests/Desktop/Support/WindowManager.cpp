#include "Desktop/Support/WindowManager.h"

#include <QDeadlineTimer>
#include <QGuiApplication>

#include <memory>

#include <poll.h>

#include <X11/Xatom.h>
#include <X11/Xlib.h>

namespace orvane::tests {

namespace {

struct Closer {
    void operator()(Display* display) const { XCloseDisplay(display); }
};

bool hasWindowManager(Display* display)
{
    Atom type = 0;
    int format = 0;
    unsigned long count = 0, left = 0;
    unsigned char* value = nullptr;
    XGetWindowProperty(display, DefaultRootWindow(display),
                       XInternAtom(display, "_NET_SUPPORTING_WM_CHECK", False), 0, 1, False, XA_WINDOW, &type,
                       &format, &count, &left, &value);
    XFree(value);
    return count == 1;
}

} // namespace

bool settleWindowManager(std::chrono::milliseconds deadline)
{
    if (qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
        QGuiApplication::sync(); // windows of this process that have ended may still exist on the server
    const std::unique_ptr<Display, Closer> connection(XOpenDisplay(nullptr));
    Display* display = connection.get();
    if (!display)
        return false;
    if (!hasWindowManager(display))
        return true;
    // The window manager handles its events in order, so its answer to a question shows that all events
    // before it are handled. The question about the frame that a window would get needs no shown window.
    const Window root = DefaultRootWindow(display);
    const Window window = XCreateSimpleWindow(display, root, 0, 0, 1, 1, 0, 0, 0);
    XSelectInput(display, window, PropertyChangeMask);
    XEvent question = {};
    question.xclient.type = ClientMessage;
    question.xclient.window = window;
    question.xclient.message_type = XInternAtom(display, "_NET_REQUEST_FRAME_EXTENTS", False);
    question.xclient.format = 32;
    XSendEvent(display, root, False, SubstructureNotifyMask | SubstructureRedirectMask, &question);

    const Atom answer = XInternAtom(display, "_NET_FRAME_EXTENTS", False);
    const QDeadlineTimer end(deadline);
    for (;;) {
        while (XPending(display) > 0) {
            XEvent event;
            XNextEvent(display, &event);
            if (event.type == PropertyNotify && event.xproperty.atom == answer)
                return true;
        }
        pollfd wait{ConnectionNumber(display), POLLIN, 0};
        if (::poll(&wait, 1, static_cast<int>(end.remainingTime())) == 0)
            return false;
    }
}

void holdFocus(std::uint32_t window)
{
    const std::unique_ptr<Display, Closer> connection(XOpenDisplay(nullptr));
    if (!connection)
        return;
    XSetInputFocus(connection.get(), window, RevertToParent, CurrentTime);
    XSync(connection.get(), False);
}

} // namespace orvane::tests
