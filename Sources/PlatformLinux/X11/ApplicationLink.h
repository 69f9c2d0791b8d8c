// The link to the X server that everything on the main thread shares, and its events in the run loop. The
// toolkit's own connection can't be waited for with a deadline, since a thread of the toolkit reads it. Main
// thread.
#pragma once

#include "Platform/EventFlags.h"
#include "PlatformLinux/X11/XExchange.h"

#include <QObject>
#include <QSocketNotifier>

#include <array>
#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace orvane {

/// The pointer at one moment.
struct PointerState {
    /// In pixels of the root window.
    int x = 0;
    int y = 0;
    /// Modifiers and the first five buttons, as in a core event.
    unsigned mask = 0;
    /// The child of the root window that is under it.
    xcb_window_t child = XCB_WINDOW_NONE;
};

class ApplicationLink : public QObject, public std::enable_shared_from_this<ApplicationLink> {
    Q_OBJECT
public:
    /// The time that the main thread waits for the answers to one batch of questions.
    static constexpr std::chrono::milliseconds patience{500};

    /// Null where the program doesn't run on an X server. It ends with its last holder.
    [[nodiscard]] static std::shared_ptr<ApplicationLink> get();
    ~ApplicationLink() override;

    [[nodiscard]] XLink& link() const { return *m_link; }
    [[nodiscard]] xcb_connection_t* xcb() const { return m_link->xcb(); }
    [[nodiscard]] xcb_window_t root() const { return m_link->root(); }
    [[nodiscard]] const XAtoms& atoms() const { return m_link->atoms(); }
    [[nodiscard]] XExchange exchange() const { return {*m_link, within(patience)}; }

    using Handler = std::function<void(const xcb_generic_event_t&)>;
    /// Passes every event to the handler until the listener ends.
    class Listener {
    public:
        Listener(const std::shared_ptr<ApplicationLink>& link, Handler handler);
        ~Listener();
        Listener(const Listener&) = delete;
        Listener& operator=(const Listener&) = delete;

    private:
        friend ApplicationLink;
        std::weak_ptr<ApplicationLink> m_link;
        std::shared_ptr<const Handler> m_handler;
    };
    [[nodiscard]] std::unique_ptr<Listener> listen(Handler handler);

    /// Calls back with the answer, whenever it comes; nobody waits. Those to earlier questions can then be
    /// had from an exchange at once.
    void whenAnswered(unsigned sequence, std::function<void(XLink::Answer)> then);
    void forget(unsigned sequence);

    /// One round trip. The clock by which the server puts the requests of users in order; XCB_CURRENT_TIME
    /// where it doesn't answer.
    [[nodiscard]] xcb_timestamp_t serverTime();
    /// One round trip. Absent without an answer, or when the pointer is on another screen of the server.
    [[nodiscard]] std::optional<PointerState> pointer();

Q_SIGNALS:
    /// Some answers were late, and the server is heard from again.
    void serverIsBack();

private:
    explicit ApplicationLink(std::unique_ptr<XLink> link);
    void read();
    void dispatch(const xcb_generic_event_t& event);
    void giveAnswers();

    std::unique_ptr<XLink> m_link;
    QSocketNotifier m_notifier;
    std::vector<Listener*> m_listeners;
    std::map<unsigned, std::function<void(XLink::Answer)>> m_questions;
    /// Its property's changes carry the server's time.
    xcb_window_t m_clock = XCB_WINDOW_NONE;
};

/// Reads an answer about the pointer. Absent without one, or when the pointer is on another screen.
[[nodiscard]] std::optional<PointerState> pointerState(const xcb_query_pointer_reply_t* reply);
/// Modifier bits of a core event or of a pointer query.
[[nodiscard]] EventFlags eventFlagsOfXState(unsigned state);
/// Asks the window manager something about a window. Sent with the connection's next flush.
void sendToWindowManager(xcb_connection_t* xcb, xcb_window_t root, xcb_window_t window, xcb_atom_t type,
                         const std::array<std::uint32_t, 5>& data);

} // namespace orvane
