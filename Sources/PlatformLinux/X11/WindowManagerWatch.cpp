#include "PlatformLinux/X11/WindowManagerWatch.h"

#include <QCoreApplication>

#include <cstring>

namespace orvane {

WindowManagerWatch::WindowManagerWatch(std::function<void(bool isPresent)> changed)
    : m_changed(std::move(changed)), m_x(X11Connection::ofApplication())
{
    if (!m_x)
        return;
    m_check = m_x->atom("_NET_SUPPORTING_WM_CHECK");
    m_x->addEventMask(m_x->root(), XCB_EVENT_MASK_PROPERTY_CHANGE);
    qApp->installNativeEventFilter(this);
    find();
}

WindowManagerWatch::~WindowManagerWatch()
{
    if (m_x && qApp)
        qApp->removeNativeEventFilter(this);
}

xcb_window_t WindowManagerWatch::windowToldBy(xcb_window_t window) const
{
    const QByteArray bytes = m_x->property(window, m_check, XCB_ATOM_WINDOW);
    xcb_window_t told = XCB_WINDOW_NONE;
    if (bytes.size() == sizeof told)
        std::memcpy(&told, bytes.constData(), sizeof told);
    return told;
}

/// A manager that died leaves its word on the root window; only its own window proves that it lives.
void WindowManagerWatch::find()
{
    const xcb_window_t window = windowToldBy(m_x->root());
    if (window)
        m_x->addEventMask(window, XCB_EVENT_MASK_STRUCTURE_NOTIFY); // first, so that its end isn't missed
    m_window = window && windowToldBy(window) == window ? window : xcb_window_t{XCB_WINDOW_NONE};
}

void WindowManagerWatch::findAgain()
{
    const bool wasPresent = isPresent();
    find();
    if (m_changed && isPresent() != wasPresent)
        m_changed(isPresent());
}

bool WindowManagerWatch::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    switch (event->response_type & 0x7f) {
    case XCB_PROPERTY_NOTIFY: {
        const auto* told = reinterpret_cast<const xcb_property_notify_event_t*>(event);
        if (told->window == m_x->root() && told->atom == m_check)
            findAgain();
        break;
    }
    case XCB_DESTROY_NOTIFY:
        if (m_window && reinterpret_cast<const xcb_destroy_notify_event_t*>(event)->window == m_window)
            findAgain();
        break;
    default:
        break;
    }
    return false;
}

} // namespace orvane
