// Measures the clipboard history from outside, with 10,000 entries in its list:
//   ClipboardCost panel [rounds]   from the hot key to the panel's first full frame, and from a key in its
//                                  search to the list's last change; memory
//   ClipboardCost idle [seconds]   how often it is woken while nothing is copied
// Needs the private desktop's hardware keyboard: Tools/desktop/session -- build/release/bin/ClipboardCost
// panel
#include "ClipboardProcess.h"

#include "Desktop/Support/Hardware.h"
#include "Desktop/Support/Screen.h"
#include "Desktop/Support/Tray.h"

#include <QCoreApplication>
#include <QPoint>

#include <cstdio>
#include <cstring>
#include <optional>

namespace {

using namespace clipboardProcess;
using orvane::tests::Hardware;
using orvane::tests::Screen;

constexpr int manyEntries = 10'000;

void waitForStatusItem(const Orvane& program)
{
    waitFor("the status item isn't there",
            [&] { return !orvane::tests::Tray().itemsOf(program.pid()).isEmpty(); });
    turnFor(5000); // the list has been read by then
}

class Panel {
public:
    explicit Panel(const Orvane& program) : m_program(program) { m_hardware.movePointer(place); }

    /// Returns milliseconds from the release of the hot key, at which the panel opens.
    double open()
    {
        m_hardware.press("Control_L");
        m_hardware.press("Alt_L");
        m_hardware.press("v");
        m_hardware.release("Control_L");
        m_hardware.release("Alt_L");
        const QByteArray before = pixels();
        m_hardware.release("v");
        return settled(before);
    }
    double type(const char* key)
    {
        const QByteArray before = pixels();
        m_hardware.tap(key);
        return settled(before);
    }
    void close()
    {
        m_hardware.tap("Escape");
        waitFor("the panel doesn't close", [&] { return m_screen.windowsOf(m_program.pid()).isEmpty(); });
        turnFor(1000); // the desktop paints what was behind the panel
    }

private:
    static constexpr QPoint place{300, 200};

    /// The pixels of the list only: the search field above it has a blinking caret.
    [[nodiscard]] QByteArray pixels() const
    {
        const QImage list = m_screen.picture(QRect(place + QPoint(20, 60), QSize(320, 340)));
        return QByteArray(reinterpret_cast<const char*>(list.constBits()), list.sizeInBytes());
    }
    /// Returns when the pixels last changed, from now on.
    [[nodiscard]] double settled(QByteArray last) const
    {
        constexpr double still = 700;
        QElapsedTimer clock;
        clock.start();
        std::optional<double> since;
        for (;;) {
            const QByteArray now = pixels();
            const double time = milliseconds(clock);
            if (now != last) {
                last = now;
                since = time;
            } else if (since && time - *since > still) {
                return *since;
            }
            if (time > 20'000)
                qFatal("nothing changes in the panel");
        }
    }

    const Orvane& m_program;
    Screen m_screen;
    Hardware m_hardware;
};

void print(const char* what, const std::vector<double>& values)
{
    std::printf("%-34s median %7.1f ms   longest %7.1f ms   of %zu\n", what, median(values),
                *std::max_element(values.begin(), values.end()), values.size());
}

int panel(int rounds)
{
    std::vector<double> first, again, letters;
    double closed = 0, opened = 0;
    for (int round = 0; round < rounds; ++round) {
        Orvane program(manyEntries, manyEntries,
                       ", \"KeyboardShortcuts_clipboardhistory.show\": "
                       "\"{\\\"carbonKeyCode\\\":9,\\\"carbonModifiers\\\":6144}\"");
        program.start();
        waitForStatusItem(program);
        closed = processFigures::kilobytes(program.pid(), "Pss") / 1024;
        Panel shown(program);
        first.push_back(shown.open());
        opened = processFigures::kilobytes(program.pid(), "Pss") / 1024;
        // Each key narrows the list to other rows.
        for (const char* key : {"9", "8", "7"})
            letters.push_back(shown.type(key));
        shown.close();
        for (int i = 0; i < 3; ++i) {
            again.push_back(shown.open());
            shown.close();
        }
    }
    print("hot key to first frame, first time", first);
    print("each time after", again);
    print("key of the search to its rows", letters);
    std::printf("%-34s %.1f MB, with the panel %.1f MB\n", "memory (PSS), 10,000 texts", closed, opened);
    return 0;
}

int idle(int seconds)
{
    Orvane program(manyEntries, manyEntries);
    program.start();
    waitForStatusItem(program);
    turnFor(40'000); // the threads of the toolkit's pool end half a minute after their last work
    const auto before = processFigures::switches(program.pid());
    turnFor(seconds * 1000);
    long total = 0;
    for (const auto& [thread, count] : processFigures::switches(program.pid())) {
        const auto earlier = before.find(thread);
        const long woken = count - (earlier != before.end() ? earlier->second : 0);
        std::printf("%-28s woken %ld times\n", thread.constData(), woken);
        total += woken;
    }
    std::printf("woken %ld times in %d s\n", total, seconds);
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QStringLiteral("panel"))
        return panel(arguments.value(2, QStringLiteral("5")).toInt());
    if (arguments.value(1) == QStringLiteral("idle"))
        return idle(arguments.value(2, QStringLiteral("30")).toInt());
    std::fprintf(stderr, "usage: ClipboardCost panel [rounds] | idle [seconds]\n");
    return 2;
}
