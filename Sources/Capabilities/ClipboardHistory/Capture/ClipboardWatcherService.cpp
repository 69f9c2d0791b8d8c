#include "Capabilities/ClipboardHistory/Capture/ClipboardWatcherService.h"

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
    : m_controller(std::move(controller)), m_interval(timerInterval(interval))
{
}

void ClipboardWatcherService::start()
{
    if (m_isRunning)
        return;
    m_controller->skipPresentContent();
    m_timer = platform().mainRunLoop.scheduleTimer(
        m_interval, RunLoop::Repeats::yes, [this, weak = std::weak_ptr(m_controller)] {
            // A tick that was still queued when the service stopped is ignored.
            platform().mainRunLoop.perform([weak, timer = std::weak_ptr(m_timer)] {
                const auto controller = weak.lock();
                if (controller && !timer.expired())
                    controller->checkPasteboard();
            });
        });
    m_isRunning = true;
}

void ClipboardWatcherService::stop()
{
    if (!m_isRunning)
        return;
    m_timer.reset();
    m_isRunning = false;
}

} // namespace orvane
