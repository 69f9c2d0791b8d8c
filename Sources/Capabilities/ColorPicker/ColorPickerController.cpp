#include "Capabilities/ColorPicker/ColorPickerController.h"

#include "Capabilities/ColorPicker/ColorPickerOverlayView.h"
#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "OrvaneCore/Windows/ScreenGeometry.h"
#include "OrvaneKit/Panels/OrvaOverlayWindow.h"
#include "Platform/Pasteboard.h"
#include "Platform/Platform.h"
#include "Platform/Sound.h"

#include <algorithm>

namespace orvane {

namespace {

using namespace std::chrono_literals;
using Disposition = EventMonitors::Disposition;

/// A pick can't keep the keyboard for ever, should events stop coming.
constexpr auto longestPick = 30s;

std::optional<Screen> screenAt(Point point)
{
    const QList<Screen> screens = platform().screens.screens();
    const auto found =
        std::ranges::find_if(screens, [point](const Screen& screen) { return screen.frame.contains(point); });
    return found == screens.end() ? platform().screens.mainScreen() : std::optional(*found);
}

} // namespace

ColorPickerController::ColorPickerController(std::shared_ptr<ColorPickerSettings> settings, Logger log)
    : m_settings(std::move(settings)), m_log(std::move(log))
{
}

ColorPickerController::~ColorPickerController()
{
    teardown();
}

void ColorPickerController::pick()
{
    if (m_isPicking)
        return;
    const auto screen = screenAt(platform().eventMonitors.mouseLocation());
    if (!screen)
        return;
    m_isPicking = true;
    m_screen = *screen;
    m_screenChanges = platform().defaultNotificationCenter.addObserver(
        Screens::didChangeScreenParametersNotification(),
        [this](const Notification&) { endIfDisplayIsGone(); });
    m_capturer = platform().screenCapture.makeCapturer();
    m_capturer->captureDisplay(ScreenGeometry::displayID(m_screen), [this](std::optional<ScreenImage> image) {
        if (image)
            holdInput(std::move(*image));
        else
            teardown();
    });
}

/// Comes before the window, so that no click and no key gets past it.
void ColorPickerController::holdInput(ScreenImage image)
{
    m_capturer.reset();
    m_input = platform().overlays.holdInput([this, image = std::move(image)](bool isHeld) mutable {
        if (isHeld) {
            begin(std::move(image));
            return;
        }
        m_log.notice(QStringLiteral("Another program has the keyboard or the pointer, as one whose menu is "
                                    "open: no color is picked"));
        platform().sound.beep();
        teardown();
    });
}

void ColorPickerController::begin(ScreenImage image)
{
    m_area = {.frame = m_screen.frame,
              .scale = m_screen.backingScaleFactor,
              .size = QSize(image.width, image.height)};
    m_model = std::make_shared<ColorPickerOverlayModel>(std::move(image));
    m_window = std::make_unique<OrvaOverlayWindow>(Overlays::Input::takes);
    m_window->setContentView(new ColorPickerOverlayView(m_model));
    m_window->setCursor(Qt::CrossCursor);
    updateSample(platform().eventMonitors.mouseLocation());
    m_window->setFrame(m_screen.frame);
    m_window->orderFront();
    m_input->deliverTo(*m_window->windowHandle());
    installMonitors();
}

void ColorPickerController::installMonitors()
{
    using enum EventType;
    monitor({mouseMoved, leftMouseDragged}, [this](const EventMonitors::MonitoredEvent&) {
        updateSample(platform().eventMonitors.mouseLocation());
        return Disposition::pass;
    });
    monitor({leftMouseDown}, [this](const EventMonitors::MonitoredEvent&) {
        commit();
        return Disposition::swallow;
    });
    monitor({rightMouseDown, keyDown}, [this](const EventMonitors::MonitoredEvent& event) {
        // The keys of the shortcut are still down when it has started the pick, and repeat.
        const bool isRepeat = event.event.type == keyDown && event.event.autorepeat != 0;
        if (!isRepeat && !isShortcut(event.event))
            teardown();
        return Disposition::swallow;
    });
    m_watchdog =
        platform().mainRunLoop.scheduleTimer(longestPick, RunLoop::Repeats::no, [this] { teardown(); });
}

void ColorPickerController::monitor(std::initializer_list<EventType> types, EventMonitors::Handler handler)
{
    EventMask mask = 0;
    for (const EventType type : types)
        mask |= eventMaskBit(type);
    m_monitors.push_back(platform().eventMonitors.addLocalMonitor(mask, std::move(handler)));
}

/// The pick's own shortcut does nothing during a pick; the system doesn't hold it back while this program has
/// the keyboard.
bool ColorPickerController::isShortcut(const Event& event)
{
    const auto pressed = KeyboardShortcuts::Shortcut::fromEvent(event);
    return event.type == EventType::keyDown && pressed &&
           pressed == KeyboardShortcuts::getShortcut(KeyboardShortcuts::Name(actionID()));
}

void ColorPickerController::updateSample(Point point)
{
    const auto pixel = m_model ? m_area.pixelAt(point) : std::nullopt;
    if (!pixel)
        return;
    const auto color = PickedColor::fromPixel(m_model->background.pixel(pixel->x(), pixel->y()));
    m_model->formatString = color.string(m_settings->format.get());
    m_model->color.set(color);
    m_model->cursor.set(m_area.placeOf(point));
    m_model->crop.set(m_area.cropAround(*pixel));
}

void ColorPickerController::commit()
{
    if (m_model) {
        const QString text = m_model->color.get().string(m_settings->format.get());
        Pasteboard& pasteboard = platform().generalPasteboard;
        pasteboard.clearContents();
        pasteboard.setString(text, pasteboardType::string);
        m_log.info(QStringLiteral("Picked color %1").arg(text));
    }
    teardown();
}

/// Ends the pick in whatever state it is; may run twice without harm.
void ColorPickerController::teardown()
{
    m_watchdog.reset();
    m_monitors.clear();
    m_screenChanges.reset();
    m_capturer.reset();
    m_input.reset(); // before its window
    m_window.reset();
    m_model.reset();
    m_isPicking = false;
}

void ColorPickerController::endIfDisplayIsGone()
{
    const QList<Screen> screens = platform().screens.screens();
    const bool isThere = std::ranges::any_of(screens, [this](const Screen& screen) {
        return ScreenGeometry::displayID(screen) == ScreenGeometry::displayID(m_screen) &&
               screen.frame == m_screen.frame && screen.backingScaleFactor == m_screen.backingScaleFactor;
    });
    if (!isThere)
        teardown();
}

} // namespace orvane
