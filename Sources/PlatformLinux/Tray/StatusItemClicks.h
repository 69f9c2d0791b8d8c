// The meaning of a click on a status item: it opens the attached menu, or calls the action, which may attach
// a menu for the time of a performClick(). Also answers a desktop that wants the menu of a right click
// beforehand. Uses no toolkit. Main thread.
#pragma once

#include "Platform/StatusBar.h"

#include <memory>
#include <optional>

namespace orvane {

class StatusItemClicks {
public:
    /// Shows a menu where the item stands; must return at once.
    using Opener = std::function<void(const Menu&)>;

    explicit StatusItemClicks(Opener openMenu) : m_openMenu(std::move(openMenu)) {}

    void setAction(StatusItem::Action action) { m_action = std::move(action); }
    void setMenu(StatusItem::MenuDelegate menu) { m_menu = std::move(menu); }
    [[nodiscard]] bool hasMenu() const { return static_cast<bool>(m_menu); }

    /// Handles a user's click. The action may destroy this object.
    void click(const StatusItemEvent& event);
    void performClick();

    /// Returns the menu that a right click would open: the attached one, or the one that the action opens
    /// when it is told of a right click. Nothing is shown. Empty if no menu would open.
    [[nodiscard]] Menu menuForHost();

private:
    void openAttachedMenu();

    Opener m_openMenu;
    StatusItem::Action m_action;
    StatusItem::MenuDelegate m_menu;
    /// Receives the menu while a right click is only tried.
    std::shared_ptr<std::optional<Menu>> m_capture;
    bool m_performingClick = false;
    std::shared_ptr<int> m_alive = std::make_shared<int>();
};

} // namespace orvane
