#include "PlatformLinux/Guardian/KeyWatch.h"

#include <algorithm>
#include <fstream>
#include <string>

#include <xcb/xinput.h>

namespace orvane {

namespace {

using namespace std::chrono_literals;

/// The time from a key to the first look, and to each further one.
constexpr auto lookInterval = 400ms;
/// The tap gives a hung main thread a second and then frees the keyboards itself. A program that takes longer
/// is stuck, whatever the system calls its state.
constexpr auto longestWait = 1600ms;

} // namespace

KeyWatch::KeyWatch(InputConnection& connection, SharedPulse pulse, pid_t program)
    : m_connection(connection), m_pulse(std::move(pulse)), m_program(program)
{
    if (!m_pulse)
        return;
    m_typed = {.seen = Clock::now(), .time = std::nullopt, .keyboard = 0};
    m_nextLook = m_typed->seen + lookInterval;
}

/// Raw events come whichever client has grabbed the keyboard.
void KeyWatch::listen(bool listens)
{
    if (!listens)
        m_rawKeys.reset();
    else
        m_rawKeys = m_connection.link().selectInput(m_connection.link().root(), XCB_INPUT_DEVICE_ALL,
                                                    XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS |
                                                        XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE);
    m_connection.link().flush();
}

void KeyWatch::take(const xcb_generic_event_t& event)
{
    const auto& raw = reinterpret_cast<const xcb_input_raw_key_press_event_t&>(event);
    const bool isKey =
        (event.response_type & 0x7F) == XCB_GE_GENERIC && raw.extension == m_connection.xinputOpcode() &&
        (raw.event_type == XCB_INPUT_RAW_KEY_PRESS || raw.event_type == XCB_INPUT_RAW_KEY_RELEASE);
    // The keys that the tap presses come here too.
    if (!isKey || m_typed || !m_pulse->takes(raw.sourceid))
        return;
    listen(false);
    m_typed = {.seen = Clock::now(), .time = raw.time, .keyboard = raw.sourceid};
    m_nextLook = m_typed->seen + lookInterval;
}

int KeyWatch::timeout() const
{
    if (!m_typed)
        return -1;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(m_nextLook - Clock::now());
    return static_cast<int>(std::max(left, 0ms).count());
}

KeyWatch::Finding KeyWatch::look()
{
    if (!m_typed || Clock::now() < m_nextLook)
        return Finding::fine;
    const bool isSlow = Clock::now() - m_typed->seen >= longestWait;
    // When a keyboard is pulled out its keys come up, and nobody takes those.
    const bool isTaken =
        !m_typed->time || m_pulse->hasTakenSince(*m_typed->time) || !m_pulse->takes(m_typed->keyboard);
    if (programStandsStill() || (!isTaken && isSlow)) {
        if (canBeFreed())
            return Finding::stuck;
    } else if (!isTaken) {
        m_nextLook += lookInterval;
        return Finding::fine;
    }
    m_typed.reset();
    listen(true);
    return Finding::fine;
}

/// Servers up to 21.1 don't notice that a device's grab is over when the client ends while the device is
/// disabled, and crash at its next key. Such a keyboard types nothing anyway: the next key asks again.
bool KeyWatch::canBeFreed()
{
    const Keyboards present = m_connection.keyboards();
    for (DeviceId id = 0; id < TapPulse::deviceLimit; ++id) {
        const bool isEnabled = std::ranges::any_of(
            present.hardware, [&](const KeyboardDevice& device) { return device.id == id; });
        if (m_pulse->takes(id) && !isEnabled)
            return false;
    }
    return true;
}

/// True if the tap's thread was stopped, by a signal or by a debugger.
bool KeyWatch::programStandsStill() const
{
    std::ifstream file("/proc/" + std::to_string(m_program) + "/task/" + std::to_string(m_pulse->thread()) +
                       "/stat");
    std::string line;
    std::getline(file, line);
    // The state follows the name, which may contain any characters.
    const std::size_t state = line.rfind(')') + 2;
    return state < line.size() && (line[state] == 'T' || line[state] == 't');
}

} // namespace orvane
