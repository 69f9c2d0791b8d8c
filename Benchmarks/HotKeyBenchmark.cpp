// Measures from a hot key's event to its action, with as many shortcuts as the program has.
#include "AllocationCount.h"
#include "Fakes/FakePlatform.h"
#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "KeyboardShortcuts/Registration/State.h"
#include "KeyboardShortcuts/Storage/ShortcutCoding.h"
#include "PlatformLinux/Defaults/JsonDefaultsStore.h"

#include <benchmark/benchmark.h>

using namespace orvane;
using namespace orvane::KeyboardShortcuts;

namespace {

constexpr int nameCount = 30;

Shortcut shortcutNumber(int i)
{
    return {i, carbonModifier::control | carbonModifier::option};
}

/// Counts for each call; what is built at the first use isn't counted.
template <typename Call>
void measure(benchmark::State& state, const Call& call)
{
    call();
    const long before = allocations.load();
    for (auto _ : state)
        call();
    state.counters["allocations"] = benchmark::Counter(static_cast<double>(allocations.load() - before),
                                                       benchmark::Counter::kAvgIterations);
}

struct Shortcuts {
    Shortcuts()
    {
        for (int i = 0; i < nameCount; ++i) {
            const Name name(QStringLiteral("capability.action%1").arg(i));
            setShortcut(shortcutNumber(i), name);
            onKeyUp(name, [this] { ++fired; });
        }
    }

    FakePlatform fake;
    StateScope scope;
    long fired = 0;
};

/// Fires the last of the names: its action runs after all stored shortcuts have been read.
void released(benchmark::State& state)
{
    Shortcuts shortcuts;
    const KeyboardEvent event{KeyboardEvent::Kind::hotKeyReleased,
                              EventHotKeyID{CarbonKeyboardShortcuts::hotKeySignature, nameCount},
                              {},
                              {}};
    measure(state, [&] {
        benchmark::DoNotOptimize(CarbonKeyboardShortcuts::carbonKeyboardShortcutsEventHandler(&event));
    });
    if (shortcuts.fired == 0)
        state.SkipWithError("the action didn't run");
}

/// Fires without the reading: no name has an action for this edge.
void pressed(benchmark::State& state)
{
    const Shortcuts shortcuts;
    const KeyboardEvent event{KeyboardEvent::Kind::hotKeyPressed,
                              EventHotKeyID{CarbonKeyboardShortcuts::hotKeySignature, nameCount},
                              {},
                              {}};
    measure(state, [&] {
        benchmark::DoNotOptimize(CarbonKeyboardShortcuts::carbonKeyboardShortcutsEventHandler(&event));
    });
}

/// Presses a key in an open menu that is no shortcut.
void otherKeyInMenu(benchmark::State& state)
{
    const Shortcuts shortcuts;
    const KeyboardEvent event{KeyboardEvent::Kind::rawKeyDown, {}, 125, 0};
    measure(state, [&] {
        benchmark::DoNotOptimize(CarbonKeyboardShortcuts::carbonKeyboardShortcutsEventHandler(&event));
    });
}

/// Reads one stored shortcut from the product's own store, among many keys.
void storedShortcut(benchmark::State& state)
{
    FakePlatform fake;
    JsonDefaultsStore store(QString(), fake.log);
    for (int i = 0; i < 300; ++i)
        store.set(QStringLiteral("capability.setting%1").arg(i), i);
    const QString key = QStringLiteral("KeyboardShortcuts_capability.action");
    store.set(key, QStringLiteral("{\"carbonKeyCode\":49,\"carbonModifiers\":4096}"));
    measure(state, [&] { benchmark::DoNotOptimize(decode(*store.string(key))); });
}

} // namespace

BENCHMARK(released);
BENCHMARK(pressed);
BENCHMARK(otherKeyInMenu);
BENCHMARK(storedShortcut);

BENCHMARK_MAIN();
