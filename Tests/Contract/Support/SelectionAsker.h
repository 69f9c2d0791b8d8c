// Another program that asks for the clipboard, request by request. Each waits until it is answered, for ten
// seconds at most, without the event loop: it stands for a program that a busy one mustn't hold.
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

    /// What the owner gives for a target, put together if it comes in pieces; nothing when it refuses or is
    /// silent.
    std::optional<QByteArray> ask(const QByteArray& target, xcb_timestamp_t time = XCB_CURRENT_TIME);
    /// Names of the targets, sorted.
    QList<QByteArray> targets();
    /// Several in one request, each with a property of its own.
    QList<std::optional<QByteArray>> askMultiple(const QList<QByteArray>& targets);
    /// Without waiting for an answer.
    void begin(const QByteArray& target);
    /// The answer to begin(): true when something is given, or begins to be in pieces.
    bool isAnswered();
    /// Who has the clipboard; 0 when nobody does.
    xcb_window_t owner();
    /// A copy is told to the server by another thread: waits until somebody else than this has the clipboard.
    bool awaitOtherOwner(xcb_window_t than);
    /// Takes what comes after isAnswered().
    std::optional<QByteArray> rest();
    /// Whether the last answer came in pieces.
    bool cameInPieces() const { return m_pieces > 0; }

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
