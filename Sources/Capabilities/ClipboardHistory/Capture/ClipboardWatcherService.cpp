#include "Capabilities/ClipboardHistory/Capture/ClipboardWatcherService.h"

#include "Platform/Clock.h"
#include "Platform/Platform.h"

#include <algorithm>

namespace orvane {

namespace {

/// Any stored number is brought into a timer's range.
std::chrono::milliseconds timerInterval(double seconds)
{
    constexpr std::chrono::duration<double> longest = std::chrono::hours(24);
    const std::chrono::duration<double> wanted(std::max(seconds, 0.0));
    return std::chrono::round<std::chrono::milliseconds>(std::min(wanted, longest));
}

} // namespace

ClipboardWatcherService::ClipboardWatcherService(std::shared_ptr<ClipboardHistoryController> controller,
                                                 double interval)
    : m_controller(std::move(controller)), m_interval(timerInterval(interval)), m_schedule(m_interval)
{
}

void ClipboardWatcherService::start()
{
    if (m_isRunning)
        return;
    // The watch comes first: a copy in between counts as present and isn't missed by both.
    m_watch = platform().generalPasteboard.watch([this] { scheduleLook(); });
    m_controller->skipPresentContent();
    if (!m_watch)
        startTimer();
    m_isRunning = true;
}

void ClipboardWatcherService::startTimer()
{
    m_timer = platform().mainRunLoop.scheduleTimer(
        m_interval, RunLoop::Repeats::yes, [this, weak = std::weak_ptr(m_controller)] {
            // A tick that was still queued when the service stopped is ignored.
            platform().mainRunLoop.perform([weak, timer = std::weak_ptr(m_timer)] {
                const auto controller = weak.lock();
                if (controller && !timer.expired())
                    controller->checkPasteboard();
            });
        });
}

void ClipboardWatcherService::scheduleLook()
{
    const LookSchedule::Time now = platform().clock.uptime();
    const LookSchedule::Time wait = std::max(m_schedule.announced(now) - now, LookSchedule::Time::zero());
    m_nextLook = platform().mainRunLoop.scheduleTimer(std::chrono::ceil<std::chrono::milliseconds>(wait),
                                                      RunLoop::Repeats::no, [this] { look(); });
}

void ClipboardWatcherService::look()
{
    m_nextLook.reset();
    m_schedule.looked(platform().clock.uptime());
    m_controller->checkPasteboard();
}

void ClipboardWatcherService::stop()
{
    if (!m_isRunning)
        return;
    m_watch.reset();
    m_nextLook.reset();
    m_timer.reset();
    m_isRunning = false;
}

} // namespace orvane
