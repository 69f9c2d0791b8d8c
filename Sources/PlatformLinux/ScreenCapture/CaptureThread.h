// The thread that takes pictures, one after the other.
#pragma once

#include "PlatformLinux/Common/EventSignal.h"
#include "PlatformLinux/ScreenCapture/PixelCopy.h"

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

namespace orvane {

class ScreenReader;

class CaptureThread {
public:
    struct Scaled {
        /// In pixels of the root window.
        Rect source;
        int width = 0;
        int height = 0;
        ScreenCapturer::Scaling scaling = ScreenCapturer::Scaling::nearest;
    };
    struct Task {
        /// In pixels of the root window.
        PixelRect display;
        /// Absent for the whole display as it is.
        std::optional<Scaled> part = {};
        /// Called on the thread.
        std::function<void(std::optional<ScreenImage>)> answer = {};
    };

    CaptureThread();
    /// Ends the thread, which gives up its waits and the tasks that are left.
    ~CaptureThread();
    CaptureThread(const CaptureThread&) = delete;
    CaptureThread& operator=(const CaptureThread&) = delete;

    void add(Task task);

private:
    void run();
    std::optional<Task> next();
    std::optional<ScreenImage> take(const Task& task);

    EventSignal m_stop;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<Task> m_tasks;
    bool m_isStopping = false;
    /// Used by the thread alone. Null before the first task and after the loss of the server.
    std::unique_ptr<ScreenReader> m_reader;
    std::thread m_thread;
};

} // namespace orvane
