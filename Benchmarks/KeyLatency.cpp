// The time of a key from the hardware to an application, in one run: without a tap, with the least possible
// one (BareKeyTap), and with the tap of Ctrl Shortcuts.
// Tools/desktop/session -- build/release/bin/KeyLatency [keys [another build of the program]]
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
#include <functional>
#include <memory>
#include <vector>

#include <sys/timerfd.h>
#include <unistd.h>

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/extensions/XInput.h>
#include <X11/extensions/XTest.h>

namespace {

using Clock = std::chrono::steady_clock;

/// A program between the keyboard and the applications; it ends with the object.
class Tap {
public:
    virtual ~Tap() = default;
    /// Returns the microseconds of processor time that the tap has taken so far.
    [[nodiscard]] virtual double cost() const { return 0; }
};

/// Returns the processor time of all threads of a process, in microseconds.
double processorTime(qint64 process)
{
    double sum = 0;
    const QDir threads(QStringLiteral("/proc/%1/task").arg(process));
    for (const QString& thread : threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile times(threads.filePath(thread + QStringLiteral("/schedstat")));
        if (times.open(QIODevice::ReadOnly))
            sum += times.readAll().split(' ').first().toDouble() / 1000;
    }
    return sum;
}

/// The program with or without the feature.
class Program : public Tap {
public:
    Program(const QString& path, bool tapped)
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
        m_process.start(path, {});
        // The program logs when its tap is in place; without one there is nothing to wait for.
        while (tapped && !m_output.contains("Keyboard remapping active")) {
            if (!m_process.waitForReadyRead(20'000))
                qFatal("the tap doesn't stand: %s", m_output.constData());
            m_output += m_process.readAll();
        }
    }

    ~Program() override
    {
        m_process.terminate();
        m_process.waitForFinished();
    }

    [[nodiscard]] double cost() const override { return processorTime(m_process.processId()); }

private:
    QTemporaryDir m_home;
    QProcess m_process;
    QByteArray m_output;
};

class BareTap : public Tap {
public:
    explicit BareTap(const QStringList& arguments)
    {
        m_process.start(QStringLiteral(ORVANE_BARE_TAP), arguments);
        if (!m_process.waitForReadyRead() || !m_process.readAll().startsWith("ready"))
            qFatal("the bare tap doesn't stand: %s", m_process.readAllStandardError().constData());
    }
    ~BareTap() override
    {
        m_process.closeWriteChannel();
        m_process.waitForFinished();
    }

    [[nodiscard]] double cost() const override { return processorTime(m_process.processId()); }

private:
    QProcess m_process;
};

/// Puts pauses between the keys, in which all threads go to sleep.
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

    /// Returns the microseconds until the application has the event.
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

    /// Returns the milliseconds between the repeats of a key that is held.
    std::vector<double> hold(unsigned key, int repeats)
    {
        std::vector<double> intervals;
        send(key, true);
        auto last = Clock::now();
        for (int i = 0; i <= repeats; ++i) {
            XEvent event;
            XWindowEvent(m_application, m_window, KeyPressMask, &event);
            const auto now = Clock::now();
            if (i > 0) // the first repeat comes after the delay
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
    std::vector<double> cost;
};

enum class Holds { no, yes };

void measure(const std::function<std::unique_ptr<Tap>()>& make, int keys, Holds holds, Times& times)
{
    const auto tap = make();
    Keyboard keyboard;
    constexpr int unmeasured = 50;
    double before = 0;
    for (int i = 0; i < keys + unmeasured; ++i) {
        if (i == unmeasured)
            before = tap->cost();
        const unsigned key = 38 + static_cast<unsigned>(i % 8);
        for (const bool down : {true, false}) {
            const double time = keyboard.send(key, down);
            if (i >= unmeasured)
                times.latency.push_back(time);
        }
    }
    times.cost.push_back((tap->cost() - before) / (2.0 * keys));
    if (holds == Holds::no)
        return;
    const auto repeats = keyboard.hold(38, 20);
    times.repeat.insert(times.repeat.end(), repeats.begin(), repeats.end());
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
    const QStringList arguments = QCoreApplication::arguments();
    const int keys = arguments.value(1, QStringLiteral("2000")).toInt();
    const QString program = QStringLiteral(ORVANE_PROGRAM);
    struct Subject {
        const char* name;
        std::function<std::unique_ptr<Tap>()> make;
        Times times;
    };
    std::vector<Subject> subjects{
        {"tap off", [&] { return std::make_unique<Program>(program, false); }, {}},
        {"bare tap", [] { return std::make_unique<BareTap>(QStringList()); }, {}},
        {"bare tap, two threads",
         [] { return std::make_unique<BareTap>(QStringList{QStringLiteral("hand-over")}); },
         {}},
        {"tap on", [&] { return std::make_unique<Program>(program, true); }, {}},
    };
    if (arguments.size() > 2)
        subjects.push_back(
            {"tap on, other build", [&] { return std::make_unique<Program>(arguments.at(2), true); }, {}});
    // The turns alternate often, so that other work on the machine is shared by all kinds.
    constexpr int rounds = 10;
    for (int round = 0; round < rounds; ++round) {
        for (Subject& subject : subjects)
            measure(subject.make, keys / rounds, round == 0 ? Holds::yes : Holds::no, subject.times);
    }
    const double untapped = quantile(subjects.front().times.latency, 0.5);
    std::printf("%-22s %9s %9s %6s %14s %12s\n", "", "median us", "p99 us", "ratio", "its cpu us/ev",
                "repeat ms");
    for (Subject& subject : subjects) {
        Times& times = subject.times;
        const double median = quantile(times.latency, 0.5);
        std::printf("%-22s %9.0f %9.0f %6.2f %14.0f %12.1f\n", subject.name, median,
                    quantile(times.latency, 0.99), median / untapped, quantile(times.cost, 0.5),
                    quantile(times.repeat, 0.5));
    }
    std::printf("%zu events each\n", subjects.front().times.latency.size());
    return 0;
}
