// Measures the image resizer beside two other programs, by turns in one run, and the program while it
// resizes:
//   ResizeBeside FOLDER [rounds]   FOLDER holds JPEG files, as `Benchmarks/make-photographs` makes them
// Needs a desktop with a panel, vipsthumbnail and mogrify. The whole of Orvane is measured: the files are
// dragged into the resizer's window, and its button is clicked.
#include "MainThreadProbe.h"
#include "ProcessFigures.h"

#include "Desktop/Support/AccessibleTree.h"
#include "Desktop/Support/FileWindow.h"
#include "Desktop/Support/Hardware.h"
#include "Desktop/Support/Program.h"
#include "Desktop/Support/Tray.h"
#include "Desktop/Support/Windows.h"
#include "Support/Eventually.h"

#include <QGuiApplication>
#include <QProcess>
#include <QTemporaryDir>

#include <array>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

namespace {

using namespace orvane::tests;
using namespace std::chrono_literals;
using Seconds = std::chrono::duration<double>;

void require(bool isSo, const char* otherwise)
{
    if (!isSo)
        qFatal("%s", otherwise);
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

/// In megabytes.
double peakMemory(qint64 pid)
{
    QFile status(QStringLiteral("/proc/%1/status").arg(pid));
    if (status.open(QFile::ReadOnly)) {
        for (const QByteArray& line : status.readAll().split('\n')) {
            if (line.startsWith("VmHWM:"))
                return line.simplified().split(' ').value(1).toDouble() / 1024;
        }
    }
    return 0;
}

std::optional<qint64> workerOf(qint64 pid)
{
    const QDir tasks(QStringLiteral("/proc/%1/task").arg(pid));
    for (const QString& task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile children(tasks.filePath(task + QStringLiteral("/children")));
        if (!children.open(QFile::ReadOnly))
            continue;
        for (const QByteArray& child : children.readAll().simplified().split(' ')) {
            QFile name(QStringLiteral("/proc/%1/comm").arg(child.toLongLong()));
            if (name.open(QFile::ReadOnly) && name.readAll().trimmed() == "orvane-worker")
                return child.toLongLong();
        }
    }
    return std::nullopt;
}

struct Figures {
    double seconds = 0;
    double memory = 0; // megabytes at the most
};

/// The program with the files in the resizer's window.
class Resizer {
public:
    Resizer(const QDir& folder, qsizetype count) : m_folder(folder), m_count(count)
    {
        require(m_program.waitUntilReady(), "Orvane doesn't start");
        require(eventually(30s,
                           [this] {
                               for (const char* key : {"Control_L", "Alt_L", "r"})
                                   m_hardware.press(key);
                               for (const char* key : {"r", "Alt_L", "Control_L"})
                                   m_hardware.release(key);
                               return eventually(1s, [this] { return window().has_value(); });
                           }),
                "The window doesn't open");
        dropFiles();
    }

    /// The time is from the click until the last copy has its name.
    Figures resizeAll()
    {
        startAll();
        const auto start = std::chrono::steady_clock::now();
        awaitAll([] {});
        const double seconds = Seconds(std::chrono::steady_clock::now() - start).count();
        const auto worker = workerOf(m_program.pid());
        return {seconds, peakMemory(m_program.pid()) + (worker ? peakMemory(*worker) : 0)};
    }

    /// The same, not timed, as the watching takes time too: what the batch costs the program itself.
    void watchAll()
    {
        const qint64 pid = m_program.pid();
        const auto own = [pid] { return processFigures::kilobytes(pid, "Private_Dirty") / 1024; };
        const TrayItem item = m_tray.itemsOf(pid).value(0);
        const double before = own();
        double most = before;
        MainThreadProbe probe(pid, item.service, item.path);
        startAll();
        awaitAll([&] { most = std::max(most, own()); });
        const auto answers = probe.finish();
        std::printf("private memory of the program: %.1f MB before, %.1f MB at most, %.1f MB after\n", before,
                    most, own());
        std::printf(
            "its main thread answered %ld times: median %.2f ms, at most %.1f ms, of it %.1f ms with a "
            "processor; it was busy for %.1f ms at most\n",
            answers.answers, answers.median, answers.longest, answers.longestOfOwn, answers.busiest);
    }

    void removeCopies()
    {
        for (const QString& copy : copies())
            QFile::remove(m_folder.filePath(copy));
    }

private:
    [[nodiscard]] QStringList copies() const
    {
        return m_folder.entryList({QStringLiteral("*(Medium)*")}, QDir::Files);
    }
    void startAll()
    {
        require(eventually(60s,
                           [this] {
                               const auto resize = button();
                               return resize && resize->isEnabled();
                           }),
                "The button can't be clicked");
        m_hardware.click(button()->place.center());
    }
    void awaitAll(const std::function<void()>& look)
    {
        require(eventually(1800s,
                           [&] {
                               look();
                               return copies().size() == m_count;
                           }),
                "The batch doesn't end");
    }
    static Program::Start start()
    {
        return {.defaults = QByteArray(
                    R"({"Orvane.enabledCapabilities": {"net.lindenrow.orvane.imageresizer": true},
                        "KeyboardShortcuts_imageresizer.open": "{\"carbonKeyCode\":15,\"carbonModifiers\":6144}"})"),
                .firstRun = Program::FirstRun::done};
    }
    /// Drags all files out of the file manager.
    void dropFiles()
    {
        // From the corner of its window to the first file, with or without the bar that warns root.
        constexpr QPoint firstFile(219, 172);
        const FileWindow files(m_folder.path(), m_hardware);
        const auto place = [this](WindowId shown, QPoint corner) {
            QProcess::execute(QStringLiteral("wmctrl"),
                              {QStringLiteral("-i"), QStringLiteral("-r"), QString::number(shown),
                               QStringLiteral("-e"),
                               QStringLiteral("0,%1,%2,-1,-1").arg(corner.x()).arg(corner.y())});
            require(
                eventually(10s,
                           [&] { return (m_windows.frame(shown).topLeft() - corner).manhattanLength() < 4; }),
                "A window doesn't move");
        };
        place(*window(), {760, 60});
        const auto manager = m_windows.find(m_folder.dirName() + QStringLiteral(" - Thunar"));
        require(manager.has_value(), "The file manager's window isn't there");
        place(*manager, {20, 60});
        const QPoint from = m_windows.frame(*manager).topLeft() + firstFile;
        const QPoint to = m_windows.geometry(*window()).center() - QPoint(0, 120);
        require(eventually(120s,
                           [&] {
                               m_hardware.click(from);
                               m_hardware.press("Control_L");
                               m_hardware.tap("a");
                               m_hardware.release("Control_L");
                               drag(from, to);
                               return eventually(5s, [this] { return button().has_value(); });
                           }),
                "The files aren't taken");
    }
    /// In many small motions, the last ones about the target: both programs answer each other between them.
    void drag(QPoint from, QPoint to)
    {
        constexpr int steps = 30;
        m_hardware.press(Button::left);
        int motion = 0;
        (void)eventually(60s, [&] {
            ++motion;
            m_hardware.movePointer(from + (to - from) * std::min(motion, steps) / steps +
                                   QPoint(motion % 2, 0));
            return motion == 2 * steps;
        });
        m_hardware.release(Button::left);
    }
    [[nodiscard]] std::optional<WindowId> window() const
    {
        return m_windows.find(QStringLiteral("Image Resizer"));
    }
    [[nodiscard]] std::optional<AccessibleNode> button() const
    {
        return AccessibleTree(m_program.pid())
            .find("push button", QStringLiteral("Resize %1 Images").arg(m_count));
    }

    QDir m_folder;
    qsizetype m_count;
    Hardware m_hardware;
    Windows m_windows;
    Tray m_tray;
    Program m_program{start()};
};

/// Runs another program to its end.
Figures run(const QStringList& command)
{
    std::vector<std::string> words;
    for (const QString& word : command)
        words.push_back(word.toStdString());
    std::vector<char*> arguments;
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    const auto start = std::chrono::steady_clock::now();
    pid_t process = 0;
    require(::posix_spawnp(&process, arguments[0], nullptr, nullptr, arguments.data(), environ) == 0,
            "A program isn't installed");
    int status = 0;
    rusage usage{};
    require(::wait4(process, &status, 0, &usage) == process && status == 0, "A program has failed");
    return {Seconds(std::chrono::steady_clock::now() - start).count(),
            static_cast<double>(usage.ru_maxrss) / 1024};
}

void print(const char* name, const std::vector<Figures>& rounds)
{
    std::vector<double> seconds;
    double memory = 0;
    for (const Figures& round : rounds) {
        seconds.push_back(round.seconds);
        memory = std::max(memory, round.memory);
    }
    std::printf("%-14s %7.1f s, %4.0f MB\n", name, median(seconds), memory);
}

double medianRatio(const std::vector<Figures>& ours, const std::vector<Figures>& theirs)
{
    std::vector<double> ratios;
    for (std::size_t i = 0; i < ours.size(); ++i)
        ratios.push_back(ours[i].seconds / theirs[i].seconds);
    return median(ratios);
}

} // namespace

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QDir folder(QDir(arguments.value(1)).absolutePath());
    const int rounds = arguments.value(2, QStringLiteral("3")).toInt();
    const QStringList names = folder.entryList({QStringLiteral("*.jpg")}, QDir::Files);
    require(names.size() > 1 && rounds > 0, "usage: ResizeBeside FOLDER [rounds]");
    QStringList paths;
    for (const QString& name : names)
        paths.append(folder.filePath(name));

    Resizer resizer(folder, names.size());
    resizer.watchAll();
    resizer.removeCopies();
    std::array<std::vector<Figures>, 3> figures;
    for (int round = 0; round < rounds; ++round) {
        figures[0].push_back(resizer.resizeAll());
        resizer.removeCopies();
        const QTemporaryDir vips(folder.filePath(QStringLiteral("vips")));
        figures[1].push_back(
            run(QStringList{QStringLiteral("vipsthumbnail"), QStringLiteral("--size"),
                            QStringLiteral("1366x768>"), QStringLiteral("--no-rotate"), QStringLiteral("-o"),
                            vips.filePath(QStringLiteral("%s.jpg[Q=85,strip]"))} +
                paths));
        const QTemporaryDir magick(folder.filePath(QStringLiteral("magick")));
        figures[2].push_back(
            run(QStringList{QStringLiteral("mogrify"), QStringLiteral("-resize"), QStringLiteral("1366x768>"),
                            QStringLiteral("-quality"), QStringLiteral("85"), QStringLiteral("-strip"),
                            QStringLiteral("-path"), magick.path()} +
                paths));
        std::fflush(stdout);
    }
    std::printf("\n%d files, medians of %d rounds, and the most memory\n", static_cast<int>(names.size()),
                rounds);
    print("Orvane", figures[0]);
    print("vipsthumbnail", figures[1]);
    print("mogrify", figures[2]);
    std::printf("of vipsthumbnail %.2f, of mogrify %.2f\n", medianRatio(figures[0], figures[1]),
                medianRatio(figures[0], figures[2]));
    return 0;
}
