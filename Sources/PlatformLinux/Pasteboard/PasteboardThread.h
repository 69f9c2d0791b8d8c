// The thread that exchanges the clipboard with other programs: it owns and serves what this program has
// copied, counts what others copy, and reads it. The operations leave a message for it and return at once;
// what it has read goes to the run loop.
#pragma once

#include "Platform/LogSink.h"
#include "Platform/Pasteboard.h"
#include "PlatformLinux/Common/EventSignal.h"
#include "PlatformLinux/Pasteboard/PasteboardState.h"
#include "PlatformLinux/Pasteboard/PasteboardTargets.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include <xcb/xcb.h>

namespace orvane {

class PasteboardWatches;
class SelectionConnection;
class SelectionReader;
class SelectionServer;

class PasteboardThread {
public:
    using ReadId = std::uint64_t;
    using Answer = std::function<void(std::optional<SelectionContents>)>;

    PasteboardThread(LogSink& log, std::shared_ptr<PasteboardState> state,
                     std::shared_ptr<PasteboardWatches> watches);
    /// Ends the thread, which gives up its waits.
    ~PasteboardThread();
    PasteboardThread(const PasteboardThread&) = delete;
    PasteboardThread& operator=(const PasteboardThread&) = delete;

    /// After PasteboardState::claim().
    void claim();
    /// After PasteboardState::finishWriting().
    void writingFinished();
    /// The answer is called on the thread, at most once, and not after cancelRead() was seen.
    ReadId read(const QStringList& types, Answer answer);
    void cancelRead(ReadId id);

private:
    using Message = std::function<void()>;

    void leave(Message message);
    void answerWithoutServer(const QStringList& types, const Answer& answer);
    void run();
    bool begin();
    void work();
    void wait();
    void workWithoutServer();
    bool handleNextEvent();
    void handleOwner(const xcb_generic_event_t& event);
    void handleMessages();
    void log(const QString& sentence);

    LogSink& m_log;
    const std::shared_ptr<PasteboardState> m_state;
    const std::shared_ptr<PasteboardWatches> m_watches;
    EventSignal m_wake;
    /// Ends the thread's waits for the server.
    EventSignal m_stop;
    std::atomic<bool> m_isStopping{false};

    std::mutex m_messagesMutex;
    std::vector<Message> m_messages;
    std::atomic<ReadId> m_lastRead{0};

    // Used by the thread alone. Null without a server.
    std::unique_ptr<SelectionConnection> m_connection;
    std::unique_ptr<SelectionServer> m_server;
    std::unique_ptr<SelectionReader> m_reader;

    std::thread m_thread;
};

} // namespace orvane
