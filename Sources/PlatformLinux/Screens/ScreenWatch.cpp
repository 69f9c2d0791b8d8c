#include "PlatformLinux/Screens/ScreenWatch.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <utility>

#include <xcb/randr.h>

namespace orvane {

ScreenWatch::ScreenWatch() : m_x(ApplicationLink::get())
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
        const auto* randr = m_x->link().extension(xcb_randr_id);
        m_randrEvent = randr ? randr->first_event : 0;
        if (randr)
            selectDisplays();
        m_struts.emplace(*m_x);
        m_listener = m_x->listen([this](const xcb_generic_event_t& event) { handle(event); });
        connect(m_x.get(), &ApplicationLink::serverIsBack, this, [this] {
            m_activeWindow.reset();
            m_struts->forget();
            monitorsMayHaveChanged();
        });
    }
    refresh();
}

ScreenWatch::~ScreenWatch() = default;

void ScreenWatch::selectDisplays()
{
    xcb_randr_select_input(m_x->xcb(), m_x->root(),
                           XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE | XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE |
                               XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE | XCB_RANDR_NOTIFY_MASK_OUTPUT_PROPERTY);
}

void ScreenWatch::follow(QScreen* screen)
{
    connect(screen, &QScreen::geometryChanged, this, &ScreenWatch::monitorsMayHaveChanged);
    connect(screen, &QScreen::logicalDotsPerInchChanged, this, &ScreenWatch::monitorsMayHaveChanged);
}

void ScreenWatch::handle(const xcb_generic_event_t& event)
{
    const int type = event.response_type & 0x7F;
    if (type == XCB_PROPERTY_NOTIFY)
        readProperty(reinterpret_cast<const xcb_property_notify_event_t&>(event));
    else if (m_randrEvent != 0 && (type == m_randrEvent + XCB_RANDR_SCREEN_CHANGE_NOTIFY ||
                                   type == m_randrEvent + XCB_RANDR_NOTIFY))
        monitorsMayHaveChanged();
}

void ScreenWatch::readProperty(const xcb_property_notify_event_t& event)
{
    if (event.window == m_x->root() && event.atom == m_x->atoms().activeWindow)
        m_activeWindow.reset();
    else if (m_struts->concerns(event))
        scheduleRefresh();
}

void ScreenWatch::monitorsMayHaveChanged()
{
    m_areMonitorsStale = true;
    scheduleRefresh();
}

/// The refresh comes later, also because the toolkit gets each event after the filters.
void ScreenWatch::scheduleRefresh()
{
    if (std::exchange(m_isRefreshScheduled, true))
        return;
    QMetaObject::invokeMethod(this, &ScreenWatch::refresh, Qt::QueuedConnection);
}

void ScreenWatch::refresh()
{
    m_isRefreshScheduled = false;
    if (!m_x) {
        m_monitors = readMonitors(nullptr);
    } else {
        XExchange exchange = m_x->exchange();
        if (m_areMonitorsStale)
            readDisplays(exchange);
        m_struts->refresh(exchange);
    }
    rebuild();
}

/// Struts are measured from the root window's edges, which may be outside of all monitors.
void ScreenWatch::readDisplays(XExchange& exchange)
{
    const auto cookie = xcb_get_geometry(m_x->xcb(), m_x->root());
    auto monitors = readMonitors(&exchange);
    const auto root = exchange.reply<xcb_get_geometry_reply_t>(cookie);
    // What the server doesn't answer now is asked for again when it is back.
    m_areMonitorsStale = exchange.isLate();
    if (!m_areMonitorsStale || m_monitors.empty())
        m_monitors = std::move(monitors);
    if (root)
        m_root = {double(root->width), double(root->height)};
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

xcb_window_t ScreenWatch::activeWindow(XExchange& exchange)
{
    if (m_activeWindow)
        return *m_activeWindow;
    const auto windows =
        exchange.numbers(exchange.askProperty(m_x->root(), m_x->atoms().activeWindow, XCB_ATOM_WINDOW));
    if (exchange.isLate())
        return XCB_WINDOW_NONE;
    m_activeWindow = windows.empty() ? xcb_window_t{XCB_WINDOW_NONE} : windows[0];
    return *m_activeWindow;
}

std::optional<Point> ScreenWatch::middleOfActiveWindow()
{
    if (!m_x)
        return std::nullopt;
    XExchange exchange = m_x->exchange();
    const xcb_window_t window = activeWindow(exchange);
    if (window == XCB_WINDOW_NONE)
        return std::nullopt;
    const auto sizeCookie = xcb_get_geometry(m_x->xcb(), window);
    const auto placeCookie = xcb_translate_coordinates(m_x->xcb(), window, m_x->root(), 0, 0);
    const auto size = exchange.reply<xcb_get_geometry_reply_t>(sizeCookie);
    const auto place = exchange.reply<xcb_translate_coordinates_reply_t>(placeCookie);
    if (!size || !place)
        return std::nullopt;
    return Point{place->dst_x + size->width * 0.5, place->dst_y + size->height * 0.5};
}

qsizetype ScreenWatch::activeIndex()
{
    const auto middle = m_screens.size() > 1 ? middleOfActiveWindow() : std::nullopt;
    if (!middle)
        return 0;
    const auto found = std::ranges::find_if(
        m_monitors, [&](const Monitor& monitor) { return monitor.pixels.contains(*middle); });
    return found == m_monitors.end() ? 0 : found - m_monitors.begin();
}

} // namespace orvane
