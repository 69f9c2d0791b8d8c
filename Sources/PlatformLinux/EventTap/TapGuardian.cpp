#include "PlatformLinux/EventTap/TapGuardian.h"

#include "PlatformLinux/EventTap/GrabbedKeyboards.h"
#include "PlatformLinux/X11/InputConnection.h"

#include <string_view>

#include <unistd.h>

#include <xcb/xinput.h>

namespace orvane {

TapGuardian::TapGuardian(InputConnection& connection, QByteArray program, Log log)
    : m_connection(connection), m_program(std::move(program)), m_log(std::move(log))
{
    // Its end shows the guardian that our last key has gone through.
    xcb_connection_t* xcb = connection.xcb();
    m_window = xcb_generate_id(xcb);
    xcb_create_window(xcb, 0, m_window, connection.root(), -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, 0, nullptr);
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

void TapGuardian::watch(short happened)
{
    if (happened == 0)
        return;
    m_connection.synchronize();
    if (m_connection.isLost())
        return; // it went with the server, as it should, or has ended our connection
    m_link.reset();
    if (m_wasReplaced) {
        m_log(LogLevel::error, "The guardian of the keyboard died again; a crash can leave a key pressed.");
        return;
    }
    m_wasReplaced = true;
    m_log(LogLevel::notice, "The guardian of the keyboard died; another one takes its place.");
    startProcess();
}

} // namespace orvane
