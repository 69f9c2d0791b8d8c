#include "Capabilities/SnapZones/Layouts/SnapLayoutFlyoutController.h"

#include "Capabilities/SnapZones/Layouts/SnapLayoutGridView.h"
#include "OrvaneCore/Base/OrvaView.h"
#include "OrvaneCore/Base/Task.h"
#include "OrvaneKit/Panels/OrvaPanelWindow.h"
#include "Platform/Platform.h"
#include "Platform/Screens.h"

namespace orvane {

namespace {

constexpr std::int64_t escapeKey = 53;

Rect centred(QSize size, const Rect& area)
{
    const Size points{static_cast<double>(size.width()), static_cast<double>(size.height())};
    return {{area.midX() - points.width * 0.5, area.midY() - points.height * 0.5}, points};
}

} // namespace

SnapLayoutFlyoutController::SnapLayoutFlyoutController() : m_model(std::make_shared<SnapLayoutModel>()) {}
SnapLayoutFlyoutController::~SnapLayoutFlyoutController() = default;

bool SnapLayoutFlyoutController::isVisible() const
{
    return m_panel && m_panel->isVisible();
}

void SnapLayoutFlyoutController::makePanel()
{
    m_panel = std::make_unique<OrvaPanelWindow>(OrvaPanelWindow::Style{});
    m_panel->onCloseRequest = [this] { dismiss(); };
    m_grid = AnyView(SnapLayoutGridView{.model = m_model}).makeWidget();
    m_panel->setContentView(m_grid);
}

void SnapLayoutFlyoutController::show()
{
    const auto screen = platform().screens.mainScreen();
    if (!screen)
        return;
    if (!m_panel)
        makePanel();
    m_panel->setFrame(centred(m_grid->sizeHint(), screen->visibleFrame));
    m_panel->orderFront();
    removeMonitors();
    installMonitors();
}

void SnapLayoutFlyoutController::dismiss()
{
    removeMonitors();
    if (m_panel)
        m_panel->orderOut();
}

void SnapLayoutFlyoutController::dismissLater()
{
    startTask([weak = weak_from_this()]() -> Task<> {
        if (const auto self = weak.lock())
            self->dismiss();
        co_return;
    });
}

void SnapLayoutFlyoutController::installMonitors()
{
    EventMonitors& monitors = platform().eventMonitors;
    const std::weak_ptr<SnapLayoutFlyoutController> weak = weak_from_this();
    const auto dismissSoon = [weak] {
        if (const auto self = weak.lock())
            self->dismissLater();
    };
    m_clickMonitor = monitors.addGlobalMonitor(eventMaskBit(EventType::leftMouseDown) |
                                                   eventMaskBit(EventType::rightMouseDown),
                                               [dismissSoon](const auto&) { dismissSoon(); });
    m_keyMonitor = monitors.addLocalMonitor(eventMaskBit(EventType::keyDown),
                                            [dismissSoon](const EventMonitors::MonitoredEvent& monitored) {
                                                if (monitored.event.keycode != escapeKey)
                                                    return EventMonitors::Disposition::pass;
                                                dismissSoon();
                                                return EventMonitors::Disposition::swallow;
                                            });
}

void SnapLayoutFlyoutController::removeMonitors()
{
    m_clickMonitor.reset();
    m_keyMonitor.reset();
}

} // namespace orvane
