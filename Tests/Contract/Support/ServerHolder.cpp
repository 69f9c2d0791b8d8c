#include "Contract/Support/ServerHolder.h"

#include <chrono>

#include <xcb/xtest.h>

namespace orvane::tests {

ServerHolder::ServerHolder() : m_connection(xcb_connect(nullptr, nullptr))
{
    m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection.get())).data->root;
}

ServerHolder::~ServerHolder()
{
    (void)letGo();
}

void ServerHolder::hold()
{
    xcb_grab_server(m_connection.get());
    synchronize();
    m_isHolding = true;
    m_hadToLetGo = false;
    m_limit = std::thread([this] {
        std::unique_lock lock(m_mutex);
        m_letsGo.wait_for(lock, std::chrono::seconds(20), [this] { return !m_isHolding; });
        m_hadToLetGo = m_isHolding;
        m_isHolding = false;
        xcb_ungrab_server(m_connection.get());
        xcb_flush(m_connection.get());
    });
}

bool ServerHolder::letGo()
{
    {
        const std::scoped_lock lock(m_mutex);
        m_isHolding = false;
    }
    m_letsGo.notify_all();
    if (m_limit.joinable())
        m_limit.join();
    return !m_hadToLetGo;
}

void ServerHolder::movePointer(QPoint place)
{
    fake(XCB_MOTION_NOTIFY, 0, place);
}

void ServerHolder::fakeButton(std::uint8_t button, bool goesDown)
{
    fake(goesDown ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE, button, {});
}

void ServerHolder::fake(std::uint8_t type, std::uint8_t detail, QPoint place)
{
    xcb_test_fake_input(m_connection.get(), type, detail, XCB_CURRENT_TIME, m_root,
                        static_cast<std::int16_t>(place.x()), static_cast<std::int16_t>(place.y()), 0);
    synchronize();
}

void ServerHolder::synchronize()
{
    const XcbReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(m_connection.get(), xcb_get_input_focus(m_connection.get()), nullptr));
}

} // namespace orvane::tests
