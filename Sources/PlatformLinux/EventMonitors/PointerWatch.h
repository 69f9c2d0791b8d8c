// The mouse as it is used on other programs' windows, whoever has grabbed the pointer: the X server's raw
// events, on a connection of its own. That is selected which somebody wants to hear of, motion only while it
// would be told, so that a pointer that merely moves wakes nobody. Main thread.
#pragma once

#include "PlatformLinux/EventMonitors/PressLedger.h"
#include "PlatformLinux/X11/X11Connection.h"

#include <QObject>

#include <deque>
#include <functional>
#include <memory>
#include <vector>

class QSocketNotifier;

namespace orvane {

/// The pointer at one moment.
struct PointerState {
    /// Pixels of the root window.
    int x = 0;
    int y = 0;
    /// Modifiers and the first five buttons, as in a core event.
    unsigned mask = 0;
};
/// Round trip. Absent when the pointer is on another screen of the server.
std::optional<PointerState> queryPointer(const X11Connection& x);

class PointerWatch : public QObject {
    Q_OBJECT
public:
    /// Called for each event, with where the pointer is at that moment. May change what is wanted.
    using Deliver = std::function<void(EventType, const PointerState&)>;

    explicit PointerWatch(Deliver deliver);
    ~PointerWatch() override;

    /// The types of mouse events to tell of, from now on. With none there is no connection.
    void want(EventMask types);
    /// How many events the server has sent.
    [[nodiscard]] std::uint64_t eventsRead() const { return m_eventsRead; }

private:
    void open();
    void close();
    bool negotiate();
    void startLedger();
    void readButtonMap();
    void select();
    void read();
    void handle(const xcb_generic_event_t& event);
    void readButton(std::uint32_t button, bool goesDown, xcb_timestamp_t time);
    void readMotion();
    void tell(EventType type, const PointerState& pointer);
    XcbReply<xcb_generic_event_t> next();
    void takeQueued();
    [[nodiscard]] std::optional<PointerState> pointerAt(xcb_timestamp_t time) const;
    [[nodiscard]] PressLedger::Owner ownerAt(const PointerState& pointer) const;
    [[nodiscard]] bool isOurs(xcb_window_t window) const;

    Deliver m_deliver;
    EventMask m_wanted = 0;
    XcbConnection m_connection;
    std::optional<X11Connection> m_x;
    QSocketNotifier* m_notifier = nullptr;
    std::uint8_t m_xinput = 0;
    std::uint32_t m_selected = 0;
    /// By the number of the hardware's button, from 1.
    std::vector<std::uint8_t> m_buttonMap;
    PressLedger m_ledger;
    /// Read while an answer was waited for.
    std::deque<XcbReply<xcb_generic_event_t>> m_queued;
    std::uint64_t m_eventsRead = 0;
};

} // namespace orvane
