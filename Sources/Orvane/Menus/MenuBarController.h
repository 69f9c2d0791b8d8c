// The suite's status item and its menu, whose content is made at each opening. Main thread.
#pragma once

#include "OrvaneCore/Capability/CapabilityRegistry.h"
#include "Platform/Menu.h"

#include <memory>

namespace orvane {

class AppEnvironment;
class StatusItem;

class MenuBarController : public std::enable_shared_from_this<MenuBarController> {
public:
    explicit MenuBarController(std::weak_ptr<AppEnvironment> environment);
    ~MenuBarController();
    MenuBarController(const MenuBarController&) = delete;
    MenuBarController& operator=(const MenuBarController&) = delete;

    void setVisible(bool visible);
    /// Returns the menu for the present state of the registry.
    Menu menuNeedsUpdate();

private:
    MenuItem actionItem(const QString& title, const QString& symbol, void (MenuBarController::*action)());
    MenuItem capabilityItem(const CapabilityRegistry::Entry& entry);
    static void runAction(const MenuItem& sender);
    void openHome();
    void quitApp();

    std::weak_ptr<AppEnvironment> m_environment;
    std::unique_ptr<StatusItem> m_statusItem;
};

} // namespace orvane
