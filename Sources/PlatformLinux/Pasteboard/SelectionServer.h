// Owns the clipboard for this program and gives its content to all that ask, in pieces where it is large and
// to several at once. Never blocks; it is driven by events and by its deadline.
#pragma once

#include "PlatformLinux/Pasteboard/PasteboardState.h"
#include "PlatformLinux/Pasteboard/PasteboardTargets.h"
#include "PlatformLinux/Pasteboard/SelectionConnection.h"

#include <chrono>
#include <functional>
#include <optional>
#include <vector>

namespace orvane {

class SelectionServer {
public:
    using Time = std::chrono::steady_clock::time_point;

    /// A program that asks while content is being put together waits at most this long, however busy the main
    /// thread is.
    static constexpr std::chrono::milliseconds longestHold{100};
    /// A program that doesn't take the next piece within this time gets no more.
    static constexpr std::chrono::seconds longestSilence{10};
    /// Larger content goes in pieces of this size.
    static constexpr qsizetype pieceSize = qsizetype{256} << 10;

    SelectionServer(SelectionConnection& connection, const PasteboardState& state);

    /// Waits for the server.
    void claim();
    /// Answers the requests that were held.
    void writingFinished();

    void handle(const xcb_selection_request_event_t& event);
    /// Handles an event of a requestor's property.
    void handle(const xcb_property_notify_event_t& event);
    void handle(const xcb_destroy_notify_event_t& event);
    /// To be called when the server reports the begin of our ownership.
    void noteOwnedSince(xcb_timestamp_t time) { m_ownedSince = time; }

    [[nodiscard]] std::optional<Time> deadline() const;
    void handleDeadline(Time now);

private:
    struct Held {
        xcb_selection_request_event_t event;
        Time until;
    };
    struct Transfer {
        xcb_window_t requestor;
        xcb_atom_t property;
        xcb_atom_t type;
        QByteArray bytes;
        qsizetype sent = 0;
        Time until;
        XSelection listening;
    };

    void answer(const xcb_selection_request_event_t& event);
    [[nodiscard]] bool isStale(xcb_timestamp_t time) const;
    bool put(const PasteboardContents& contents, xcb_window_t requestor, xcb_atom_t property,
             xcb_atom_t target);
    bool putMultiple(const PasteboardContents& contents, xcb_window_t requestor, xcb_atom_t property);
    void putTargets(const PasteboardContents& contents, xcb_window_t requestor, xcb_atom_t property);
    void putInPieces(xcb_window_t requestor, xcb_atom_t property, xcb_atom_t type, QByteArray bytes);
    bool sendPiece(Transfer& transfer);
    void endTransfers(const std::function<bool(const Transfer&)>& which);
    void notify(const xcb_selection_request_event_t& event, xcb_atom_t property);

    SelectionConnection& m_connection;
    const PasteboardState& m_state;
    const xcb_atom_t m_targets, m_multiple, m_timestamp, m_atomPair, m_incr;
    xcb_timestamp_t m_ownedSince = XCB_CURRENT_TIME;
    std::vector<Held> m_held;
    std::vector<Transfer> m_transfers;
};

} // namespace orvane
