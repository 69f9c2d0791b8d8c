// Another program that asks for the clipboard, request by request. Each call waits for the answer for at most
// ten seconds, without the event loop: it stands for a program that must not be held up by ours.
#pragma once

#include "PlatformLinux/X11/XcbReply.h"

#include <QByteArray>
#include <QList>

#include <cstdint>
#include <optional>
#include <utility>

namespace orvane::tests {

class SelectionAsker {
public:
    SelectionAsker();

    /// Returns what the owner gives for a target, put together if it comes in pieces; nothing when it refuses
    /// or doesn't answer.
    std::optional<QByteArray> ask(const QByteArray& target, xcb_timestamp_t time = XCB_CURRENT_TIME);
    /// Returns the sorted names of the targets.
    QList<QByteArray> targets();
    /// Asks for several in one request, each with a property of its own.
    QList<std::optional<QByteArray>> askMultiple(const QList<QByteArray>& targets);
    /// Asks without waiting for an answer.
    void begin(const QByteArray& target);
    /// Waits for the answer to begin(): true when something is given, or begins to be given in pieces.
    bool isAnswered();
    /// Returns the owner of the clipboard; 0 when there is none.
    xcb_window_t owner();
    /// Waits until another window than `than` owns the clipboard: a thread announces a copy to the server.
    bool awaitOtherOwner(xcb_window_t than);
    /// Returns what comes after isAnswered().
    std::optional<QByteArray> rest();
    /// True if the last answer came in pieces.
    [[nodiscard]] bool cameInPieces() const { return m_pieces > 0; }

private:
    XcbReply<xcb_generic_event_t> nextEvent();
    xcb_atom_t atom(const QByteArray& name);
    struct Property {
        xcb_atom_t type;
        QByteArray bytes;
    };
    Property take(xcb_atom_t property);
    std::optional<QByteArray> receive(xcb_atom_t property);

    XcbConnection m_connection;
    xcb_window_t m_window;
    int m_pieces = 0;
};

} // namespace orvane::tests
