// One reading of the X server's keymap. The library that does it waits for the server without a time limit,
// so it runs on a thread and a connection that end with this object.
#pragma once

#include "PlatformLinux/Common/EventSignal.h"
#include "PlatformLinux/X11/XLink.h"

#include <atomic>
#include <memory>
#include <thread>

namespace orvane {

class KeymapTables;

class KeymapReading {
public:
    KeymapReading();
    ~KeymapReading();
    KeymapReading(const KeymapReading&) = delete;
    KeymapReading& operator=(const KeymapReading&) = delete;

    /// Readable when it is done.
    [[nodiscard]] int descriptor() const { return m_done.descriptor(); }
    /// Returns true if it is done by then.
    [[nodiscard]] bool wait(Deadline deadline) const;
    /// To be called when it is done. Null where the server didn't answer.
    [[nodiscard]] std::shared_ptr<const KeymapTables> tables() const { return m_tables; }

private:
    void run();

    EventSignal m_done;
    EventSignal m_stop;
    std::atomic<bool> m_isStopping{false};
    std::atomic<int> m_socket{-1};
    std::unique_ptr<XLink> m_link;
    std::shared_ptr<const KeymapTables> m_tables;
    std::thread m_thread;
};

} // namespace orvane
