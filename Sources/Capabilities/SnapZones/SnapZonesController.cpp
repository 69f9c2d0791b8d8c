#include "Capabilities/SnapZones/SnapZonesController.h"

#include "Capabilities/SnapZones/FocusedWindow.h"
#include "Capabilities/SnapZones/Geometry/EdgeDetector.h"
#include "OrvaneCore/Windows/AX.h"
#include "OrvaneCore/Windows/AXAttr.h"
#include "OrvaneCore/Windows/ScreenGeometry.h"
#include "Platform/Platform.h"

#include <algorithm>

namespace orvane {

namespace {

constexpr EventMask dragMask = eventMaskBit(EventType::leftMouseDown) | eventMaskBit(EventType::leftMouseUp) |
                               eventMaskBit(EventType::leftMouseDragged);

std::optional<Screen> screenUnder(Point cursor)
{
    const Screens& displays = platform().screens;
    const QList<Screen> screens = displays.screens();
    const auto found =
        std::ranges::find_if(screens, [&](const Screen& s) { return s.frame.contains(cursor); });
    return found == screens.end() ? displays.mainScreen() : std::optional(*found);
}

/// Returns the screen that has the middle of a window.
std::optional<Screen> screenOf(const AXUIElement& window)
{
    const std::optional<Rect> frame = AX::frame(window);
    const auto screen =
        frame ? ScreenGeometry::screenForAXPoint({frame->midX(), frame->midY()}) : std::nullopt;
    return screen ? screen : platform().screens.mainScreen();
}

/// Returns the present state of a screen; absent once it's gone.
std::optional<Screen> presentState(const Screen& screen)
{
    const QList<Screen> screens = platform().screens.screens();
    const auto found =
        std::ranges::find(screens, ScreenGeometry::displayID(screen), ScreenGeometry::displayID);
    return found == screens.end() ? std::nullopt : std::optional(*found);
}

} // namespace

std::shared_ptr<SnapZonesController> SnapZonesController::make(std::shared_ptr<SnapZonesSettings> settings,
                                                               Logger log)
{
    return std::shared_ptr<SnapZonesController>(new SnapZonesController(std::move(settings), std::move(log)));
}

SnapZonesController::SnapZonesController(std::shared_ptr<SnapZonesSettings> settings, Logger log)
    : m_settings(std::move(settings)),
      m_log(std::move(log)),
      m_flyout(std::make_shared<SnapLayoutFlyoutController>())
{
}

void SnapZonesController::start()
{
    EventMonitors& monitors = platform().eventMonitors;
    const std::weak_ptr<SnapZonesController> weak = weak_from_this();
    const auto observe = [weak](const EventMonitors::MonitoredEvent& monitored) {
        if (const auto self = weak.lock())
            self->handle(monitored.event.type);
    };
    m_dragMonitors.push_back(monitors.addGlobalMonitor(dragMask, observe));
    m_dragMonitors.push_back(monitors.addLocalMonitor(dragMask, [observe](const auto& monitored) {
        observe(monitored);
        return EventMonitors::Disposition::pass;
    }));
    std::erase(m_dragMonitors, nullptr);
    m_log.info(QStringLiteral("Snap Zones active"));
}

void SnapZonesController::stop()
{
    m_dragMonitors.clear();
    m_preview.hide();
    m_flyout->dismiss();
    resetDrag();
}

void SnapZonesController::handle(EventType type)
{
    switch (type) {
    case EventType::leftMouseDragged:
        return dragMoved();
    case EventType::leftMouseUp:
        return dragEnded();
    case EventType::leftMouseDown:
        return resetDrag();
    default:
        return;
    }
}

void SnapZonesController::dragMoved()
{
    if (!m_settings->dragToSnap.get())
        return;
    const Point cursor = platform().eventMonitors.mouseLocation();
    if (!armDrag() || !windowMoves())
        return;
    const std::optional<Screen> screen = screenUnder(cursor);
    if (!screen)
        return;
    const auto zone = EdgeDetector::zone(cursor, screen->frame, m_settings->edgeThreshold.get(),
                                         m_settings->cornerSize.get());
    switch (m_drag.pointerIsOn(*screen, zone)) {
    case SnapDrag::Preview::unchanged:
        break;
    case SnapDrag::Preview::shown:
        m_preview.show(frame(*zone, *screen));
        break;
    case SnapDrag::Preview::hidden:
        m_preview.hide();
        break;
    }
}

/// Takes the window with the focus and not the one under the pointer: a press on a title bar gives the focus
/// before the first motion.
bool SnapZonesController::armDrag()
{
    if (m_drag.state() != SnapDrag::State::idle)
        return true;
    const std::optional<AXUIElement> window = FocusedWindow::current();
    if (!window)
        return false;
    m_drag.arm(*window, AX::point(*window, AXAttr::position));
    return true;
}

bool SnapZonesController::windowMoves()
{
    if (m_drag.state() == SnapDrag::State::armed && m_drag.initialPosition()) {
        if (const auto position = AX::point(*m_drag.window(), AXAttr::position))
            m_drag.windowIsAt(*position);
    }
    return m_drag.state() != SnapDrag::State::armed;
}

void SnapZonesController::dragEnded()
{
    m_preview.hide();
    if (const auto target = m_drag.target()) {
        // A window can't be placed on a screen that was unplugged meanwhile.
        if (const auto screen = presentState(target->screen))
            place(target->window, target->zone, *screen);
    }
    resetDrag();
}

void SnapZonesController::snap(SnapZone zone)
{
    if (const auto window = FocusedWindow::current())
        placeOnItsScreen(*window, zone);
}

void SnapZonesController::showFlyout()
{
    m_flyoutTarget = FocusedWindow::current();
    m_flyout->model()->onSelect = [weak = weak_from_this()](SnapZone zone) {
        if (const auto self = weak.lock())
            self->chooseLayout(zone);
    };
    if (m_flyout->isVisible())
        m_flyout->dismiss();
    else
        m_flyout->show();
}

void SnapZonesController::chooseLayout(SnapZone zone)
{
    m_flyout->dismiss();
    if (m_flyoutTarget)
        placeOnItsScreen(*m_flyoutTarget, zone);
}

Rect SnapZonesController::frame(SnapZone zone, const Screen& screen) const
{
    return SnapZoneCalculator::frame(zone, screen.visibleFrame, m_settings->gaps());
}

void SnapZonesController::placeOnItsScreen(const AXUIElement& window, SnapZone zone) const
{
    if (const auto screen = screenOf(window))
        place(window, zone, *screen);
}

/// The position is set a second time because programs move a window while it is resized, and one that
/// couldn't shrink before is only placed right afterwards. A window that refuses stays where it ends up.
void SnapZonesController::place(const AXUIElement& window, SnapZone zone, const Screen& screen) const
{
    const Rect target = ScreenGeometry::axRectFromCocoa(frame(zone, screen));
    AX::set(window, AXAttr::position, target.origin);
    AX::set(window, AXAttr::size, target.size);
    AX::set(window, AXAttr::position, target.origin);
}

} // namespace orvane
