#include "PlatformLinux/Tray/StatusItemClicks.h"

namespace orvane {

void StatusItemClicks::click(const StatusItemEvent& event)
{
    if (m_menu) {
        openAttachedMenu();
    } else if (const auto action = m_action) {
        action(&event);
    }
}

void StatusItemClicks::performClick()
{
    if (m_menu) {
        openAttachedMenu();
        return;
    }
    // An action that performs a click with no menu attached would call itself for ever.
    const auto action = m_action;
    if (!action || m_performingClick)
        return;
    const std::weak_ptr<int> alive = m_alive;
    m_performingClick = true;
    action(nullptr);
    if (!alive.expired())
        m_performingClick = false;
}

void StatusItemClicks::openAttachedMenu()
{
    const auto menuNeedsUpdate = m_menu;
    const auto capture = m_capture;
    const std::weak_ptr<int> alive = m_alive;
    Menu menu = menuNeedsUpdate();
    if (capture)
        *capture = std::move(menu);
    else if (!alive.expired())
        m_openMenu(menu);
}

Menu StatusItemClicks::menuForHost()
{
    if (const auto menuNeedsUpdate = m_menu)
        return menuNeedsUpdate();
    const auto action = m_action;
    if (!action || m_capture)
        return {};

    const auto capture = std::make_shared<std::optional<Menu>>();
    const std::weak_ptr<int> alive = m_alive;
    m_capture = capture;
    const StatusItemEvent rightClick{StatusItemEvent::Type::rightMouseUp, 0};
    action(&rightClick);
    if (!alive.expired())
        m_capture.reset();
    return capture->value_or(Menu());
}

} // namespace orvane
