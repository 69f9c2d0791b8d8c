// Time of a key from the hardware to an application, with the tap of Ctrl Shortcuts on beside off, in one
// run:
//   Tools/desktop/session -- build/bench/bin/KeyLatency [keys]
// Needs the private desktop's hardware keyboard "testkbd".
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include <sys/timerfd.h>
#include <unistd.h>

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/extensions/XInput.h>
#include <X11/extensions/XTest.h>

namespace {

using Clock = std::chrono::steady_clock;

/// The built program with or without the feature, until its end.
class Program {
public:
    explicit Program(bool tapped)
    {
        QDir(m_home.path()).mkpath(QStringLiteral("orvane"));
        QFile defaults(m_home.filePath(QStringLiteral("orvane/defaults.json")));
        if (defaults.open(QIODevice::WriteOnly)) {
            defaults.write("{\"hasOnboarded\": true, \"Orvane.enabledCapabilities\": "
                           "{\"net.lindenrow.orvane.keyswap\": ");
            defaults.write(tapped ? "true" : "false");
            defaults.write("}}\n");
        }
        defaults.close();
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_home.path());
        m_process.setProcessEnvironment(environment);
        m_process.setProcessChannelMode(QProcess::MergedChannels);
        m_process.start(QStringLiteral(ORVANE_PROGRAM), {});
        // The program says so when its tap stands; without one there is nothing to wait for.
        while (tapped && !m_output.contains("Keyboard remapping active")) {
            if (!m_process.waitForReadyRead(20'000))
                qFatal("the tap doesn't stand: %s", m_output.constData());
            m_output += m_process.readAll();
        }
    }

    ~Program()
    {
        m_process.terminate();
        m_process.waitForFinished();
    }

private:
    QTemporaryDir m_home;
    QProcess m_process;
    QByteArray m_output;
};

/// Keys come with pauses between them, in which everybody has gone to sleep.
class Pace {
public:
    Pace() : m_timer(timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC))
    {
        constexpr timespec period{0, 4'000'000};
        const itimerspec times{period, period};
        timerfd_settime(m_timer, 0, &times, nullptr);
    }
    ~Pace() { close(m_timer); }
    void wait() const
    {
        std::uint64_t ticks = 0;
        [[maybe_unused]] const auto count = read(m_timer, &ticks, sizeof ticks);
    }

private:
    int m_timer;
};

class Keyboard {
public:
    Keyboard()
    {
        int count = 0;
        XDeviceInfo* devices = XListInputDevices(m_hardware, &count);
        for (int i = 0; i < count; ++i) {
            if (std::strcmp(devices[i].name, "testkbd") == 0)
                m_device = XOpenDevice(m_hardware, devices[i].id);
        }
        XFreeDeviceList(devices);
        if (!m_device)
            qFatal("there is no test keyboard");
        XSetWindowAttributes attributes{};
        attributes.override_redirect = True;
        m_window = XCreateWindow(m_application, DefaultRootWindow(m_application), 0, 0, 50, 50, 0,
                                 CopyFromParent, InputOutput, nullptr, CWOverrideRedirect, &attributes);
        XSelectInput(m_application, m_window, KeyPressMask | KeyReleaseMask | ExposureMask);
        XMapRaised(m_application, m_window);
        XEvent event;
        XWindowEvent(m_application, m_window, ExposureMask, &event);
        XSetInputFocus(m_application, m_window, RevertToParent, CurrentTime);
        XkbSetDetectableAutoRepeat(m_application, True, nullptr);
        XSync(m_application, False);
    }

    ~Keyboard()
    {
        XCloseDisplay(m_application);
        XCloseDisplay(m_hardware);
    }

    /// Microseconds until the application has the event.
    double send(unsigned key, bool down)
    {
        m_pace.wait();
        const auto start = Clock::now();
        XTestFakeDeviceKeyEvent(m_hardware, m_device, key, down ? True : False, nullptr, 0, CurrentTime);
        XFlush(m_hardware);
        XEvent event;
        XWindowEvent(m_application, m_window, KeyPressMask | KeyReleaseMask, &event);
        return std::chrono::duration<double, std::micro>(Clock::now() - start).count();
    }

    /// Milliseconds between the repeats of a key that is held.
    std::vector<double> hold(unsigned key, int repeats)
    {
        std::vector<double> intervals;
        send(key, true);
        auto last = Clock::now();
        for (int i = 0; i <= repeats; ++i) {
            XEvent event;
            XWindowEvent(m_application, m_window, KeyPressMask, &event);
            const auto now = Clock::now();
            if (i > 0) // the first comes after the delay
                intervals.push_back(std::chrono::duration<double, std::milli>(now - last).count());
            last = now;
        }
        send(key, false);
        return intervals;
    }

private:
    Display* m_hardware = XOpenDisplay(nullptr);
    Display* m_application = XOpenDisplay(nullptr);
    Pace m_pace;
    XDevice* m_device = nullptr;
    Window m_window = 0;
};

struct Times {
    std::vector<double> latency;
    std::vector<double> repeat;

    void append(const Times& more)
    {
        latency.insert(latency.end(), more.latency.begin(), more.latency.end());
        repeat.insert(repeat.end(), more.repeat.begin(), more.repeat.end());
    }
};

Times measure(bool tapped, int keys)
{
    const Program program(tapped);
    Keyboard keyboard;
    Times times;
    for (int i = 0; i < keys; ++i) {
        const unsigned key = 38 + static_cast<unsigned>(i % 8);
        for (const bool down : {true, false}) {
            const double time = keyboard.send(key, down);
            if (i >= 50)
                times.latency.push_back(time);
        }
    }
    times.repeat = keyboard.hold(38, 20);
    return times;
}

double quantile(std::vector<double>& times, double part)
{
    std::sort(times.begin(), times.end());
    return times.at(static_cast<std::size_t>(static_cast<double>(times.size() - 1) * part));
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const int keys = QCoreApplication::arguments().value(1, QStringLiteral("2000")).toInt();
    std::map<bool, Times> times;
    for (int round = 0; round < 3; ++round) {
        for (const bool tapped : {false, true}) {
            times[tapped].append(measure(tapped, keys));
        }
    }
    for (const bool tapped : {false, true}) {
        std::printf("%-8s median %5.0f us   p99 %5.0f us   (%zu events)   a held key repeats each %.1f ms\n",
                    tapped ? "tap on" : "tap off", quantile(times[tapped].latency, 0.5),
                    quantile(times[tapped].latency, 0.99), times[tapped].latency.size(),
                    quantile(times[tapped].repeat, 0.5));
    }
    std::printf("ratio of the medians %.2f\n",
                quantile(times[true].latency, 0.5) / quantile(times[false].latency, 0.5));
    return 0;
}
