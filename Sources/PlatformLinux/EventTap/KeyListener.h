// Listens to the keys of the user's keyboards without taking them from other programs: by raw events, which
// come even while another client has grabbed the keyboard. Keys of the XTEST keyboard aren't reported, and
// neither are repeats: the server makes no raw events of them. Main thread.
#pragma once

#include "Platform/Event.h"
#include "Platform/LogSink.h"
#include "PlatformLinux/EventTap/FakedMotions.h"
#include "PlatformLinux/EventTap/HeldKeys.h"
#include "PlatformLinux/EventTap/JoinedKeyboards.h"
#include "PlatformLinux/X11/InputConnection.h"

#include <QObject>
#include <QSocketNotifier>

#include <functional>
#include <memory>

#include <xcb/xinput.h>

namespace orvane {

class KeyListener : public std::enable_shared_from_this<KeyListener> {
public:
    struct Handlers {
        std::function<void(const Event&)> hear;
        /// Called once, in a turn of the event loop, when the X server is gone.
        std::function<void()> lost;
    };
    struct Begun {
        /// Null when it can't begin; the log says why.
        std::shared_ptr<KeyListener> listener;
        /// True if it may begin later: the server didn't answer in time.
        bool isLate = false;
    };
    /// Round trips, and a wait of half a second at most for the connection.
    [[nodiscard]] static Begun begin(LogSink& log, FakedMotions& faked, Handlers handlers);
    ~KeyListener();
    KeyListener(const KeyListener&) = delete;
    KeyListener& operator=(const KeyListener&) = delete;

    /// To be called when the keyboards are grabbed: only events that are on their way still come.
    void stopHearing();
    /// After stopHearing(): reports all events from before it. Round trip.
    void finish();

private:
    KeyListener(std::unique_ptr<InputConnection> connection, LogSink& log, FakedMotions& faked,
                Handlers handlers);
    void readState();
    void findKeyboards();
    void read();
    void readEvent(const xcb_generic_event_t& event);
    void readKey(const xcb_input_raw_key_press_event_t& event);
    void readHierarchy(const xcb_input_hierarchy_event_t& event);
    void hear(HardwareKey key);

    const std::unique_ptr<InputConnection> m_connection;
    LogSink& m_log;
    FakedMotions& m_faked;
    const Handlers m_handlers;
    DeviceId m_master = 0;
    DeviceId m_xtest = 0;
    JoinedKeyboards m_keyboards;
    HeldKeys m_held;
    XSelection m_keys;
    XSelection m_hierarchy;
    bool m_isLost = false;
    QSocketNotifier m_notifier;
};

} // namespace orvane
