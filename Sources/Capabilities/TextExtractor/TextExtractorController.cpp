#include "Capabilities/TextExtractor/TextExtractorController.h"

#include "Capabilities/TextExtractor/RegionSelectView.h"
#include "Capabilities/TextExtractor/TextExtractorText.h"
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

/// An extraction can't keep the keyboard for ever, should events stop coming.
constexpr auto longestExtraction = 45s;
constexpr auto outcomeTime = 700ms;

std::optional<Screen> screenAt(Point point)
{
    const QList<Screen> screens = platform().screens.screens();
    const auto found =
        std::ranges::find_if(screens, [point](const Screen& screen) { return screen.frame.contains(point); });
    return found == screens.end() ? platform().screens.mainScreen() : std::optional(*found);
}

TextRecognition::Image cropped(const ScreenImage& image, const QRect& part)
{
    TextRecognition::Image crop{part.width(), part.height(), {}};
    constexpr qsizetype bytesInPixel = 4;
    crop.pixels.reserve(bytesInPixel * part.width() * part.height());
    for (int y = part.top(); y <= part.bottom(); ++y) {
        const qsizetype first = (qsizetype{y} * image.width + part.left()) * bytesInPixel;
        crop.pixels.append(image.pixels.constData() + first, part.width() * bytesInPixel);
    }
    return crop;
}

} // namespace

std::shared_ptr<TextExtractorController>
TextExtractorController::make(std::shared_ptr<TextExtractorSettings> settings, Logger log)
{
    return std::shared_ptr<TextExtractorController>(
        new TextExtractorController(std::move(settings), std::move(log)));
}

TextExtractorController::TextExtractorController(std::shared_ptr<TextExtractorSettings> settings, Logger log)
    : m_settings(std::move(settings)), m_log(std::move(log))
{
}

TextExtractorController::~TextExtractorController()
{
    teardown();
}

void TextExtractorController::extract()
{
    if (m_isActive)
        return;
    const auto screen = screenAt(platform().eventMonitors.mouseLocation());
    if (!screen)
        return;
    m_isActive = true;
    m_screen = *screen;
    m_screenChanges = platform().defaultNotificationCenter.addObserver(
        Screens::didChangeScreenParametersNotification(),
        [this](const Notification&) { endIfDisplayIsGone(); });
    prepare();
    m_capturer = platform().screenCapture.makeCapturer();
    m_capturer->captureDisplay(ScreenGeometry::displayID(m_screen), [this](std::optional<ScreenImage> image) {
        if (image)
            holdInput(std::move(*image));
        else
            teardown();
    });
}

/// Comes before the window, so that no click and no key gets past it.
void TextExtractorController::holdInput(ScreenImage image)
{
    m_capturer.reset();
    m_input = platform().overlays.holdInput([this, image = std::move(image)](bool isHeld) mutable {
        if (isHeld) {
            begin(std::move(image));
            return;
        }
        m_log.notice(QStringLiteral("Another program has the keyboard or the pointer, as one whose menu is "
                                    "open: no text is extracted"));
        platform().sound.beep();
        teardown();
    });
}

void TextExtractorController::begin(ScreenImage image)
{
    m_region = {.frame = m_screen.frame,
                .scale = m_screen.backingScaleFactor,
                .size = QSize(image.width, image.height)};
    m_dragStart.reset();
    m_model = std::make_shared<RegionSelectModel>(std::move(image));
    m_window = std::make_unique<OrvaOverlayWindow>(Overlays::Input::takes);
    m_window->setContentView(new RegionSelectView(m_model));
    m_window->setCursor(Qt::CrossCursor);
    m_window->setFrame(m_screen.frame);
    m_window->orderFront();
    m_input->deliverTo(*m_window->windowHandle());
    installMonitors();
}

void TextExtractorController::installMonitors()
{
    using enum EventType;
    using Monitored = EventMonitors::MonitoredEvent;
    monitor({leftMouseDown}, [this](const Monitored&) {
        m_dragStart = platform().eventMonitors.mouseLocation();
        m_model->selection.set(std::nullopt);
        return Disposition::swallow;
    });
    monitor({leftMouseDragged}, [this](const Monitored&) {
        updateSelection(platform().eventMonitors.mouseLocation());
        return Disposition::swallow;
    });
    monitor({leftMouseUp}, [this](const Monitored&) {
        finishSelection();
        return Disposition::swallow;
    });
    monitor({rightMouseDown, keyDown}, [this](const Monitored& event) {
        // The keys of the shortcut are still down when it has started this, and repeat.
        const bool isRepeat = event.event.type == keyDown && event.event.autorepeat != 0;
        if (!isRepeat && !isShortcut(event.event))
            teardown();
        return Disposition::swallow;
    });
    m_watchdog =
        platform().mainRunLoop.scheduleTimer(longestExtraction, RunLoop::Repeats::no, [this] { teardown(); });
}

void TextExtractorController::monitor(std::initializer_list<EventType> types, EventMonitors::Handler handler)
{
    EventMask mask = 0;
    for (const EventType type : types)
        mask |= eventMaskBit(type);
    m_monitors.push_back(platform().eventMonitors.addLocalMonitor(mask, std::move(handler)));
}

/// The extraction's own shortcut does nothing during one; the system doesn't hold it back while this program
/// has the keyboard.
bool TextExtractorController::isShortcut(const Event& event)
{
    const auto pressed = KeyboardShortcuts::Shortcut::fromEvent(event);
    return event.type == EventType::keyDown && pressed &&
           pressed == KeyboardShortcuts::getShortcut(KeyboardShortcuts::Name(actionID()));
}

void TextExtractorController::updateSelection(Point point)
{
    if (m_model && m_dragStart)
        m_model->selection.set(m_region.between(*m_dragStart, point));
}

void TextExtractorController::finishSelection()
{
    const auto box = m_model ? m_model->selection.get() : std::nullopt;
    if (box && !m_dragStart)
        return; // the end of a drag may be told twice
    const auto pixels = box && SelectedRegion::isLargeEnough(*box) ? m_region.pixelsOf(*box) : std::nullopt;
    if (!pixels) {
        teardown();
        return;
    }
    m_dragStart.reset();
    m_model->status.set(TextExtractorText::tr("Recognizing…"));
    recognize(weak_from_this(), m_model, cropped(m_model->background, *pixels), m_settings->joinLines.get());
}

void TextExtractorController::finish(const QString& text, const std::weak_ptr<RegionSelectModel>& shown)
{
    const QString trimmed = text.trimmed();
    if (!trimmed.isEmpty()) {
        Pasteboard& pasteboard = platform().generalPasteboard;
        pasteboard.clearContents();
        pasteboard.setString(trimmed, pasteboardType::string);
        m_log.info(QStringLiteral("OCR copied %1 characters").arg(trimmed.size()));
    }
    if (!m_model || shown.lock() != m_model)
        return; // it was cancelled, and another one may have begun
    m_model->status.set(trimmed.isEmpty() ? TextExtractorText::tr("No text found")
                                          : TextExtractorText::tr("Copied ✓"));
    m_farewell =
        platform().mainRunLoop.scheduleTimer(outcomeTime, RunLoop::Repeats::no, [this] { teardown(); });
}

/// Ends the extraction in whatever state it is; may run twice without harm. A text that is read is still
/// copied.
void TextExtractorController::teardown()
{
    m_watchdog.reset();
    m_farewell.reset();
    m_monitors.clear();
    m_screenChanges.reset();
    m_capturer.reset();
    m_input.reset(); // before its window
    m_window.reset();
    m_model.reset();
    m_dragStart.reset();
    m_isActive = false;
}

void TextExtractorController::endIfDisplayIsGone()
{
    const QList<Screen> screens = platform().screens.screens();
    const bool isThere = std::ranges::any_of(screens, [this](const Screen& screen) {
        return ScreenGeometry::displayID(screen) == ScreenGeometry::displayID(m_screen) &&
               screen.frame == m_screen.frame && screen.backingScaleFactor == m_screen.backingScaleFactor;
    });
    if (!isThere)
        teardown();
}

void TextExtractorController::findLanguages()
{
    readLanguages(weak_from_this());
}

UnownedTask TextExtractorController::prepare()
{
    auto work = [&recognition = platform().textRecognition] { recognition.prepare({}); };
    co_await onPool(work);
}

UnownedTask TextExtractorController::readLanguages(std::weak_ptr<TextExtractorController> weak)
{
    auto work = [&recognition = platform().textRecognition] { return recognition.languages(); };
    const auto found = co_await onPool(work);
    if (const auto self = weak.lock())
        self->languages.set(found);
}

UnownedTask TextExtractorController::recognize(std::weak_ptr<TextExtractorController> weak,
                                               std::weak_ptr<RegionSelectModel> shown,
                                               TextRecognition::Image crop, bool joinsLines)
{
    auto work = [&recognition = platform().textRecognition, crop = std::move(crop)] {
        return recognition.recognize(crop, {}).value_or(QStringList());
    };
    const QStringList lines = co_await onPool(work);
    if (const auto self = weak.lock())
        self->finish(lines.join(joinsLines ? u' ' : u'\n'), shown);
}

} // namespace orvane
