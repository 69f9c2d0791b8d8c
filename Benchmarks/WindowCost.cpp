// Measures Orvane's window beside that of a bare Qt Widgets program, by turns in one run:
//   WindowCost [rounds]        time from the request to the first full frame, and memory with the window open
//                              and after it has been closed
//   WindowCost idle [seconds]  how often Orvane is woken once its window is closed
// Needs a desktop: Tools/desktop/session -- build/release/bin/WindowCost
#include "ProcessFigures.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <vector>

#include <xcb/xcb.h>

namespace {

constexpr int widthOfWindow = 940;
const QString busName = QStringLiteral("net.lindenrow.orvane");

struct Freed {
    void operator()(void* reply) const { std::free(reply); }
};
template <class T>
using Reply = std::unique_ptr<T, Freed>;

void turnFor(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

template <class Condition>
void waitFor(const char* what, Condition condition)
{
    QElapsedTimer clock;
    clock.start();
    while (!condition()) {
        if (clock.elapsed() > 20'000)
            qFatal("%s", what);
        turnFor(1);
    }
}

/// The windows of the display, from outside.
class Display {
public:
    Display() : m_connection(xcb_connect(nullptr, nullptr), &xcb_disconnect)
    {
        if (xcb_connection_has_error(connection()))
            qFatal("There is no X display to open");
        m_root = xcb_setup_roots_iterator(xcb_get_setup(connection())).data->root;
        m_pid = atom("_NET_WM_PID");
        m_close = atom("_NET_CLOSE_WINDOW");
    }

    /// Returns the visible window of this process; 0 when there is none.
    [[nodiscard]] xcb_window_t windowOf(qint64 pid) const
    {
        return search(m_root, static_cast<std::uint32_t>(pid));
    }

    /// Returns the pixels of two strips from top to bottom, one through the window's left part and one
    /// through its right. A toolkit brings a frame to the screen in one piece, so they represent all of it.
    [[nodiscard]] QByteArray strips(xcb_window_t window) const
    {
        constexpr int stripWidth = 12;
        QByteArray pixels;
        for (const int x : {60, widthOfWindow - 70}) {
            const auto cookie = xcb_get_image(connection(), XCB_IMAGE_FORMAT_Z_PIXMAP, window,
                                              static_cast<std::int16_t>(x), 20, stripWidth, 600, ~0u);
            const Reply<xcb_get_image_reply_t> image(xcb_get_image_reply(connection(), cookie, nullptr));
            if (image)
                pixels.append(reinterpret_cast<const char*>(xcb_get_image_data(image.get())),
                              xcb_get_image_data_length(image.get()));
        }
        return pixels;
    }

    /// Closes a window as a panel does.
    void close(xcb_window_t window) const
    {
        xcb_client_message_event_t event{};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = window;
        event.type = m_close;
        event.data.data32[1] = 2; // the request comes from the user's pager
        xcb_send_event(connection(), 0, m_root,
                       XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                       reinterpret_cast<const char*>(&event));
        xcb_flush(connection());
    }

private:
    [[nodiscard]] xcb_connection_t* connection() const { return m_connection.get(); }

    [[nodiscard]] xcb_atom_t atom(const char* name) const
    {
        const auto cookie =
            xcb_intern_atom(connection(), 0, static_cast<std::uint16_t>(std::strlen(name)), name);
        const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection(), cookie, nullptr));
        return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    }

    [[nodiscard]] xcb_window_t search(xcb_window_t parent, std::uint32_t pid) const
    {
        const Reply<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(connection(), xcb_query_tree(connection(), parent), nullptr));
        if (!tree)
            return 0;
        const xcb_window_t* children = xcb_query_tree_children(tree.get());
        for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
            if (isHomeOf(children[i], pid))
                return children[i];
            if (const xcb_window_t found = search(children[i], pid))
                return found;
        }
        return 0;
    }

    [[nodiscard]] bool isHomeOf(xcb_window_t window, std::uint32_t pid) const
    {
        const auto pidCookie = xcb_get_property(connection(), 0, window, m_pid, XCB_ATOM_CARDINAL, 0, 1);
        const auto stateCookie = xcb_get_window_attributes(connection(), window);
        const auto sizeCookie = xcb_get_geometry(connection(), window);
        const Reply<xcb_get_property_reply_t> owner(xcb_get_property_reply(connection(), pidCookie, nullptr));
        const Reply<xcb_get_window_attributes_reply_t> state(
            xcb_get_window_attributes_reply(connection(), stateCookie, nullptr));
        const Reply<xcb_get_geometry_reply_t> size(xcb_get_geometry_reply(connection(), sizeCookie, nullptr));
        std::uint32_t found = 0;
        if (owner && xcb_get_property_value_length(owner.get()) == sizeof found)
            std::memcpy(&found, xcb_get_property_value(owner.get()), sizeof found);
        return found == pid && state && state->map_state == XCB_MAP_STATE_VIEWABLE && size &&
               size->width == widthOfWindow;
    }

    std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> m_connection;
    xcb_window_t m_root = 0;
    xcb_atom_t m_pid = 0, m_close = 0;
};

enum class Program { orvane, bare };

class Process {
public:
    explicit Process(Program program) : m_program(program)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_home.path());
        QDir(m_home.path()).mkpath(QStringLiteral("orvane"));
        QFile defaults(m_home.filePath(QStringLiteral("orvane/defaults.json")));
        if (defaults.open(QIODevice::WriteOnly))
            defaults.write("{\"hasOnboarded\": true}\n");
        defaults.close();
        m_process.setProcessEnvironment(environment);
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(program == Program::orvane ? QStringLiteral(ORVANE_PROGRAM)
                                                   : QStringLiteral(BARE_WINDOW_PROGRAM),
                        {});
        waitFor("The program doesn't get ready", [&] { return isReady(); });
        turnFor(1500); // what is done after the start doesn't belong to the window's cost
    }

    ~Process()
    {
        m_process.terminate();
        if (!m_process.waitForFinished(5000))
            m_process.kill();
        m_process.waitForFinished();
    }

    [[nodiscard]] qint64 pid() const { return m_process.processId(); }

    void requestWindow()
    {
        if (m_program == Program::bare) {
            m_process.write("\n");
            m_process.waitForBytesWritten();
            return;
        }
        QDBusMessage call = QDBusMessage::createMethodCall(busName, QStringLiteral("/net/lindenrow/orvane"),
                                                           QStringLiteral("org.freedesktop.Application"),
                                                           QStringLiteral("Activate"));
        call << QVariantMap();
        QDBusConnection::sessionBus().send(call);
    }

    /// Returns megabytes.
    [[nodiscard]] double memory(const char* field) const
    {
        return processFigures::kilobytes(pid(), field) / 1024;
    }
    [[nodiscard]] std::map<QByteArray, long> switches() const { return processFigures::switches(pid()); }

private:
    bool isReady()
    {
        if (m_program == Program::bare)
            return m_process.bytesAvailable() > 0;
        return QDBusConnection::sessionBus().interface()->servicePid(busName).value() == pid();
    }

    Program m_program;
    QTemporaryDir m_home;
    QProcess m_process;
};

/// Asks for the window and returns the milliseconds until it first had its final pixels.
double open(Process& process, const Display& display)
{
    constexpr int settled = 1000;
    QElapsedTimer clock;
    clock.start();
    process.requestWindow();
    xcb_window_t window = 0;
    waitFor("No window came", [&] { return (window = display.windowOf(process.pid())) != 0; });
    QByteArray last;
    double since = 0;
    for (;;) {
        const QByteArray now = display.strips(window);
        const double time = static_cast<double>(clock.nsecsElapsed()) / 1e6;
        if (now != last) {
            last = now;
            since = time;
        } else if (time - since > settled) {
            return since;
        }
        turnFor(1);
    }
}

void close(Process& process, const Display& display)
{
    display.close(display.windowOf(process.pid()));
    waitFor("The window doesn't close", [&] { return display.windowOf(process.pid()) == 0; });
    turnFor(1500);
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

int cost(int rounds)
{
    const Display display;
    struct Figures {
        std::vector<double> first, again, resident, opened, closed, dirty;
    };
    std::map<Program, Figures> all;
    for (int round = 0; round < rounds + 1; ++round) {
        for (const Program program : {Program::orvane, Program::bare}) {
            Process process(program);
            const double first = open(process, display);
            const double resident = process.memory("Rss");
            const double opened = process.memory("Pss");
            const double dirty = process.memory("Private_Dirty");
            close(process, display);
            const double closed = process.memory("Pss");
            const double again = open(process, display);
            if (round == 0)
                continue; // the first round warms the page cache
            Figures& figures = all[program];
            figures.first.push_back(first);
            figures.again.push_back(again);
            figures.resident.push_back(resident);
            figures.opened.push_back(opened);
            figures.dirty.push_back(dirty);
            figures.closed.push_back(closed);
        }
    }
    const auto report = [&](const char* what, std::vector<double> Figures::*which, const char* unit) {
        const double ours = median(all[Program::orvane].*which);
        const double theirs = median(all[Program::bare].*which);
        std::printf("%-24s Orvane %7.1f %s   bare %7.1f %s   ratio %.2f\n", what, ours, unit, theirs, unit,
                    ours / theirs);
    };
    report("first time", &Figures::first, "ms");
    report("each time after", &Figures::again, "ms");
    report("open, RSS", &Figures::resident, "MB");
    report("open, PSS", &Figures::opened, "MB");
    report("open, private dirty", &Figures::dirty, "MB");
    report("closed, PSS", &Figures::closed, "MB");
    return 0;
}

int idle(int seconds)
{
    const Display display;
    Process process(Program::orvane);
    open(process, display);
    close(process, display);
    turnFor(40'000); // the threads of the toolkit's pool end half a minute after their last work
    auto before = process.switches();
    turnFor(seconds * 1000);
    long total = 0;
    for (const auto& [thread, count] : process.switches()) {
        const long woken = count - before[thread];
        before.erase(thread);
        std::printf("%-28s woken %ld times\n", thread.constData(), woken);
        total += woken;
    }
    for (const auto& [thread, count] : before)
        std::printf("%-28s ended, woken %ld times before\n", thread.constData(), count);
    std::printf("woken %ld times in %d s with the window closed\n", total, seconds);
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QStringLiteral("idle"))
        return idle(arguments.value(2, QStringLiteral("30")).toInt());
    return cost(arguments.value(1, QStringLiteral("7")).toInt());
}
