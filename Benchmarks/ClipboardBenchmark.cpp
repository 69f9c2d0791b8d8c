// The work of the clipboard history on the main thread, with 10,000 entries: a capture and the saving that it
// hands over, and a key of the search. It runs on the fake platform, so it waits for no other program.
#include "Capabilities/ClipboardHistory/ClipboardHistoryController.h"
#include "Fakes/FakePlatform.h"

#include <benchmark/benchmark.h>

#include <QTemporaryDir>
#include <QUuid>

namespace {

using namespace orvane;

constexpr int entries = 10'000;
const QString historyID = QStringLiteral("net.lindenrow.orvane.clipboardhistory");

QString paragraph(int number)
{
    return QStringLiteral("Paragraph %1: ").arg(number) +
           QStringLiteral("the quick brown fox jumps over the lazy dog. ").repeated(number % 7 + 1);
}

QList<ClipItem> list()
{
    QList<ClipItem> items;
    for (int i = 0; i < entries; ++i)
        items.append({.id = QUuid::createUuid(), .text = paragraph(i), .date = ClipItem::Date(8e8 - i)});
    return items;
}

struct History {
    History()
    {
        settings->maxItems.set(entries);
        archive.ensureDirectories();
        archive.save(list());
        controller->loadHistory();
        settle();
    }
    void settle()
    {
        fake.runLoop.drainDetached();
        fake.runLoop.drain();
        fake.runLoop.drainDetached();
        fake.runLoop.drain();
    }

    FakePlatform fake;
    QTemporaryDir home;
    HistoryArchive archive{home.filePath(historyID)};
    std::shared_ptr<ClipboardHistorySettings> settings =
        std::make_shared<ClipboardHistorySettings>(ScopedPreferences(fake.defaults, historyID));
    std::shared_ptr<ClipboardHistoryController> controller =
        ClipboardHistoryController::make(settings, archive.directory, Log::make(historyID));
};

/// Measures from the tick that sees a copy to its entry, with the save handed over to the pool.
void captureOfACopy(benchmark::State& state)
{
    History history;
    int number = 0;
    for (auto _ : state) {
        history.fake.generalPasteboard.copyString(QStringLiteral("Copy %1").arg(++number));
        history.controller->checkPasteboard();
        history.fake.runLoop.drain();
        state.PauseTiming();
        history.settle();
        if (history.controller->store().items.first().text != QStringLiteral("Copy %1").arg(number))
            state.SkipWithError("the copy isn't the newest entry");
        state.ResumeTiming();
    }
}
BENCHMARK(captureOfACopy)->Unit(benchmark::kMicrosecond)->Iterations(100);

/// Measures the same with the pool's work on the disk.
void captureAndSave(benchmark::State& state)
{
    History history;
    int number = 0;
    for (auto _ : state) {
        history.fake.generalPasteboard.copyString(QStringLiteral("Copy %1").arg(++number));
        history.controller->checkPasteboard();
        history.settle();
    }
}
BENCHMARK(captureAndSave)->Unit(benchmark::kMicrosecond)->Iterations(100);

/// Measures a tick that finds nothing new.
void tick(benchmark::State& state)
{
    History history;
    for (auto _ : state)
        history.controller->checkPasteboard();
}
BENCHMARK(tick);

/// Measures the search for one key: found in every entry, in some, in none.
void keyOfTheSearch(benchmark::State& state, const char* query)
{
    HistoryViewModel model;
    model.items.set(list());
    model.query.set(QString::fromUtf8(query));
    for (auto _ : state)
        benchmark::DoNotOptimize(model.filtered());
}
BENCHMARK_CAPTURE(keyOfTheSearch, everywhere, "p")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(keyOfTheSearch, inSome, "graph 99")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(keyOfTheSearch, nowhere, "quiet")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(keyOfTheSearch, beyondAscii, "gr\xC3\xB6\xC3\x9F")->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
