// Runs one pick from its start to its end: takes the picture of the display under the pointer, shows it in a
// window above everything, and copies the colour that is clicked. Main thread.
#pragma once

#include "Capabilities/ColorPicker/ColorPickerOverlayModel.h"
#include "Capabilities/ColorPicker/ColorPickerSettings.h"
#include "Capabilities/ColorPicker/PickArea.h"
#include "OrvaneCore/Base/Log.h"
#include "Platform/EventMonitors.h"
#include "Platform/NotificationCenter.h"
#include "Platform/Overlays.h"
#include "Platform/RunLoop.h"
#include "Platform/Screens.h"

#include <memory>
#include <vector>

namespace orvane {

class OrvaOverlayWindow;

class ColorPickerController {
public:
    /// The name of the shortcut that starts a pick.
    static QString actionID() { return QStringLiteral("colorpicker.pick"); }

    ColorPickerController(std::shared_ptr<ColorPickerSettings> settings, Logger log);
    ~ColorPickerController();
    ColorPickerController(const ColorPickerController&) = delete;
    ColorPickerController& operator=(const ColorPickerController&) = delete;

    [[nodiscard]] const std::shared_ptr<ColorPickerSettings>& settings() const { return m_settings; }

    /// Does nothing while a pick is under way. Without a picture, as when the permission is missing, nothing
    /// is shown.
    void pick();

    [[nodiscard]] bool isPicking() const { return m_isPicking; }
    /// Null while no window is up.
    [[nodiscard]] std::shared_ptr<const ColorPickerOverlayModel> model() const { return m_model; }

private:
    void holdInput(ScreenImage image);
    void begin(ScreenImage image);
    void installMonitors();
    void monitor(std::initializer_list<EventType> types, EventMonitors::Handler handler);
    void updateSample(Point point);
    [[nodiscard]] static bool isShortcut(const Event& event);
    void commit();
    void teardown();
    void endIfDisplayIsGone();

    std::shared_ptr<ColorPickerSettings> m_settings;
    Logger m_log;
    bool m_isPicking = false;
    Screen m_screen;
    std::unique_ptr<NotificationCenter::Token> m_screenChanges;
    std::unique_ptr<ScreenCapturer> m_capturer;
    std::unique_ptr<InputHold> m_input;
    std::shared_ptr<ColorPickerOverlayModel> m_model;
    PickArea m_area;
    std::unique_ptr<OrvaOverlayWindow> m_window;
    std::vector<std::unique_ptr<EventMonitor>> m_monitors;
    std::unique_ptr<Timer> m_watchdog;
};

} // namespace orvane
