// Shows the spotlight and the crosshairs, and listens for the gesture while it is started. Main thread.
#pragma once

#include "Capabilities/MouseTools/MouseToolsSettings.h"
#include "Capabilities/MouseTools/Overlay/MouseOverlayModel.h"
#include "OrvaneCore/Base/Log.h"
#include "OrvaneCore/Input/EventTapService.h"
#include "Platform/EventMonitors.h"
#include "Platform/Geometry.h"
#include "Platform/Overlays.h"
#include "Platform/RunLoop.h"

#include <memory>
#include <vector>

namespace orvane {

class OrvaOverlayWindow;

class MouseToolsController : public std::enable_shared_from_this<MouseToolsController> {
public:
    static std::shared_ptr<MouseToolsController> make(std::shared_ptr<MouseToolsSettings> settings,
                                                      std::shared_ptr<EventTapService> eventTap, Logger log);
    ~MouseToolsController();
    MouseToolsController(const MouseToolsController&) = delete;
    MouseToolsController& operator=(const MouseToolsController&) = delete;

    [[nodiscard]] const std::shared_ptr<MouseToolsSettings>& settings() const { return m_settings; }

    /// Listens for the gesture as long as the setting is on.
    void start();
    void stop();

    /// Begins anew when it is shown already.
    void showSpotlight();
    /// May be called without a spotlight.
    void hideSpotlight();
    void toggleCrosshairs();

    /// Null while the overlay isn't up.
    [[nodiscard]] std::shared_ptr<const MouseOverlayModel> spotlight() const { return m_spotlightModel; }
    [[nodiscard]] std::shared_ptr<const MouseOverlayModel> crosshairs() const { return m_crosshairModel; }

private:
    MouseToolsController(std::shared_ptr<MouseToolsSettings> settings,
                         std::shared_ptr<EventTapService> eventTap, Logger log);

    [[nodiscard]] static Rect unionFrame();
    [[nodiscard]] std::shared_ptr<MouseOverlayModel> makeModel(const Rect& frame) const;
    void listen(bool isOn);
    void putSpotlight(const Rect& frame, Overlays::Input input);
    void followInSpotlight(const Rect& frame);
    void installSpotlightMonitors(const Rect& frame);

    std::shared_ptr<MouseToolsSettings> m_settings;
    std::shared_ptr<EventTapService> m_eventTap;
    Logger m_log;
    std::shared_ptr<EventTapListener> m_subscriber;
    std::unique_ptr<InputHold> m_spotlightInput;
    std::shared_ptr<MouseOverlayModel> m_spotlightModel;
    std::unique_ptr<OrvaOverlayWindow> m_spotlightWindow;
    std::vector<std::unique_ptr<EventMonitor>> m_spotlightMonitors;
    std::unique_ptr<Timer> m_spotlightTimer;
    std::shared_ptr<MouseOverlayModel> m_crosshairModel;
    std::unique_ptr<OrvaOverlayWindow> m_crosshairWindow;
    std::unique_ptr<EventMonitor> m_crosshairMonitor;
    Cancellables m_cancellables;
};

} // namespace orvane
