// Reads the X server's events for the tap's thread: keys of the grabbed keyboards, which go to the injector,
// and changes of keyboards and pointers. Used by the tap's thread alone.
#pragma once

#include "Platform/LogSink.h"
#include "PlatformLinux/EventTap/GrabbedKeyboards.h"
#include "PlatformLinux/EventTap/Guardian/TapGuardian.h"
#include "PlatformLinux/EventTap/KeyInjector.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace orvane {

class TapEventReader {
public:
    using Log = std::function<void(LogLevel, const std::string& sentence)>;

    TapEventReader(InputConnection& connection, KeyInjector& injector, Log log)
        : m_connection(connection), m_injector(injector), m_log(std::move(log))
    {
    }

    /// Grabs the keyboards and asks for the events that concern them. False when none can be had; the log
    /// says why. Round trips.
    [[nodiscard]] bool grabKeyboards(FakedMotions& faked, TapGuardian& guardian);
    /// True if keyboards that couldn't be had are another program's at present.
    [[nodiscard]] bool keyboardsAreTaken() const { return m_keyboards && m_keyboards->areTakenByOthers(); }
    /// Lets the keyboards go. Their earlier events can still be read.
    void letGo();
    /// To be called after letGo() and after the last key was injected.
    void restoreHeldKeys(const KeyInjector::Held& held);

    /// Reads and handles the next event, after the answer that is awaited. False when there is none.
    bool readNext();

private:
    void readAgain();
    void readInput(const xcb_generic_event_t& event);
    void readRawKey(const xcb_generic_event_t& event);
    void readKey(const xcb_input_key_press_event_t& event);
    void readHierarchy(const xcb_input_hierarchy_event_t& event);
    void readKeyboardSettings(const xcb_generic_event_t& event);

    InputConnection& m_connection;
    KeyInjector& m_injector;
    const Log m_log;
    TapGuardian* m_guardian = nullptr;
    std::unique_ptr<GrabbedKeyboards> m_keyboards;
};

} // namespace orvane
