#include "PlatformLinux/Panels/X11Panels.h"

#include "Platform/NotificationCenter.h"
#include "PlatformLinux/X11/WindowManagement.h"

#include <QCoreApplication>
#include <QWindow>

#include <xcb/xfixes.h>

#include <array>
#include <cmath>

namespace orvane {

namespace {

constexpr std::uint32_t allDesktops = 0xFFFFFFFF;
constexpr xcb_shape_kind_t inputShape = 2; // ShapeInput, for which libxcb has no name

int pixels(int points, const QWindow& window)
{
    return static_cast<int>(std::lround(points * window.devicePixelRatio()));
}

/// In libxcb's order of sides, in pixels.
struct Extents {
    std::uint32_t left;
    std::uint32_t right;
    std::uint32_t top;
    std::uint32_t bottom;
};

Extents extentsOf(const QMargins& margins, const QWindow& window)
{
    const auto side = [&window](int points) { return static_cast<std::uint32_t>(pixels(points, window)); };
    return {side(margins.left()), side(margins.right()), side(margins.top()), side(margins.bottom())};
}

void setInputRegion(const X11Connection& x11, const QWindow& window, const Extents& margins)
{
    const int width = pixels(window.width(), window) - static_cast<int>(margins.left + margins.right);
    const int height = pixels(window.height(), window) - static_cast<int>(margins.top + margins.bottom);
    const xcb_rectangle_t inside{
        static_cast<std::int16_t>(margins.left), static_cast<std::int16_t>(margins.top),
        static_cast<std::uint16_t>(std::max(0, width)), static_cast<std::uint16_t>(std::max(0, height))};
    const xcb_xfixes_region_t region = xcb_generate_id(x11.xcb());
    xcb_xfixes_create_region(x11.xcb(), region, 1, &inside);
    x11.ignoreErrors(xcb_xfixes_set_window_shape_region_checked(
        x11.xcb(), static_cast<xcb_window_t>(window.winId()), inputShape, 0, 0, region));
    xcb_xfixes_destroy_region(x11.xcb(), region);
}

} // namespace

X11Panels::X11Panels(NotificationCenter& center) : m_center(center), m_x(X11Connection::ofApplication())
{
    if (!m_x)
        return;
    m_atoms = {.state = m_x->atom("_NET_WM_STATE"),
               .states = {m_x->atom("_NET_WM_STATE_STICKY"), m_x->atom("_NET_WM_STATE_SKIP_TASKBAR"),
                          m_x->atom("_NET_WM_STATE_SKIP_PAGER")},
               .desktop = m_x->atom("_NET_WM_DESKTOP"),
               .extents = m_x->atom("_GTK_FRAME_EXTENTS")};
    watchCompositor();
}

X11Panels::~X11Panels()
{
    if (m_x && qApp)
        qApp->removeNativeEventFilter(this);
}

void X11Panels::watchCompositor()
{
    xcb_connection_t* const xcb = m_x->xcb();
    const QByteArray name = "_NET_WM_CM_S" + QByteArray::number(m_x->screenNumber());
    m_compositor = m_x->atom(name.constData());

    // A client has to send its version of the extension before it may ask for anything.
    const auto* extension = xcb_get_extension_data(xcb, &xcb_xfixes_id);
    if (extension && extension->present) {
        const XcbReply<xcb_xfixes_query_version_reply_t> version(
            xcb_xfixes_query_version_reply(xcb, xcb_xfixes_query_version(xcb, 5, 0), nullptr));
        m_selectionNotify = static_cast<std::uint8_t>(extension->first_event + XCB_XFIXES_SELECTION_NOTIFY);
        xcb_xfixes_select_selection_input(xcb, m_x->root(), m_compositor,
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                              XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                              XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
        qApp->installNativeEventFilter(this);
    }
    // This comes after the request for announcements, so that no change falls in between.
    const XcbReply<xcb_get_selection_owner_reply_t> owner(
        xcb_get_selection_owner_reply(xcb, xcb_get_selection_owner(xcb, m_compositor), nullptr));
    m_isCompositing = owner && owner->owner != XCB_WINDOW_NONE;
}

bool X11Panels::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    if ((event->response_type & 0x7f) != m_selectionNotify)
        return false;
    const auto* told = reinterpret_cast<const xcb_xfixes_selection_notify_event_t*>(event);
    if (told->selection != m_compositor || told->window != m_x->root())
        return false;
    const bool isCompositing =
        told->subtype == XCB_XFIXES_SELECTION_EVENT_SET_SELECTION_OWNER && told->owner != XCB_WINDOW_NONE;
    if (isCompositing != m_isCompositing) {
        m_isCompositing = isCompositing;
        m_center.post(didChangeCompositingNotification());
    }
    return false;
}

void X11Panels::joinAllSpaces(QWindow& window)
{
    if (!m_x || !window.handle())
        return;
    const auto id = static_cast<xcb_window_t>(window.winId());
    // The window manager has removed both if the window was shown before. Qt adds what it wants itself.
    xcb_change_property(m_x->xcb(), XCB_PROP_MODE_REPLACE, id, m_atoms.desktop, XCB_ATOM_CARDINAL, 32, 1,
                        &allDesktops);
    xcb_change_property(m_x->xcb(), XCB_PROP_MODE_REPLACE, id, m_atoms.state, XCB_ATOM_ATOM, 32,
                        static_cast<std::uint32_t>(m_atoms.states.size()), m_atoms.states.data());
}

void X11Panels::setShadowMargins(QWindow& window, const QMargins& margins)
{
    if (!m_x || !m_selectionNotify || !window.handle())
        return;
    const auto id = static_cast<xcb_window_t>(window.winId());
    const Extents extents = extentsOf(margins, window);
    setInputRegion(*m_x, window, extents);
    if (margins.isNull())
        xcb_delete_property(m_x->xcb(), id, m_atoms.extents);
    else
        xcb_change_property(m_x->xcb(), XCB_PROP_MODE_REPLACE, id, m_atoms.extents, XCB_ATOM_CARDINAL, 32, 4,
                            &extents);
}

void X11Panels::makeKey(QWindow& window)
{
    requestActivation(window);
}

} // namespace orvane
