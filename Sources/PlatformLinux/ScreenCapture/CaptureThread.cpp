#include "PlatformLinux/ScreenCapture/CaptureThread.h"

#include "PlatformLinux/Common/SignalFreeThread.h"
#include "PlatformLinux/ScreenCapture/ScreenReader.h"

namespace orvane {

CaptureThread::CaptureThread() : m_thread(startSignalFreeThread([this] { run(); })) {}

CaptureThread::~CaptureThread()
{
    {
        const std::scoped_lock lock(m_mutex);
        m_isStopping = true;
    }
    m_stop.raise();
    m_changed.notify_one();
    m_thread.join();
}

void CaptureThread::add(Task task)
{
    {
        const std::scoped_lock lock(m_mutex);
        m_tasks.push_back(std::move(task));
    }
    m_changed.notify_one();
}

void CaptureThread::run()
{
    while (auto task = next())
        task->answer(take(*task));
    m_reader.reset();
}

/// Waits for a task. Nothing when the thread has to end.
std::optional<CaptureThread::Task> CaptureThread::next()
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_isStopping || !m_tasks.empty(); });
    if (m_isStopping)
        return std::nullopt;
    Task task = std::move(m_tasks.front());
    m_tasks.pop_front();
    return task;
}

std::optional<ScreenImage> CaptureThread::take(const Task& task)
{
    if (m_reader && m_reader->isLost())
        m_reader.reset();
    if (!m_reader)
        m_reader = ScreenReader::open(m_stop.descriptor());
    if (!m_reader)
        return std::nullopt;
    std::optional<ScreenImage> image;
    const auto use = [&](const ReadPixels& read) {
        const auto& part = task.part;
        image =
            part ? scaledImage(read, part->source, part->width, part->height, part->scaling) : imageOf(read);
    };
    PixelRect part = task.display;
    if (task.part) {
        // The smooth scaling looks one pixel beyond each edge.
        const PixelRect wanted = PixelRect::around(task.part->source);
        part = part.intersected({wanted.x - 1, wanted.y - 1, wanted.width + 2, wanted.height + 2});
    }
    if (part.isEmpty()) {
        use({part, nullptr, {}});
        return image;
    }
    return m_reader->read(task.display, part, use) ? std::move(image) : std::nullopt;
}

} // namespace orvane
