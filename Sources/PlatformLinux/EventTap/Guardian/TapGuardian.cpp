#include "PlatformLinux/EventTap/Guardian/TapGuardian.h"

#include "PlatformLinux/EventTap/GrabbedKeyboards.h"
#include "PlatformLinux/X11/InputConnection.h"

#include <algorithm>
#include <string_view>

#include <unistd.h>

#include <xcb/xinput.h>

namespace orvane {

namespace {

using namespace std::chrono_literals;

/// The pause before a guardian is replaced for the second time. Each further pause is twice as long as the
/// one before it.
constexpr std::chrono::milliseconds shortestPause = 500ms;
/// A guardian that has lived longer than this is replaced at once.
constexpr std::chrono::milliseconds longestPause = 60s;

} // namespace

TapGuardian::TapGuardian(InputConnection& connection, QByteArray program, Log log)
    : m_connection(connection), m_program(std::move(program)), m_log(std::move(log))
{
    // Its end shows the guardian that our last key has gone through.
    xcb_connection_t* xcb = connection.link().xcb();
    m_window = xcb_generate_id(xcb);
    xcb_create_window(xcb, 0, m_window, connection.link().root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    constexpr std::string_view name = "Orvane event tap";
    xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, m_window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8,
                        name.size(), name.data());
}

void TapGuardian::start()
{
    if (m_pulse)
        m_pulse->setThread(static_cast<std::uint32_t>(::gettid()));
    startProcess();
}

void TapGuardian::startProcess()
{
    m_started = Clock::now();
    std::string problem;
    m_link = std::make_unique<GuardianLink>(m_program, m_window, m_pulse, problem);
    if (!problem.empty())
        m_log(LogLevel::error, problem);
}

void TapGuardian::noteTaken(const xcb_ge_generic_event_t& event)
{
    const bool isKey = event.event_type == XCB_INPUT_KEY_PRESS || event.event_type == XCB_INPUT_KEY_RELEASE;
    if (isKey && m_pulse)
        m_pulse->setTaken(reinterpret_cast<const xcb_input_key_press_event_t&>(event).time);
}

void TapGuardian::noteKeyboards(const GrabbedKeyboards& keyboards)
{
    for (DeviceId id = 0; m_pulse && id < TapPulse::deviceLimit; ++id)
        m_pulse->setTakes(id, keyboards.has(id));
}

int TapGuardian::timeout() const
{
    if (!m_nextStart)
        return -1;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(*m_nextStart - Clock::now());
    return static_cast<int>(std::max(left, 0ms).count());
}

void TapGuardian::watch(short happened)
{
    if (happened != 0 && m_link) {
        m_connection.synchronize();
        if (m_connection.link().isLost())
            return; // it went with the server, as it should, or has ended our connection
        m_link.reset();
        if (Clock::now() - m_started > longestPause)
            m_pause = 0ms;
        m_nextStart = Clock::now() + m_pause;
        m_pause = std::clamp(m_pause * 2, shortestPause, longestPause);
        m_log(LogLevel::notice,
              "The guardian of the keyboard died; another one takes its place. Until then a "
              "crash can leave a key pressed.");
    }
    if (m_nextStart && Clock::now() >= *m_nextStart) {
        m_nextStart.reset();
        startProcess();
    }
}

} // namespace orvane
