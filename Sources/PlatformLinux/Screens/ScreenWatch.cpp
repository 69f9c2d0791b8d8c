#include "PlatformLinux/Screens/ScreenWatch.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <cstring>

#include <xcb/randr.h>

namespace orvane {

ScreenWatch::ScreenWatch() : m_x(X11Connection::ofApplication())
{
    connect(qGuiApp, &QGuiApplication::screenAdded, this, [this](QScreen* screen) {
        follow(screen);
        monitorsMayHaveChanged();
    });
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &ScreenWatch::monitorsMayHaveChanged);
    connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, &ScreenWatch::monitorsMayHaveChanged);
    for (QScreen* screen : QGuiApplication::screens())
        follow(screen);
    if (m_x) {
        const auto* randr = xcb_get_extension_data(m_x->xcb(), &xcb_randr_id);
        m_randrEvent = randr && randr->present ? randr->first_event : 0;
        m_activeWindowAtom = m_x->atom("_NET_ACTIVE_WINDOW");
        m_struts.emplace(*m_x);
        qApp->installNativeEventFilter(this);
    }
    refresh();
}

ScreenWatch::~ScreenWatch()
{
    if (m_x && qApp)
        qApp->removeNativeEventFilter(this);
}

void ScreenWatch::follow(QScreen* screen)
{
    connect(screen, &QScreen::geometryChanged, this, &ScreenWatch::monitorsMayHaveChanged);
    connect(screen, &QScreen::logicalDotsPerInchChanged, this, &ScreenWatch::monitorsMayHaveChanged);
}

bool ScreenWatch::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    const int type = event->response_type & 0x7f;
    if (type == XCB_PROPERTY_NOTIFY)
        readProperty(*reinterpret_cast<const xcb_property_notify_event_t*>(event));
    else if (m_randrEvent != 0 && (type == m_randrEvent + XCB_RANDR_SCREEN_CHANGE_NOTIFY ||
                                   type == m_randrEvent + XCB_RANDR_NOTIFY))
        monitorsMayHaveChanged();
    return false;
}

void ScreenWatch::readProperty(const xcb_property_notify_event_t& event)
{
    if (event.window == m_x->root() && event.atom == m_activeWindowAtom)
        m_activeWindow.reset();
    else if (m_struts->concerns(event))
        scheduleRefresh();
}

void ScreenWatch::monitorsMayHaveChanged()
{
    m_areMonitorsStale = true;
    scheduleRefresh();
}

/// Later, also because the toolkit gets each event after the filters.
void ScreenWatch::scheduleRefresh()
{
    if (std::exchange(m_isRefreshScheduled, true))
        return;
    QMetaObject::invokeMethod(this, &ScreenWatch::refresh, Qt::QueuedConnection);
}

void ScreenWatch::refresh()
{
    m_isRefreshScheduled = false;
    if (std::exchange(m_areMonitorsStale, false)) {
        m_monitors = readMonitors(m_x ? &*m_x : nullptr);
        readRoot();
    }
    if (m_struts)
        m_struts->refresh();
    rebuild();
}

/// Struts are measured from its edges, which may be outside of all monitors.
void ScreenWatch::readRoot()
{
    if (!m_x)
        return;
    const auto cookie = xcb_get_geometry(m_x->xcb(), m_x->root());
    const XcbReply<xcb_get_geometry_reply_t> reply(xcb_get_geometry_reply(m_x->xcb(), cookie, nullptr));
    if (reply)
        m_root = {double(reply->width), double(reply->height)};
}

void ScreenWatch::rebuild()
{
    std::vector<ScreenSpace::Display> displays;
    for (const Monitor& monitor : m_monitors)
        displays.push_back({monitor.pixels, monitor.scale});
    m_space = ScreenSpace(std::move(displays));
    const std::vector<Strut> struts = m_struts ? m_struts->struts() : std::vector<Strut>();
    QList<Screen> screens;
    for (const Monitor& monitor : m_monitors) {
        screens.append({.frame = m_space.cocoaFromNative(monitor.pixels),
                        .visibleFrame = m_space.cocoaFromNative(visiblePart(monitor.pixels, m_root, struts)),
                        .backingScaleFactor = monitor.scale,
                        .localizedName = monitor.name,
                        .deviceDescription = {{Screen::screenNumberKey(), monitor.number}}});
    }
    if (screens == m_screens)
        return;
    m_screens = std::move(screens);
    Q_EMIT changed();
}

xcb_window_t ScreenWatch::activeWindow()
{
    if (m_activeWindow)
        return *m_activeWindow;
    xcb_window_t window = XCB_WINDOW_NONE;
    if (m_x) {
        const QByteArray bytes = m_x->property(m_x->root(), m_activeWindowAtom, XCB_ATOM_WINDOW);
        if (bytes.size() >= static_cast<qsizetype>(sizeof window))
            std::memcpy(&window, bytes.constData(), sizeof window);
    }
    m_activeWindow = window;
    return window;
}

std::optional<Point> ScreenWatch::middleOf(xcb_window_t window) const
{
    if (!m_x || window == XCB_WINDOW_NONE)
        return std::nullopt;
    const auto sizeCookie = xcb_get_geometry(m_x->xcb(), window);
    const auto placeCookie = xcb_translate_coordinates(m_x->xcb(), window, m_x->root(), 0, 0);
    xcb_generic_error_t* sizeError = nullptr;
    xcb_generic_error_t* placeError = nullptr;
    const XcbReply<xcb_get_geometry_reply_t> size(xcb_get_geometry_reply(m_x->xcb(), sizeCookie, &sizeError));
    const XcbReply<xcb_translate_coordinates_reply_t> place(
        xcb_translate_coordinates_reply(m_x->xcb(), placeCookie, &placeError));
    const XcbReply<xcb_generic_error_t> ownedSizeError(sizeError);
    const XcbReply<xcb_generic_error_t> ownedPlaceError(placeError);
    if (!size || !place)
        return std::nullopt;
    return Point{place->dst_x + size->width * 0.5, place->dst_y + size->height * 0.5};
}

qsizetype ScreenWatch::activeIndex()
{
    const auto middle = m_screens.size() > 1 ? middleOf(activeWindow()) : std::nullopt;
    if (!middle)
        return 0;
    const auto found = std::ranges::find_if(
        m_monitors, [&](const Monitor& monitor) { return monitor.pixels.contains(*middle); });
    return found == m_monitors.end() ? 0 : found - m_monitors.begin();
}

} // namespace orvane
