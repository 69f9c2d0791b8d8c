#include "PlatformLinux/Overlays/InputGrabs.h"

#include "PlatformLinux/X11/KeyboardMapping.h"

#include <cstdlib>

#include <xcb/xcbext.h>
#include <xcb/xinput.h>

namespace orvane {

namespace {

using namespace std::chrono_literals;

constexpr auto longestRelease = 1s;
constexpr auto lookInterval = 10ms;
/// The server numbers its devices, and this is its first pointer.
constexpr std::uint16_t firstPointer = 2;
constexpr unsigned buttons =
    XCB_BUTTON_MASK_1 | XCB_BUTTON_MASK_2 | XCB_BUTTON_MASK_3 | XCB_BUTTON_MASK_4 | XCB_BUTTON_MASK_5;

std::uint16_t pointerOfClients(ApplicationLink& x)
{
    XExchange exchange = x.exchange();
    const auto reply = exchange.reply<xcb_input_xi_get_client_pointer_reply_t>(
        xcb_input_xi_get_client_pointer(x.xcb(), XCB_WINDOW_NONE));
    return reply && reply->set ? reply->deviceid : firstPointer;
}

} // namespace

std::shared_ptr<InputGrabs> InputGrabs::make()
{
    const auto toolkit = X11Connection::ofApplication();
    auto x = ApplicationLink::get();
    if (!toolkit || !x)
        return nullptr;
    return std::shared_ptr<InputGrabs>(new InputGrabs(*toolkit, std::move(x)));
}

InputGrabs::InputGrabs(const X11Connection& toolkit, std::shared_ptr<ApplicationLink> x)
    : m_toolkit(toolkit), m_x(std::move(x)), m_pointer(pointerOfClients(*m_x))
{
    m_releases.setInterval(lookInterval);
    QObject::connect(&m_releases, &QTimer::timeout, &m_releases, [this] { letGoIfReleased(); });
}

InputGrabs::~InputGrabs()
{
    forget();
}

void InputGrabs::ask(xcb_window_t window)
{
    m_releases.stop();
    forget();
    constexpr std::uint8_t onlyToWindow = 0;
    constexpr std::uint32_t mouseEvents = XCB_INPUT_XI_EVENT_MASK_BUTTON_PRESS |
                                          XCB_INPUT_XI_EVENT_MASK_BUTTON_RELEASE |
                                          XCB_INPUT_XI_EVENT_MASK_MOTION;
    xcb_connection_t* xcb = m_toolkit.xcb();
    const auto keyboard = xcb_grab_keyboard(xcb, onlyToWindow, window, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC,
                                            XCB_GRAB_MODE_ASYNC);
    const auto pointer = xcb_input_xi_grab_device(xcb, window, XCB_CURRENT_TIME, XCB_CURSOR_NONE, m_pointer,
                                                  XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_INPUT_GRAB_MODE_22_ASYNC,
                                                  XCB_INPUT_GRAB_OWNER_NO_OWNER, 1, &mouseEvents);
    xcb_flush(xcb);
    m_keyboardQuestion = {.sequence = keyboard.sequence};
    m_pointerQuestion = {.sequence = pointer.sequence};
}

InputGrabs::State InputGrabs::look()
{
    lookFor<xcb_grab_keyboard_reply_t>(m_keyboardQuestion);
    lookFor<xcb_input_xi_grab_device_reply_t>(m_pointerQuestion);
    if (!m_keyboardQuestion.isAnswered || !m_pointerQuestion.isAnswered)
        return State::unanswered;
    return m_keyboardQuestion.isGranted && m_pointerQuestion.isGranted ? State::granted : State::refused;
}

template <typename Reply>
void InputGrabs::lookFor(Question& question) const
{
    void* reply = nullptr;
    xcb_generic_error_t* error = nullptr;
    if (question.isAnswered || xcb_poll_for_reply(m_toolkit.xcb(), question.sequence, &reply, &error) == 0)
        return;
    question.isAnswered = true;
    question.isGranted = reply && static_cast<Reply*>(reply)->status == XCB_GRAB_STATUS_SUCCESS;
    std::free(reply);
    std::free(error);
}

void InputGrabs::forget()
{
    for (const Question& question : {m_keyboardQuestion, m_pointerQuestion}) {
        if (question.sequence != 0 && !question.isAnswered)
            xcb_discard_reply(m_toolkit.xcb(), question.sequence);
    }
    m_keyboardQuestion = {};
    m_pointerQuestion = {};
}

void InputGrabs::letGo()
{
    m_releases.stop();
    forget();
    xcb_ungrab_keyboard(m_toolkit.xcb(), XCB_CURRENT_TIME);
    m_toolkit.ignoreErrors(xcb_input_xi_ungrab_device_checked(m_toolkit.xcb(), XCB_CURRENT_TIME, m_pointer));
    xcb_flush(m_toolkit.xcb());
}

void InputGrabs::letGoWhenReleased()
{
    // The window that had the events may go now, which would end the grabs.
    askForRoot();
    forget();
    m_awaited = keysDown();
    m_releaseDeadline = std::chrono::steady_clock::now() + longestRelease;
    m_releases.start();
    letGoIfReleased();
}

void InputGrabs::letGoIfReleased()
{
    const auto pointer = m_x->pointer();
    const bool isButtonDown = pointer && (pointer->mask & buttons) != 0;
    m_awaited &= keysDown();
    if ((isButtonDown || m_awaited.any()) && std::chrono::steady_clock::now() < m_releaseDeadline)
        return;
    letGo();
}

KeySet InputGrabs::keysDown() const
{
    XExchange exchange = m_x->exchange();
    return orvane::keysDown(exchange, xcb_query_keymap(m_x->xcb()));
}

} // namespace orvane
