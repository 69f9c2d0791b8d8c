#include "Fakes/FakeRunLoop.h"

#include <algorithm>

namespace orvane {

struct FakeRunLoop::Entry {
    Clock::Uptime due;
    std::chrono::milliseconds interval;
    Repeats repeats;
    std::function<void()> handler;
};

class FakeRunLoop::FakeTimer : public Timer {
public:
    explicit FakeTimer(std::shared_ptr<Entry> entry) : m_entry(std::move(entry)) {}

private:
    std::shared_ptr<Entry> m_entry;
};

void FakeRunLoop::perform(std::function<void()> task)
{
    const std::scoped_lock lock(m_mutex);
    m_tasks.push_back(std::move(task));
}

std::unique_ptr<Timer> FakeRunLoop::scheduleTimer(std::chrono::milliseconds interval, Repeats repeats,
                                                  std::function<void()> handler)
{
    auto entry =
        std::make_shared<Entry>(Entry{m_clock.uptime() + interval, interval, repeats, std::move(handler)});
    m_timers.push_back(entry);
    return std::make_unique<FakeTimer>(std::move(entry));
}

void FakeRunLoop::performDetached(std::function<void()> work)
{
    const std::scoped_lock lock(m_mutex);
    m_detached.push_back(std::move(work));
}

void FakeRunLoop::drain()
{
    drainQueue(m_tasks);
}
void FakeRunLoop::drainDetached()
{
    drainQueue(m_detached);
}

void FakeRunLoop::discardQueued()
{
    std::deque<std::function<void()>> tasks;
    std::deque<std::function<void()>> detached;
    const std::scoped_lock lock(m_mutex);
    tasks.swap(m_tasks);
    detached.swap(m_detached);
}

void FakeRunLoop::drainQueue(std::deque<std::function<void()>>& queue)
{
    for (;;) {
        std::function<void()> task;
        {
            const std::scoped_lock lock(m_mutex);
            if (queue.empty())
                return;
            task = std::move(queue.front());
            queue.pop_front();
        }
        task();
    }
}

void FakeRunLoop::advance(std::chrono::milliseconds by)
{
    drain();
    fireTimers(by, [this] { drain(); });
}

void FakeRunLoop::advanceWithoutTasks(std::chrono::milliseconds by)
{
    fireTimers(by, [] {});
}

void FakeRunLoop::fireTimers(std::chrono::milliseconds by, const std::function<void()>& afterEach)
{
    const Clock::Uptime end = m_clock.uptime() + by;
    for (;;) {
        std::shared_ptr<Entry> next;
        for (const auto& timer : m_timers) {
            const auto entry = timer.lock();
            if (entry && entry->due <= end && (!next || entry->due < next->due))
                next = entry;
        }
        if (!next)
            break;
        m_clock.advance(std::max(next->due - m_clock.uptime(), Clock::Uptime::zero()));
        const auto handler = next->handler; // the handler may end its own timer
        if (next->repeats == Repeats::yes)
            next->due += std::max<Clock::Uptime>(next->interval, std::chrono::milliseconds(1));
        else
            std::erase_if(m_timers, [&](const auto& timer) { return timer.lock() == next; });
        next.reset();
        handler();
        afterEach();
    }
    m_clock.advance(end - m_clock.uptime());
    std::erase_if(m_timers, [](const auto& timer) { return timer.expired(); });
}

std::size_t FakeRunLoop::timerCount() const
{
    return timerIntervals().size();
}

std::vector<std::chrono::milliseconds> FakeRunLoop::timerIntervals() const
{
    std::vector<std::chrono::milliseconds> intervals;
    for (const auto& timer : m_timers) {
        if (const auto entry = timer.lock())
            intervals.push_back(entry->interval);
    }
    return intervals;
}

} // namespace orvane
