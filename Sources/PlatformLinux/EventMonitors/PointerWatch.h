// The mouse as it is used on other programs' windows, whichever client has grabbed the pointer: the X
// server's raw events. Only wanted events are selected, and motion only while it would be reported, so a
// pointer that merely moves wakes nothing. Raw events don't contain the pointer's place: the server is asked,
// and the event is reported when the answer comes, without a wait. A release in a drag is preceded by a
// motion to its own place: the drag may be over before any motion is selected, and the pointer may have gone
// on. Main thread.
#pragma once

#include "PlatformLinux/EventMonitors/PressLedger.h"
#include "PlatformLinux/X11/ApplicationLink.h"

#include <QPoint>

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

struct xcb_input_raw_button_press_event_t;

namespace orvane {

class PointerWatch {
public:
    /// Called for each event, with the pointer's place at that moment. May change what is wanted.
    using Deliver = std::function<void(EventType, const PointerState&)>;

    explicit PointerWatch(Deliver deliver);
    ~PointerWatch();
    PointerWatch(const PointerWatch&) = delete;
    PointerWatch& operator=(const PointerWatch&) = delete;

    /// Sets the types of mouse events to report: the server knows of it when this returns.
    void want(EventMask types);
    /// Returns how many events the server has sent.
    [[nodiscard]] std::uint64_t eventsRead() const { return m_eventsRead; }
    /// Returns the server's time of the left button's last press as far as events are reported, also when it
    /// was on a window of ours; XCB_CURRENT_TIME when there was none.
    [[nodiscard]] xcb_timestamp_t lastLeftPress() const { return m_lastLeftPress; }

private:
    struct Raw {
        enum class Kind { motion, press, release } kind = Kind::motion;
        std::uint32_t button = 0;
        xcb_timestamp_t time = 0;
    };
    /// All questions about one event, asked at once.
    struct Question;

    void open();
    void close();
    void startLedger();
    void readButtonMap();
    void select();
    void handle(const xcb_generic_event_t& event);
    void queue(Raw raw);
    void work();
    void take(const Raw& raw);
    void ask(const Raw& raw, EventType released);
    void answer(XLink::Answer last);
    void report(EventType type, const PointerState& pointer);
    [[nodiscard]] ButtonSet heldAsRead() const;
    [[nodiscard]] bool isReleaseRead() const;
    [[nodiscard]] bool isWanted(EventType type) const
    {
        return type != EventType::null && (m_wanted & eventMaskBit(type)) != 0;
    }
    [[nodiscard]] PressLedger::Owner ownerAt(XExchange& exchange, const PointerState& pointer) const;

    Deliver m_deliver;
    EventMask m_wanted = 0;
    std::shared_ptr<ApplicationLink> m_x;
    std::unique_ptr<ApplicationLink::Listener> m_listener;
    XSelection m_selection;
    std::uint8_t m_xinput = 0;
    std::uint32_t m_selected = 0;
    /// By the number of the hardware's button, from 1.
    std::vector<std::uint8_t> m_buttonMap;
    PressLedger m_ledger;
    /// The events after the one that is being asked about.
    std::deque<Raw> m_raw;
    std::unique_ptr<Question> m_question;
    std::uint64_t m_eventsRead = 0;
    xcb_timestamp_t m_lastLeftPress = XCB_CURRENT_TIME;
    /// The place of the last press or motion of a drag.
    QPoint m_lastPlace;
};

} // namespace orvane
