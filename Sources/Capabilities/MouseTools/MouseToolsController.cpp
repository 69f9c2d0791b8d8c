#include "Capabilities/MouseTools/MouseToolsController.h"

#include "Capabilities/MouseTools/DoubleCtrlSubscriber.h"
#include "Capabilities/MouseTools/Overlay/CrosshairView.h"
#include "Capabilities/MouseTools/Overlay/SpotlightView.h"
#include "OrvaneKit/Panels/OrvaOverlayWindow.h"
#include "Platform/Platform.h"
#include "Platform/Screens.h"

#include <QWindow>

#include <algorithm>

namespace orvane {

namespace {

using namespace std::chrono_literals;
using Disposition = EventMonitors::Disposition;
using Monitored = EventMonitors::MonitoredEvent;
using enum EventType;

constexpr auto spotlightTime = 2500ms;

/// Returns the pointer's place from the upper left corner of a frame down.
QPointF pointerIn(const Rect& frame)
{
    const Point pointer = platform().eventMonitors.mouseLocation();
    return {pointer.x - frame.minX(), frame.maxY() - pointer.y};
}

} // namespace

std::shared_ptr<MouseToolsController> MouseToolsController::make(std::shared_ptr<MouseToolsSettings> settings,
                                                                 std::shared_ptr<EventTapService> eventTap,
                                                                 Logger log)
{
    const std::shared_ptr<MouseToolsController> controller(
        new MouseToolsController(std::move(settings), std::move(eventTap), std::move(log)));
    controller->m_subscriber = std::make_shared<DoubleCtrlSubscriber>([weak = std::weak_ptr(controller)] {
        if (const auto self = weak.lock())
            self->showSpotlight();
    });
    return controller;
}

MouseToolsController::MouseToolsController(std::shared_ptr<MouseToolsSettings> settings,
                                           std::shared_ptr<EventTapService> eventTap, Logger log)
    : m_settings(std::move(settings)), m_eventTap(std::move(eventTap)), m_log(std::move(log))
{
}

MouseToolsController::~MouseToolsController()
{
    stop();
}

void MouseToolsController::start()
{
    m_cancellables.push_back(
        m_settings->doubleCtrlSpotlight.subscribe([this](const bool& isOn) { listen(isOn); }));
}

void MouseToolsController::stop()
{
    m_cancellables.clear();
    listen(false);
    hideSpotlight();
    if (m_crosshairWindow)
        toggleCrosshairs();
}

void MouseToolsController::listen(bool isOn)
{
    m_eventTap->removeListener(m_subscriber);
    if (isOn)
        m_eventTap->addListener(m_subscriber);
}

Rect MouseToolsController::unionFrame()
{
    const QList<Screen> screens = platform().screens.screens();
    if (screens.isEmpty())
        return {};
    double minX = screens[0].frame.minX();
    double minY = screens[0].frame.minY();
    double maxX = screens[0].frame.maxX();
    double maxY = screens[0].frame.maxY();
    for (const Screen& screen : screens) {
        minX = std::min(minX, screen.frame.minX());
        minY = std::min(minY, screen.frame.minY());
        maxX = std::max(maxX, screen.frame.maxX());
        maxY = std::max(maxY, screen.frame.maxY());
    }
    return {{minX, minY}, {maxX - minX, maxY - minY}};
}

std::shared_ptr<MouseOverlayModel> MouseToolsController::makeModel(const Rect& frame) const
{
    auto model = std::make_shared<MouseOverlayModel>();
    model->spotlightRadius = m_settings->spotlightRadius.get();
    model->dimOpacity = m_settings->dimOpacity.get();
    model->crosshairThickness = m_settings->crosshairThickness.get();
    model->crosshairOpacity = m_settings->crosshairOpacity.get();
    model->point.set(pointerIn(frame));
    return model;
}

/// While another program has the keyboard or the pointer, as one whose menu is open, the spotlight is shown
/// all the same, and lets everything through.
void MouseToolsController::showSpotlight()
{
    hideSpotlight();
    const Rect frame = unionFrame();
    if (frame.width() <= 0 || frame.height() <= 0)
        return;
    m_spotlightModel = makeModel(frame);
    m_spotlightInput = platform().overlays.holdInput([this, frame](bool isHeld) {
        putSpotlight(frame, isHeld ? Overlays::Input::takes : Overlays::Input::passesThrough);
        if (isHeld) {
            m_spotlightInput->deliverTo(*m_spotlightWindow->windowHandle());
            installSpotlightMonitors(frame);
        } else {
            followInSpotlight(frame);
        }
    });
    m_spotlightTimer = platform().mainRunLoop.scheduleTimer(spotlightTime, RunLoop::Repeats::no,
                                                            [this] { hideSpotlight(); });
}

void MouseToolsController::putSpotlight(const Rect& frame, Overlays::Input input)
{
    m_spotlightModel->point.set(pointerIn(frame));
    m_spotlightWindow = std::make_unique<OrvaOverlayWindow>(input, OrvaOverlayWindow::Ground::clear);
    m_spotlightWindow->setContentView(new SpotlightView(m_spotlightModel, *m_spotlightWindow));
    m_spotlightWindow->setFrame(frame);
    m_spotlightWindow->orderFront();
}

void MouseToolsController::followInSpotlight(const Rect& frame)
{
    m_spotlightMonitors.push_back(platform().eventMonitors.addGlobalMonitor(
        eventMaskBit(mouseMoved) | eventMaskBit(leftMouseDragged),
        [this, frame](const Monitored&) { m_spotlightModel->point.set(pointerIn(frame)); }));
}

void MouseToolsController::installSpotlightMonitors(const Rect& frame)
{
    const auto add = [this](EventMask mask, EventMonitors::Handler handler) {
        m_spotlightMonitors.push_back(platform().eventMonitors.addLocalMonitor(mask, std::move(handler)));
    };
    add(eventMaskBit(mouseMoved) | eventMaskBit(leftMouseDragged), [this, frame](const Monitored&) {
        m_spotlightModel->point.set(pointerIn(frame));
        return Disposition::pass;
    });
    const auto hide = [this](const Monitored&) {
        hideSpotlight();
        return Disposition::swallow;
    };
    add(eventMaskBit(leftMouseDown) | eventMaskBit(rightMouseDown), hide);
    add(eventMaskBit(keyDown), [this, hide](const Monitored& event) {
        // The keys of the shortcut are still down when it has shown the spotlight, and repeat.
        return event.event.autorepeat != 0 ? Disposition::swallow : hide(event);
    });
}

void MouseToolsController::hideSpotlight()
{
    m_spotlightTimer.reset();
    m_spotlightMonitors.clear();
    m_spotlightInput.reset(); // before its window
    m_spotlightWindow.reset();
    m_spotlightModel.reset();
}

void MouseToolsController::toggleCrosshairs()
{
    if (m_crosshairWindow) {
        m_crosshairMonitor.reset();
        m_crosshairWindow.reset();
        m_crosshairModel.reset();
        return;
    }
    const Rect frame = unionFrame();
    if (frame.width() <= 0 || frame.height() <= 0)
        return;
    m_crosshairModel = makeModel(frame);
    m_crosshairWindow =
        std::make_unique<OrvaOverlayWindow>(Overlays::Input::passesThrough, OrvaOverlayWindow::Ground::clear);
    m_crosshairWindow->setContentView(new CrosshairView(m_crosshairModel, *m_crosshairWindow));
    m_crosshairWindow->setFrame(frame);
    m_crosshairWindow->orderFront();
    m_crosshairMonitor = platform().eventMonitors.addGlobalMonitor(
        eventMaskBit(mouseMoved) | eventMaskBit(leftMouseDragged) | eventMaskBit(rightMouseDragged),
        [this, frame](const Monitored&) { m_crosshairModel->point.set(pointerIn(frame)); });
}

} // namespace orvane
