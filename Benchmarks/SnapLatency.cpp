// The time from the key of a snap shortcut until the X server reports the window in its place, beside wmctrl
// and beside the bare message to the window manager, by turns in one run.
// Tools/desktop/session -- build/release/bin/SnapLatency [times]
// Needs the private desktop's hardware keyboard "testkbd", a window manager and wmctrl.
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <X11/XKBlib.h>
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/extensions/XInput.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds deadline{10};

/// The built program with Control-Alt-1 and 2 for the left and the right half.
class Program {
public:
    Program()
    {
        QDir(m_home.path()).mkpath(QStringLiteral("orvane"));
        QFile defaults(m_home.filePath(QStringLiteral("orvane/defaults.json")));
        if (defaults.open(QIODevice::WriteOnly))
            defaults.write(
                R"({"hasOnboarded": true,
                    "Orvane.enabledCapabilities": {"net.lindenrow.orvane.snapzones": true},
                    "KeyboardShortcuts_snapzones.leftHalf": "{\"carbonKeyCode\":18,\"carbonModifiers\":6144}",
                    "KeyboardShortcuts_snapzones.rightHalf": "{\"carbonKeyCode\":19,\"carbonModifiers\":6144}"}
                )");
        defaults.close();
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_home.path());
        m_process.setProcessEnvironment(environment);
        m_process.setProcessChannelMode(QProcess::MergedChannels);
        m_process.start(QStringLiteral(ORVANE_PROGRAM), {});
        QByteArray output;
        while (!output.contains("Snap Zones active")) {
            if (!m_process.waitForReadyRead(20'000))
                qFatal("Snap Zones doesn't start: %s", output.constData());
            output += m_process.readAll();
        }
    }
    ~Program()
    {
        m_process.terminate();
        m_process.waitForFinished();
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

private:
    QTemporaryDir m_home;
    QProcess m_process;
};

class Keyboard {
public:
    Keyboard()
    {
        int count = 0;
        XDeviceInfo* devices = XListInputDevices(m_display, &count);
        for (int i = 0; i < count; ++i) {
            if (std::strcmp(devices[i].name, "testkbd") == 0)
                m_device = XOpenDevice(m_display, devices[i].id);
        }
        XFreeDeviceList(devices);
        if (!m_device)
            qFatal("there is no test keyboard");
    }
    ~Keyboard() { XCloseDisplay(m_display); }
    Keyboard(const Keyboard&) = delete;
    Keyboard& operator=(const Keyboard&) = delete;

    void send(KeySym key, bool down)
    {
        XTestFakeDeviceKeyEvent(m_display, m_device, XKeysymToKeycode(m_display, key), down ? True : False,
                                nullptr, 0, CurrentTime);
        XFlush(m_display);
    }

private:
    Display* m_display = XOpenDisplay(nullptr);
    XDevice* m_device = nullptr;
};

struct Place {
    int x = 0, y = 0;
    unsigned width = 0, height = 0;
    friend bool operator==(const Place&, const Place&) = default;
};

/// A plain window to be placed; it doesn't react to it.
class Target {
public:
    Target()
    {
        const Window root = DefaultRootWindow(m_display);
        m_window = XCreateSimpleWindow(m_display, root, 300, 300, 400, 300, 0, 0, 0xffffff);
        XStoreName(m_display, m_window, "Snap target");
        XSelectInput(m_display, m_window, StructureNotifyMask | FocusChangeMask | PropertyChangeMask);
        XMapWindow(m_display, m_window);
        waitUntil("the window becomes active", [this] { return isActive(); });
    }
    ~Target() { XCloseDisplay(m_display); }
    Target(const Target&) = delete;
    Target& operator=(const Target&) = delete;

    Place place()
    {
        Window root = 0, child = 0;
        Place place;
        unsigned border = 0, depth = 0;
        int x = 0, y = 0;
        XGetGeometry(m_display, m_window, &root, &x, &y, &place.width, &place.height, &border, &depth);
        XTranslateCoordinates(m_display, m_window, root, 0, 0, &place.x, &place.y, &child);
        return place;
    }

    /// Tests the condition again at each event of the window.
    void waitUntil(const char* what, const std::function<bool()>& condition)
    {
        const auto end = Clock::now() + deadline;
        while (!condition()) {
            pollfd descriptor{ConnectionNumber(m_display), POLLIN, 0};
            constexpr int atLeast = 20; // in ms: the condition may come true without an event
            if (XPending(m_display) == 0)
                poll(&descriptor, 1, atLeast);
            XEvent event;
            while (XPending(m_display) > 0)
                XNextEvent(m_display, &event);
            if (Clock::now() > end)
                qFatal("not within its time: %s", what);
        }
    }

    /// A placement may consist of several requests; waits until no more events follow.
    void waitUntilQuiet()
    {
        constexpr int longEnough = 40; // in ms
        pollfd descriptor{ConnectionNumber(m_display), POLLIN, 0};
        while (XPending(m_display) > 0 || poll(&descriptor, 1, longEnough) > 0) {
            XEvent event;
            XNextEvent(m_display, &event);
        }
    }

    /// The message that wmctrl sends, and nothing else.
    void askWindowManager(const Place& place)
    {
        XEvent event{};
        event.xclient.type = ClientMessage;
        event.xclient.window = m_window;
        event.xclient.message_type = XInternAtom(m_display, "_NET_MOVERESIZE_WINDOW", False);
        event.xclient.format = 32;
        constexpr long all = 0xF00;
        event.xclient.data.l[0] = StaticGravity | all;
        event.xclient.data.l[1] = place.x;
        event.xclient.data.l[2] = place.y;
        event.xclient.data.l[3] = static_cast<long>(place.width);
        event.xclient.data.l[4] = static_cast<long>(place.height);
        XSendEvent(m_display, DefaultRootWindow(m_display), False,
                   SubstructureNotifyMask | SubstructureRedirectMask, &event);
        XFlush(m_display);
    }

    /// Returns the size of what the window manager draws above the window and to its left.
    std::pair<int, int> decorations()
    {
        const std::vector<unsigned long> extents = numbers(m_window, "_NET_FRAME_EXTENTS", XA_CARDINAL);
        return extents.size() < 4 ? std::pair(0, 0)
                                  : std::pair(static_cast<int>(extents[0]), static_cast<int>(extents[2]));
    }

private:
    bool isActive()
    {
        const auto active = numbers(DefaultRootWindow(m_display), "_NET_ACTIVE_WINDOW", XA_WINDOW);
        return !active.empty() && active.front() == m_window;
    }

    std::vector<unsigned long> numbers(Window window, const char* property, Atom kind)
    {
        Atom type = 0;
        int format = 0;
        unsigned long count = 0, left = 0;
        unsigned char* data = nullptr;
        XGetWindowProperty(m_display, window, XInternAtom(m_display, property, False), 0, 8, False, kind,
                           &type, &format, &count, &left, &data);
        const auto* values = reinterpret_cast<unsigned long*>(data);
        std::vector<unsigned long> found(values, values + (format == 32 ? count : 0));
        XFree(data);
        return found;
    }

    Display* m_display = XOpenDisplay(nullptr);
    Window m_window = 0;
};

enum class Half { left, right };

/// Causes a placement and returns when it began.
using Placement = std::function<Clock::time_point(Half)>;

class Bench {
public:
    Bench()
    {
        // The places of the halves are learned by using them.
        for (const Half half : {Half::left, Half::right}) {
            const Place before = m_target.place();
            pressShortcut(half);
            m_target.waitUntil("the first shortcut places it", [&] { return m_target.place() != before; });
            m_target.waitUntilQuiet();
            m_places[index(half)] = m_target.place();
        }
        if (m_places[0].x == m_places[1].x)
            qFatal("the halves aren't beside one another");
    }

    Clock::time_point byShortcut(Half half) { return pressShortcut(half); }

    Clock::time_point byMessage(Half half)
    {
        const auto begin = Clock::now();
        m_target.askWindowManager(m_places[index(half)]);
        return begin;
    }

    Clock::time_point byWmctrl(Half half)
    {
        const Place& place = m_places[index(half)];
        const auto [left, top] = m_target.decorations();
        std::string where = "0," + std::to_string(place.x - left) + "," + std::to_string(place.y - top) +
                            "," + std::to_string(place.width) + "," + std::to_string(place.height);
        char program[] = "wmctrl", select[] = "-r", active[] = ":ACTIVE:", edit[] = "-e";
        char* arguments[] = {program, select, active, edit, where.data(), nullptr};
        const auto begin = Clock::now();
        if (posix_spawnp(&m_process, program, nullptr, nullptr, arguments, environ) != 0)
            qFatal("wmctrl can't be started");
        return begin;
    }

    /// Returns the microseconds until the window is in its place.
    double measure(const char* name, const Placement& placement, Half half)
    {
        const auto begin = placement(half);
        m_target.waitUntil(name, [&] { return m_target.place() == m_places[index(half)]; });
        const double time = std::chrono::duration<double, std::micro>(Clock::now() - begin).count();
        if (m_process != 0)
            waitpid(std::exchange(m_process, 0), nullptr, 0);
        m_target.waitUntilQuiet();
        return time;
    }

private:
    static std::size_t index(Half half) { return static_cast<std::size_t>(half); }

    /// The shortcut acts when its key is released, so the time begins there.
    Clock::time_point pressShortcut(Half half)
    {
        const KeySym key = half == Half::left ? XK_1 : XK_2;
        for (const KeySym each : {KeySym(XK_Control_L), KeySym(XK_Alt_L), key})
            m_keyboard.send(each, true);
        const auto begin = Clock::now();
        m_keyboard.send(key, false);
        m_keyboard.send(XK_Alt_L, false);
        m_keyboard.send(XK_Control_L, false);
        return begin;
    }

    Program m_program;
    Keyboard m_keyboard;
    Target m_target;
    std::array<Place, 2> m_places;
    pid_t m_process = 0;
};

double quantile(std::vector<double>& times, double part)
{
    std::sort(times.begin(), times.end());
    return times.at(static_cast<std::size_t>(static_cast<double>(times.size() - 1) * part));
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const int times = QCoreApplication::arguments().value(1, QStringLiteral("200")).toInt();
    Bench bench;
    struct Subject {
        const char* name;
        Placement place;
        std::vector<double> times;
    };
    std::vector<Subject> subjects{
        {"bare message", [&](Half half) { return bench.byMessage(half); }, {}},
        {"wmctrl", [&](Half half) { return bench.byWmctrl(half); }, {}},
        {"shortcut", [&](Half half) { return bench.byShortcut(half); }, {}},
    };
    for (int i = 0; i < times; ++i) {
        for (Subject& subject : subjects) {
            for (const Half half : {Half::left, Half::right})
                subject.times.push_back(bench.measure(subject.name, subject.place, half));
        }
    }
    const double message = quantile(subjects[0].times, 0.5), wmctrl = quantile(subjects[1].times, 0.5);
    std::printf("%-14s %10s %10s %12s %10s\n", "", "median us", "p99 us", "of message", "of wmctrl");
    for (Subject& subject : subjects) {
        const double median = quantile(subject.times, 0.5);
        std::printf("%-14s %10.0f %10.0f %12.2f %10.2f\n", subject.name, median,
                    quantile(subject.times, 0.99), median / message, median / wmctrl);
    }
    std::printf("%zu placements each\n", subjects.front().times.size());
    return 0;
}
