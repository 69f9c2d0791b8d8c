// A connection to the X server: its queue of events, its atoms, its selections, and a time limit for every
// wait. Free of Qt.
//
// Threads. One thread, the reader, takes the events. Everything else may be called on any thread: requests
// over xcb(), flush(), exchanges and selections; of several threads that wait for answers one waits at a
// time. The descriptor is readable as long as there is an event that hasn't been taken, whichever thread has
// read it, so the reader needs no further look after a flush or an answer. For this, other threads than the
// reader's have to send with flush() and not with xcb_flush(), and xcb_poll_for_event() must not be called.
#pragma once

#include "PlatformLinux/Common/EventSignal.h"
#include "PlatformLinux/Common/FileDescriptor.h"
#include "PlatformLinux/X11/XAtoms.h"
#include "PlatformLinux/X11/XSelection.h"
#include "PlatformLinux/X11/XcbReply.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <span>

namespace orvane {

using Deadline = std::chrono::steady_clock::time_point;

[[nodiscard]] inline Deadline within(std::chrono::steady_clock::duration time)
{
    return std::chrono::steady_clock::now() + time;
}

/// How a question to the server ended.
enum class XOutcome : std::uint8_t {
    answered,
    refused, // with an error
    late,    // not by the deadline: the server hangs, or another client holds it
    lost,    // there is no server, or no longer
};

class XLink {
public:
    struct Request {
        /// The extensions that will be used: the library would wait for others without a time limit.
        std::span<xcb_extension_t* const> extensions;
        /// The environment's display where it is null.
        const char* display = nullptr;
        /// Once it is readable, nothing is waited for any more: all is late. For a thread that is to end.
        int cancellation = -1;
    };
    struct Opened {
        /// Null unless the outcome is `answered`.
        std::unique_ptr<XLink> link;
        XOutcome outcome = XOutcome::lost;
    };
    [[nodiscard]] static Opened open(const Request& request, Deadline deadline);
    ~XLink();
    XLink(const XLink&) = delete;
    XLink& operator=(const XLink&) = delete;

    [[nodiscard]] xcb_connection_t* xcb() const { return m_xcb.get(); }
    [[nodiscard]] const xcb_setup_t& setup() const { return *xcb_get_setup(m_xcb.get()); }
    [[nodiscard]] const xcb_screen_t& screen() const { return *m_screen; }
    [[nodiscard]] xcb_window_t root() const { return m_screen->root; }
    [[nodiscard]] const XAtoms& atoms() const { return m_atoms; }
    /// Null when the server doesn't offer it. Only for extensions that were named when the link was opened.
    [[nodiscard]] const xcb_query_extension_reply_t* extension(xcb_extension_t& extension) const;
    /// Returns the part of a resource's number that identifies its client.
    [[nodiscard]] std::uint32_t clientOf(std::uint32_t resource) const;
    [[nodiscard]] bool isLost() const { return xcb_connection_has_error(m_xcb.get()) != 0; }

    /// For poll(): readable while nextEvent() has an event, while an expected answer is there, after the
    /// server has been heard from again, and always once it is lost.
    [[nodiscard]] int descriptor() const { return m_descriptor.get(); }
    /// Returns the events in the order of the server; null when there is none at present. Errors of requests
    /// that have no answer are dropped. On the reader's thread.
    [[nodiscard]] XcbReply<xcb_generic_event_t> nextEvent();
    /// Takes the wanted events out of the queue; the others stay, in their order.
    void takeEvents(const std::function<bool(const xcb_generic_event_t&)>& isWanted);
    /// Blocks only when the server has left some hundred kilobytes unread.
    void flush();

    /// Adds to the events of a window that this link gets, until the object ends; what others have selected
    /// there stays. Sent with the next flush.
    [[nodiscard]] XSelection select(xcb_window_t window, std::uint32_t coreEvents);
    /// Does the same for XInput 2 events of a device; the extension must have been named.
    [[nodiscard]] XSelection selectInput(xcb_window_t window, std::uint16_t device,
                                         std::uint32_t inputEvents);

    /// Waits for the answer to a request that was sent with this link. After a late answer the link gives the
    /// server a moment each time, and waits as told only once the server has answered. XExchange is the
    /// convenient form of this.
    struct Answer {
        XOutcome outcome = XOutcome::late;
        XcbReply<void> reply;
        /// The server's code for a refusal.
        std::uint8_t error = 0;
    };
    [[nodiscard]] Answer await(unsigned sequence, Deadline deadline);
    /// True once after the server has been heard from again, whichever thread has read that. The descriptor
    /// tells of it until this is called, or until nextEvent() has no event, for readers that don't ask.
    [[nodiscard]] bool takeRecovery();
    /// For an answer that isn't waited for: the descriptor becomes readable when it is there, until it is
    /// taken. Sends the question. The answers to earlier questions can be had without waiting as soon as this
    /// one can.
    void expect(unsigned sequence);
    /// Nothing when it isn't there yet.
    [[nodiscard]] std::optional<Answer> takeExpected(unsigned sequence);
    void expectNoMore(unsigned sequence);

private:
    XLink(XcbConnection xcb, int screenNumber);
    XOutcome begin(const Request& request, int screenNumber, Deadline deadline);
    std::optional<Answer> poll(unsigned sequence);
    void noteOverdue();
    bool isOverdue();
    bool awaitRecovery(Deadline deadline);
    void noticeRecovery();
    void sendAll(Deadline deadline);
    bool waitForInput(Deadline deadline);
    void readIn();
    void keepWhatWasRead();
    void keep(xcb_generic_event_t* event);
    void ring();

    XcbConnection m_xcb;
    const xcb_screen_t* m_screen = nullptr;
    XAtoms m_atoms{};
    std::shared_ptr<XSelections> m_selections;

    /// The server's socket together with the signal for events that were read already.
    FileDescriptor m_descriptor;
    EventSignal m_somethingIsThere;
    std::mutex m_queueMutex;
    std::deque<XcbReply<xcb_generic_event_t>> m_queue;
    std::map<unsigned, std::optional<Answer>> m_expected;
    /// After a late answer: the question whose answer shows that the server is back.
    std::optional<unsigned> m_overdue;
    bool m_hasRecovered = false;
    bool m_readerKnowsOfRecovery = true;
    bool m_rings = false;

    std::mutex m_turnToWait;
    /// Raised when another thread may have read the answer that is waited for.
    EventSignal m_answersMayBeThere;
    std::atomic<bool> m_isWaiting{false};
    int m_cancellation = -1;
};

} // namespace orvane
