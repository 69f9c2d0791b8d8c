// Runs one extraction from its start to its end: takes the picture of the display under the pointer, shows it
// in a window above everything, and copies the text in the box that is dragged. Main thread.
#pragma once

#include "Capabilities/TextExtractor/RegionSelectModel.h"
#include "Capabilities/TextExtractor/SelectedRegion.h"
#include "Capabilities/TextExtractor/TextExtractorSettings.h"
#include "OrvaneCore/Base/Log.h"
#include "OrvaneCore/Base/Pool.h"
#include "Platform/EventMonitors.h"
#include "Platform/NotificationCenter.h"
#include "Platform/Overlays.h"
#include "Platform/RunLoop.h"
#include "Platform/Screens.h"
#include "Platform/TextRecognition.h"

#include <memory>
#include <vector>

namespace orvane {

class OrvaOverlayWindow;

class TextExtractorController : public std::enable_shared_from_this<TextExtractorController> {
public:
    /// The name of the shortcut that starts an extraction.
    static QString actionID() { return QStringLiteral("textextractor.extract"); }

    static std::shared_ptr<TextExtractorController> make(std::shared_ptr<TextExtractorSettings> settings,
                                                         Logger log);
    ~TextExtractorController();
    TextExtractorController(const TextExtractorController&) = delete;
    TextExtractorController& operator=(const TextExtractorController&) = delete;

    [[nodiscard]] const std::shared_ptr<TextExtractorSettings>& settings() const { return m_settings; }

    /// Does nothing while an extraction is under way. Without a picture, as when the permission is missing,
    /// nothing is shown.
    void extract();

    [[nodiscard]] bool isActive() const { return m_isActive; }
    /// Null while no window is up.
    [[nodiscard]] std::shared_ptr<const RegionSelectModel> model() const { return m_model; }

    /// What the system can read; absent until findLanguages() has been answered.
    Observable<std::optional<TextRecognition::Languages>> languages{std::nullopt};
    void findLanguages();

private:
    TextExtractorController(std::shared_ptr<TextExtractorSettings> settings, Logger log);

    void holdInput(ScreenImage image);
    void begin(ScreenImage image);
    void installMonitors();
    void monitor(std::initializer_list<EventType> types, EventMonitors::Handler handler);
    [[nodiscard]] static bool isShortcut(const Event& event);
    void updateSelection(Point point);
    void finishSelection();
    /// `shown` is the model of the overlay in which the text was selected.
    void finish(const QString& text, const std::weak_ptr<RegionSelectModel>& shown);
    void teardown();
    void endIfDisplayIsGone();

    static UnownedTask prepare();
    static UnownedTask readLanguages(std::weak_ptr<TextExtractorController> weak);
    static UnownedTask recognize(std::weak_ptr<TextExtractorController> weak,
                                 std::weak_ptr<RegionSelectModel> shown, TextRecognition::Image crop,
                                 bool joinsLines);

    std::shared_ptr<TextExtractorSettings> m_settings;
    Logger m_log;
    bool m_isActive = false;
    Screen m_screen;
    std::unique_ptr<NotificationCenter::Token> m_screenChanges;
    std::unique_ptr<ScreenCapturer> m_capturer;
    std::unique_ptr<InputHold> m_input;
    std::shared_ptr<RegionSelectModel> m_model;
    SelectedRegion m_region;
    std::optional<Point> m_dragStart;
    std::unique_ptr<OrvaOverlayWindow> m_window;
    std::vector<std::unique_ptr<EventMonitor>> m_monitors;
    std::unique_ptr<Timer> m_watchdog;
    /// The time for which the outcome is shown.
    std::unique_ptr<Timer> m_farewell;
};

} // namespace orvane
