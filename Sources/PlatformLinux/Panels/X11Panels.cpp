#include "PlatformLinux/Panels/X11Panels.h"

#include "Platform/NotificationCenter.h"
#include "PlatformLinux/X11/WindowManagement.h"
#include "PlatformLinux/X11/X11Connection.h"

#include <QWindow>

#include <xcb/xfixes.h>

#include <array>
#include <cmath>
#include <utility>

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

X11Panels::X11Panels(NotificationCenter& center) : m_center(center), m_x(ApplicationLink::get())
{
    if (m_x)
        watchCompositor();
}

X11Panels::~X11Panels() = default;

/// Watches the selection that a compositor owns while it runs.
void X11Panels::watchCompositor()
{
    if (const auto* xfixes = m_x->link().extension(xcb_xfixes_id)) {
        m_selectionNotify = static_cast<std::uint8_t>(xfixes->first_event + XCB_XFIXES_SELECTION_NOTIFY);
        xcb_xfixes_select_selection_input(m_x->xcb(), m_x->root(), m_x->atoms().compositor,
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                              XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                              XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
        m_listener = m_x->listen([this](const xcb_generic_event_t& event) { handle(event); });
    }
    // This comes after the request for announcements, so that no change falls in between.
    findCompositor();
    QObject::connect(m_x.get(), &ApplicationLink::serverIsBack, &m_context, [this] {
        const bool before = m_isCompositing;
        findCompositor();
        if (m_isCompositing != before)
            m_center.post(didChangeCompositingNotification());
    });
}

void X11Panels::findCompositor()
{
    const auto owner = m_x->exchange().reply<xcb_get_selection_owner_reply_t>(
        xcb_get_selection_owner(m_x->xcb(), m_x->atoms().compositor));
    if (owner)
        m_isCompositing = owner->owner != XCB_WINDOW_NONE;
}

void X11Panels::handle(const xcb_generic_event_t& event)
{
    const auto& told = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
    if ((event.response_type & 0x7F) != m_selectionNotify || told.selection != m_x->atoms().compositor ||
        told.window != m_x->root())
        return;
    const bool isCompositing =
        told.subtype == XCB_XFIXES_SELECTION_EVENT_SET_SELECTION_OWNER && told.owner != XCB_WINDOW_NONE;
    if (isCompositing != std::exchange(m_isCompositing, isCompositing))
        m_center.post(didChangeCompositingNotification());
}

void X11Panels::joinAllSpaces(QWindow& window)
{
    const auto toolkit = X11Connection::ofApplication();
    if (!m_x || !toolkit || !window.handle())
        return;
    const auto id = static_cast<xcb_window_t>(window.winId());
    const XAtoms& atoms = m_x->atoms();
    // The window manager has removed both if the window was shown before. The toolkit adds what it wants
    // itself.
    const std::array states{atoms.stateSticky, atoms.stateSkipTaskBar, atoms.stateSkipPager};
    xcb_change_property(toolkit->xcb(), XCB_PROP_MODE_REPLACE, id, atoms.desktop, XCB_ATOM_CARDINAL, 32, 1,
                        &allDesktops);
    xcb_change_property(toolkit->xcb(), XCB_PROP_MODE_REPLACE, id, atoms.state, XCB_ATOM_ATOM, 32,
                        states.size(), states.data());
}

void X11Panels::setShadowMargins(QWindow& window, const QMargins& margins)
{
    const auto toolkit = X11Connection::ofApplication();
    if (!m_x || !toolkit || !m_selectionNotify || !window.handle())
        return;
    const auto id = static_cast<xcb_window_t>(window.winId());
    const Extents extents = extentsOf(margins, window);
    setInputRegion(*toolkit, window, extents);
    if (margins.isNull())
        xcb_delete_property(toolkit->xcb(), id, m_x->atoms().gtkFrameExtents);
    else
        xcb_change_property(toolkit->xcb(), XCB_PROP_MODE_REPLACE, id, m_x->atoms().gtkFrameExtents,
                            XCB_ATOM_CARDINAL, 32, 4, &extents);
}

void X11Panels::makeKey(QWindow& window)
{
    requestActivation(window);
}

} // namespace orvane
