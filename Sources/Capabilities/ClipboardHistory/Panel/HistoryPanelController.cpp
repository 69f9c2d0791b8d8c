#include "Capabilities/ClipboardHistory/Panel/HistoryPanelController.h"

#include "Capabilities/ClipboardHistory/ClipboardHistoryText.h"
#include "Capabilities/ClipboardHistory/Panel/HistoryPanelPlacement.h"
#include "Capabilities/ClipboardHistory/Panel/HistoryPanelView.h"
#include "OrvaneKit/Panels/OrvaPanelWindow.h"
#include "Platform/Application.h"
#include "Platform/Platform.h"
#include "Platform/RunLoop.h"
#include "Platform/Screens.h"

namespace orvane {

HistoryPanelController::HistoryPanelController() : m_self(std::make_shared<HistoryPanelController*>(this))
{
    model.onClose = [this] { hide(); };
}

HistoryPanelController::~HistoryPanelController() = default;

void HistoryPanelController::makePanel()
{
    m_panel = std::make_unique<KeyablePanel>();
    m_panel->setWindowTitle(ClipboardHistoryText::tr("Clipboard History"));
    m_panel->onCloseRequest = [this] { hide(); };
    m_view = new HistoryPanelView(model);
    m_panel->setContentView(m_view);
}

void HistoryPanelController::show()
{
    if (!m_panel)
        makePanel();
    model.query.set(QString());
    const Screens& screens = platform().screens;
    const Rect frame = HistoryPanelPlacement::frame(platform().eventMonitors.mouseLocation(),
                                                    screens.screens(), screens.mainScreen());
    m_view->prepareForShowing();
    m_panel->setFrame(frame);
    m_panel->makeKeyAndOrderFront();
    platform().application.activateIgnoringOtherApps();
    watchClicks();
}

void HistoryPanelController::watchClicks()
{
    constexpr EventMask clicks =
        eventMaskBit(EventType::leftMouseDown) | eventMaskBit(EventType::rightMouseDown);
    const std::weak_ptr<HistoryPanelController*> weak = m_self;
    m_clickMonitor.reset();
    m_clickMonitor =
        platform().eventMonitors.addGlobalMonitor(clicks, [weak](const EventMonitors::MonitoredEvent&) {
            platform().mainRunLoop.perform([weak] {
                if (const auto self = weak.lock())
                    (*self)->hide();
            });
        });
}

void HistoryPanelController::hide()
{
    m_clickMonitor.reset();
    if (m_panel)
        m_panel->orderOut();
}

bool HistoryPanelController::isVisible() const
{
    return m_panel && m_panel->isVisible();
}

} // namespace orvane
