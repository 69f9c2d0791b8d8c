// Measures what one motion of a dragged window costs the main thread: on the fakes, and on a display with the
// real pointer, from the monitor's call to its return.
#include "AllocationCount.h"
#include "Capabilities/SnapZones/SnapZonesController.h"
#include "Fakes/FakePlatform.h"
#include "OrvaneCore/Windows/AXAttr.h"
#include "PlatformLinux/LinuxPlatform.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QEventLoop>

#include <benchmark/benchmark.h>

#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>
// Xlib's macros have names that other headers need.
#undef None

using namespace orvane;

namespace {

LinuxPlatform* desktop = nullptr;

Platform withDesktop(const Platform& fakes, const Platform& real)
{
    return {.accessibility = fakes.accessibility,
            .application = fakes.application,
            .mainBundle = fakes.mainBundle,
            .clock = fakes.clock,
            .defaultNotificationCenter = real.defaultNotificationCenter,
            .desktopPicture = fakes.desktopPicture,
            .eventMonitors = real.eventMonitors,
            .eventTaps = fakes.eventTaps,
            .fileManager = fakes.fileManager,
            .generalPasteboard = fakes.generalPasteboard,
            .hotKeys = fakes.hotKeys,
            .http = fakes.http,
            .inputSources = fakes.inputSources,
            .loginItem = fakes.loginItem,
            .log = fakes.log,
            .overlays = fakes.overlays,
            .panels = real.panels,
            .permissions = fakes.permissions,
            .pictures = fakes.pictures,
            .powerAssertions = fakes.powerAssertions,
            .mainRunLoop = real.mainRunLoop,
            .screenCapture = fakes.screenCapture,
            .screens = real.screens,
            .sound = fakes.sound,
            .standardDefaults = fakes.standardDefaults,
            .systemStatusBar = fakes.systemStatusBar,
            .textRecognition = fakes.textRecognition,
            .thumbnails = fakes.thumbnails,
            .windowDrags = fakes.windowDrags,
            .sharedWorkspace = fakes.sharedWorkspace};
}

/// A controller and the window that it sees dragged; the accessibility calls are counted and not made.
struct Drag {
    std::shared_ptr<SnapZonesController> makeController()
    {
        const QString id = QStringLiteral("snapzones");
        return SnapZonesController::make(
            std::make_shared<SnapZonesSettings>(ScopedPreferences(fake.defaults, id)), Log::make(id));
    }
    void press()
    {
        fake.eventMonitors.sendToOthers({.event = {.type = EventType::leftMouseDown}, .location = {}});
    }
    void moveWindow()
    {
        FakeAccessibility::node(window).attributes.insert_or_assign(AXAttr::position, Point{300, 300});
    }

    FakePlatform fake;
    AXUIElement window = fake.accessibility.focusNewWindow({100, 100}, {600, 400});
};

/// Moves the pointer within one place: the middle of the screen, or a zone.
void motion(benchmark::State& state, Point place)
{
    Drag drag;
    const auto controller = drag.makeController();
    controller->start();
    drag.press();
    const auto move = [&](double y) {
        drag.fake.eventMonitors.pointer = {place.x, y};
        controller->dragMoved();
    };
    move(place.y);
    drag.moveWindow();
    move(place.y);
    const std::size_t calls = drag.fake.accessibility.calls.size();
    const long before = allocations.load();
    double step = 0;
    for (auto _ : state) {
        move(place.y + step);
        step = step < 100 ? step + 1 : 0;
    }
    state.counters["allocations"] = benchmark::Counter(static_cast<double>(allocations.load() - before),
                                                       benchmark::Counter::kAvgIterations);
    if (drag.fake.accessibility.calls.size() != calls)
        state.SkipWithError("another program was asked");
}

/// The test pointer of a display.
class Pointer {
public:
    Pointer() : m_display(XOpenDisplay(nullptr)) {}
    ~Pointer()
    {
        hold(false);
        XCloseDisplay(m_display);
    }
    Pointer(const Pointer&) = delete;
    Pointer& operator=(const Pointer&) = delete;

    void hold(bool pressed)
    {
        XTestFakeButtonEvent(m_display, 1, pressed ? True : False, CurrentTime);
        XFlush(m_display);
    }
    void moveTo(int x, int y)
    {
        XTestFakeMotionEvent(m_display, -1, x, y, CurrentTime);
        XFlush(m_display);
    }

private:
    Display* m_display;
};

/// Notes when the monitors before and after the controller's were called, and the allocations between.
class Stamps {
public:
    using Clock = std::chrono::steady_clock;

    /// The newest monitor is called first.
    void addLast()
    {
        m_last = add([this] { end(); });
    }
    void addFirst()
    {
        m_first = add([this] { begin(); });
    }

    /// Returns the time of the next event; absent when none comes within a second.
    std::optional<std::chrono::duration<double>> next()
    {
        m_span.reset();
        const QDeadlineTimer deadline(std::chrono::seconds(1));
        while (!m_span && !deadline.hasExpired())
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        return m_span;
    }
    [[nodiscard]] long allocated() const { return m_allocated; }

private:
    std::unique_ptr<EventMonitor> add(const std::function<void()>& stamp)
    {
        return platform().eventMonitors.addGlobalMonitor(eventMaskBit(EventType::leftMouseDown) |
                                                             eventMaskBit(EventType::leftMouseDragged),
                                                         [stamp](const auto&) { stamp(); });
    }
    void begin()
    {
        m_before = allocations.load();
        m_begin = Clock::now();
    }
    void end()
    {
        m_span = Clock::now() - m_begin;
        m_allocated = allocations.load() - m_before;
    }

    std::unique_ptr<EventMonitor> m_first;
    std::unique_ptr<EventMonitor> m_last;
    Clock::time_point m_begin;
    long m_before = 0;
    long m_allocated = 0;
    std::optional<std::chrono::duration<double>> m_span;
};

/// The pointer moves over the desktop, which is no window of this program.
void motionOnTheDesktop(benchmark::State& state)
{
    Drag drag;
    Platform& fakes = platform();
    Platform mixed = withDesktop(fakes, desktop->platform());
    const PlatformScope scope(mixed);
    const auto controller = drag.makeController();
    Stamps stamps;
    stamps.addLast();
    controller->start();
    stamps.addFirst();

    Pointer pointer;
    pointer.moveTo(500, 500);
    pointer.hold(true);
    // The controller listens to motion only once the press is known.
    if (!stamps.next())
        return state.SkipWithError("the press wasn't seen");
    drag.press();
    for (const int x : {510, 520}) {
        pointer.moveTo(x, 500);
        if (!stamps.next())
            return state.SkipWithError("no motion was seen");
        drag.moveWindow();
    }
    long allocated = 0;
    int step = 0;
    for (auto _ : state) {
        pointer.moveTo(500 + step++ % 50, 510);
        const auto span = stamps.next();
        if (!span)
            return state.SkipWithError("a motion was lost");
        state.SetIterationTime(span->count());
        allocated += stamps.allocated();
    }
    state.counters["allocations"] =
        benchmark::Counter(static_cast<double>(allocated), benchmark::Counter::kAvgIterations);
    if (controller->drag().state() != SnapDrag::State::moving)
        state.SkipWithError("the drag wasn't moving");
}

BENCHMARK_CAPTURE(motion, in_the_middle, Point{700, 400});
BENCHMARK_CAPTURE(motion, in_a_zone, Point{3, 400});

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    std::optional<LinuxPlatform> linuxPlatform;
    std::optional<QApplication> application;
    if (qEnvironmentVariableIsSet("DISPLAY")) {
        desktop = &linuxPlatform.emplace(argc, argv);
        benchmark::RegisterBenchmark("motion/on_the_desktop", motionOnTheDesktop)
            ->UseManualTime()
            ->Iterations(2000);
    } else {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        application.emplace(argc, argv);
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
