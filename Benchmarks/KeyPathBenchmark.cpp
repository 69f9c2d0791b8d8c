// The chain from the tap's callback through its subscribers, as it runs for every key of the session.
#include "AllocationCount.h"
#include "Capabilities/KeySwap/KeySwapController.h"
#include "Fakes/FakePlatform.h"
#include "OrvaneCore/Input/EventTapService.h"

#include <benchmark/benchmark.h>

using namespace orvane;

namespace {

/// Ignores all but the modifiers, as the double tap of a key does.
class FlagsOnly : public EventTapListener {
public:
    [[nodiscard]] EventMask eventMask() const override { return eventMaskBit(EventType::flagsChanged); }
    void hear(EventType type, const Event& event) override
    {
        if (type == EventType::flagsChanged)
            m_flags = event.flags;
        benchmark::DoNotOptimize(m_flags);
    }

private:
    EventFlags m_flags = 0;
};

/// Looks at presses of two keys, as the interception of cut and paste does.
class TwoKeys : public EventTapSubscriber {
public:
    [[nodiscard]] EventTapRank rank() const override { return EventTapRank::clipboardKeys; }
    [[nodiscard]] EventMask eventMask() const override { return eventMaskBit(EventType::keyDown); }
    EventTapDecision handle(EventType type, Event& event) override
    {
        const bool matches = type == EventType::keyDown && (event.keycode == 7 || event.keycode == 9) &&
                             event.flags == eventFlag::command && event.userData != 0;
        return matches ? EventTapDecision::consume : EventTapDecision::pass;
    }
};

struct Chain {
    Chain()
    {
        fake.workspace.frontmost = RunningApplication{1, QStringLiteral("org.example.editor"), {}};
        service->start();
        service->addSubscriber(std::make_shared<TwoKeys>());
        controller->start();
        service->addListener(std::make_shared<FlagsOnly>());
    }

    FakePlatform fake;
    std::shared_ptr<EventTapService> service =
        std::make_shared<EventTapService>(Log::make(QStringLiteral("EventTap")));
    std::shared_ptr<KeySwapController> controller = KeySwapController::make(
        std::make_shared<KeySwapSettings>(ScopedPreferences(fake.defaults, QStringLiteral("keyswap"))),
        service, Log::make(QStringLiteral("keyswap")));
};

void walk(benchmark::State& state, EventFlags flags)
{
    Chain chain;
    FakeEventTap& tap = *chain.fake.eventTaps.taps.at(0);
    FakeEventTap& listener = *chain.fake.eventTaps.taps.at(1);
    const auto send = [&] {
        Event event;
        event.type = EventType::keyDown;
        event.keycode = 8;
        event.flags = flags;
        benchmark::DoNotOptimize(tap.call(event));
        benchmark::DoNotOptimize(listener.call(event));
    };
    send(); // builds what is made at the first use
    const long before = allocations.load();
    for (auto _ : state)
        send();
    state.counters["allocations"] = static_cast<double>(allocations.load() - before);
}

} // namespace

BENCHMARK_CAPTURE(walk, plain_key, EventFlags{0});
BENCHMARK_CAPTURE(walk, rewritten_chord, eventFlag::control);

BENCHMARK_MAIN();
