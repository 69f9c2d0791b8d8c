#include "Capabilities/SnapZones/SnapZonesController.h"

#include "Capabilities/SnapZones/FocusedWindow.h"
#include "Capabilities/SnapZones/Geometry/EdgeDetector.h"
#include "OrvaneCore/Windows/AX.h"
#include "OrvaneCore/Windows/AXAttr.h"
#include "OrvaneCore/Windows/ScreenGeometry.h"
#include "Platform/Platform.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace orvane {

namespace {

constexpr EventMask dragMask = eventMaskBit(EventType::leftMouseDown) | eventMaskBit(EventType::leftMouseUp) |
                               eventMaskBit(EventType::leftMouseDragged);

/// A busy window manager moves a window some time after its release.
constexpr std::chrono::milliseconds windowManagersTime(300);

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

/// True until a drag's window is seen to move.
bool isUnproved(const SnapDrag& drag)
{
    return drag.state() == SnapDrag::State::idle || drag.state() == SnapDrag::State::armed;
}

/// Returns true once the window with the focus has moved since the button went down. The focus may come to
/// the dragged window only after the first motions.
bool windowMoves(SnapDrag& drag)
{
    if (!isUnproved(drag))
        return true;
    const auto candidate = platform().windowDrags.candidate();
    if (!candidate)
        return false;
    drag.arm(candidate->window, candidate->initialPosition);
    if (candidate->position)
        drag.windowIsAt(*candidate->position);
    return !isUnproved(drag);
}

/// The window manager puts a dragged window back when the person cancels the drag, as with Escape, and keeps
/// the button's further way to itself. Near the press the window may stand where it was in any drag.
bool isPutBack(const SnapDrag& drag, Point press, Point pointer)
{
    constexpr double nearThePress = 48; // more than a title bar's height and the reach of magnetic edges
    if (isUnproved(drag) || std::hypot(pointer.x - press.x, pointer.y - press.y) < nearThePress)
        return false;
    const auto candidate = platform().windowDrags.candidate();
    return candidate && candidate->window == drag.window() && candidate->position &&
           candidate->position == drag.initialPosition();
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
    m_windowWatch = platform().windowDrags.watch([weak] {
        if (const auto self = weak.lock())
            self->windowsChanged();
    });
    m_dragToSnap = m_settings->dragToSnap.subscribeToChanges([this](bool isOn) { switchDragToSnap(isOn); });
    m_log.info(QStringLiteral("Snap Zones active"));
}

void SnapZonesController::stop()
{
    m_dragMonitors.clear();
    m_windowWatch.reset();
    m_dragToSnap = {};
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
        resetDrag();
        m_press = platform().eventMonitors.mouseLocation();
        return;
    default:
        return;
    }
}

void SnapZonesController::dragMoved()
{
    if (!m_settings->dragToSnap.get())
        return;
    m_pointer = platform().eventMonitors.mouseLocation();
    if (!endIfPutBack())
        showPreview(follow());
}

/// The window manager moves a window some time after the pointer, also when the pointer rests by then.
void SnapZonesController::windowsChanged()
{
    if (m_unproved) {
        if (!windowMoves(m_unproved->drag))
            return;
        const Unproved proved = std::move(*std::exchange(m_unproved, std::nullopt));
        drop(*proved.drag.window(), proved.drop.zone, proved.drop.screen);
    } else if (m_pointer && !endIfPutBack() && isUnproved(m_drag)) {
        showPreview(follow());
    }
}

/// Ends a drag that was cancelled. True if it was: the rest of the button's way means nothing.
bool SnapZonesController::endIfPutBack()
{
    if (!m_press || !m_pointer || !isPutBack(m_drag, *m_press, *m_pointer))
        return false;
    m_preview.hide();
    resetDrag();
    return true;
}

/// Takes the present state of the drag, and returns what has to be done with the preview.
SnapDrag::Preview SnapZonesController::follow()
{
    const auto screen = windowMoves(m_drag) ? screenUnder(*m_pointer) : std::nullopt;
    return screen ? m_drag.pointerIsOn(*screen, zoneUnderPointer(*screen)) : SnapDrag::Preview::unchanged;
}

std::optional<SnapZone> SnapZonesController::zoneUnderPointer(const Screen& screen) const
{
    return EdgeDetector::zone(*m_pointer, screen.frame, m_settings->edgeThreshold.get(),
                              m_settings->cornerSize.get());
}

void SnapZonesController::showPreview(SnapDrag::Preview preview)
{
    if (preview == SnapDrag::Preview::hidden)
        m_preview.hide();
    else if (const auto target = m_drag.target(); preview == SnapDrag::Preview::shown && target)
        m_preview.show(frame(target->zone, target->screen));
}

void SnapZonesController::dragEnded()
{
    if (endIfPutBack())
        return;
    m_preview.hide();
    if (m_pointer && isUnproved(m_drag))
        follow();
    const auto target = m_drag.target();
    auto unproved = unprovedDrop();
    resetDrag();
    if (target)
        drop(target->window, target->zone, target->screen);
    else if (unproved)
        awaitMove(std::move(*unproved));
}

/// Returns the place of a release while it isn't known yet if the drag moves a window.
std::optional<SnapZonesController::Drop> SnapZonesController::unprovedDrop() const
{
    const auto screen = m_pointer && isUnproved(m_drag) ? screenUnder(*m_pointer) : std::nullopt;
    const auto zone = screen ? zoneUnderPointer(*screen) : std::nullopt;
    return zone ? std::optional(Drop{*zone, *screen}) : std::nullopt;
}

void SnapZonesController::awaitMove(Drop drop)
{
    m_unproved = Unproved{.drag = {},
                          .drop = std::move(drop),
                          .end = platform().mainRunLoop.scheduleTimer(
                              windowManagersTime, RunLoop::Repeats::no, [this] { m_unproved.reset(); })};
}

void SnapZonesController::resetDrag()
{
    m_drag.reset();
    m_pointer.reset();
    m_press.reset();
    m_unproved.reset();
}

/// Switched off, it ends a drag at once: what is no longer shown isn't done either.
void SnapZonesController::switchDragToSnap(bool isOn)
{
    if (isOn)
        return;
    m_preview.hide();
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

/// A window can't be placed on a screen that was unplugged meanwhile.
void SnapZonesController::drop(const AXUIElement& window, SnapZone zone, const Screen& screen) const
{
    AX::setMessagingTimeout(window, FocusedWindow::longestWait);
    if (const auto present = presentState(screen))
        place(window, zone, *present);
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
