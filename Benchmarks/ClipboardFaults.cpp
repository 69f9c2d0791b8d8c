// Measures how long the main thread lets others wait while the clipboard and the history's files misbehave,
// and checks that a copy made after it is captured:
// Tools/desktop/session -- build/release/bin/ClipboardFaults
// The first line of the result is for comparison: nothing happens there.
#include "ClipboardProcess.h"
#include "MainThreadProbe.h"

#include "Contract/Support/SelectionOwner.h"
#include "Desktop/Support/Peer.h"
#include "Desktop/Support/Tray.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QImage>

#include <cstdio>
#include <functional>
#include <memory>

namespace {

using namespace clipboardProcess;
using orvane::tests::SelectionOwner;
using Manner = SelectionOwner::Manner;

constexpr int second = 1000;

orvane::tests::TrayItem statusItem(const Orvane& program)
{
    orvane::tests::TrayItem found;
    waitFor("the status item isn't there", [&] {
        for (const orvane::tests::TrayItem& item : orvane::tests::Tray().itemsOf(program.pid())) {
            if (item.toolTip == QStringLiteral("Orvane"))
                found = item;
        }
        return !found.path.isEmpty();
    });
    return found;
}

/// True if a copy made now gets into the list on the disk.
bool captures(const Orvane& program)
{
    static int number = 0;
    const QString text = QStringLiteral("afterwards %1").arg(++number);
    orvane::tests::setClipboardText(text);
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < qint64(40) * second) {
        if (program.history().contains(text.toUtf8()))
            return true;
        turnFor(20);
    }
    return false;
}

void report(const char* what, const MainThreadProbe::Figures& figures, bool works)
{
    std::printf("%-30s longest %6.1f ms   less waiting %6.1f ms   busy %5.1f ms   median %4.2f ms   "
                "%5ld answers   %s\n",
                what, figures.longest, figures.longestOfOwn, figures.busiest, figures.median, figures.answers,
                works ? "captures on" : "CAPTURES NO MORE");
    std::fflush(stdout);
}

void measure(const char* what, Orvane& program, const std::function<void()>& fault)
{
    const auto item = statusItem(program);
    MainThreadProbe probe(program.pid(), item.service, item.path);
    fault();
    const auto figures = probe.finish();
    report(what, figures, program.isRunning() && captures(program));
}

void withOwner(const char* what, Orvane& program, const QMap<QByteArray, QByteArray>& data, Manner manner,
               int milliseconds, qsizetype pieceSize = qsizetype(256) * 1024)
{
    measure(what, program, [&] {
        const SelectionOwner owner(data, manner, pieceSize);
        waitFor("nobody reads the clipboard", [&] { return owner.requests() > 0; });
        turnFor(milliseconds);
    });
}

QByteArray picture(const char* format, QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    std::uint32_t state = 1;
    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x)
            line[x] = (state = state * 1664525u + 1013904223u) >> 8;
    }
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return buffer.data();
}

void owners()
{
    Orvane program(1000, 1000);
    program.start();
    (void)statusItem(program);
    turnFor(2 * second);
    measure("nothing", program, [] { turnFor(5 * second); });
    const QMap<QByteArray, QByteArray> text{{"UTF8_STRING", "text"}};
    withOwner("never answers", program, text, Manner::silent, 4 * second);
    withOwner("stops in the middle", program, {{"UTF8_STRING", QByteArray(1 << 20, 'x')}},
              Manner::stopsMidway, 4 * second);
    withOwner("dies in the middle", program, {{"UTF8_STRING", QByteArray(1 << 20, 'x')}}, Manner::diesMidway,
              4 * second);
    withOwner("sends 200 MB of text", program, {{"UTF8_STRING", QByteArray(200 << 20, 'x')}}, Manner::pieces,
              8 * second);
    withOwner("sends 200 MB as a picture", program, {{"image/png", QByteArray(200 << 20, 'x')}},
              Manner::pieces, 8 * second);
    withOwner("picture of 12 megapixels, PNG", program, {{"image/png", picture("PNG", {4000, 3000})}},
              Manner::pieces, 6 * second);
    withOwner("the same as BMP", program, {{"image/bmp", picture("BMP", {4000, 3000})}}, Manner::pieces,
              8 * second);
    withOwner("5 MB of text", program, {{"UTF8_STRING", QByteArray(5 << 20, 'y')}}, Manner::pieces,
              4 * second);
    withOwner("60 MB of text", program, {{"UTF8_STRING", QByteArray(60 << 20, 'y')}}, Manner::pieces,
              10 * second);
}

/// Starts the program on a damaged file; its main thread is asked from the moment that it has a status item.
void file(const char* what, int entries, const std::function<void(const QString& path)>& damage)
{
    Orvane program(entries, 100'000);
    damage(program.historyFile());
    program.start();
    measure(what, program, [] { turnFor(8 * second); });
}

void append(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::Append) || file.write(bytes) != bytes.size())
        qFatal("%s can't be written", qPrintable(path));
}

void files()
{
    file("history.json truncated", 1000, [](const QString& path) { QFile::resize(path, 50'000); });
    file("history.json of 50 MB", 200'000, [](const QString& path) {
        std::printf("%-34s %lld bytes\n", "", static_cast<long long>(QFileInfo(path).size()));
    });
    file("50 MB of brackets", 1, [](const QString& path) { append(path, QByteArray(50 << 20, '[')); });
    file("10,000 entries", 10'000, [](const QString&) {});
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    owners();
    files();
    return 0;
}
