// An application object without an event loop.
#pragma once

#include "Platform/Application.h"

#include <QStringList>

#include <functional>

namespace orvane {

class FakeApplication : public Application {
public:
    [[nodiscard]] StartedBy startedBy() const override { return starter; }
    void setDelegate(ApplicationDelegate* newDelegate) override { delegate = newDelegate; }
    void setActivationPolicy(ActivationPolicy newPolicy) override { policy = newPolicy; }
    [[nodiscard]] ActivationPolicy activationPolicy() const override { return policy; }
    void activateIgnoringOtherApps() override { ++activations; }
    void setMainMenu(std::shared_ptr<Menu> newMenu) override { menu = std::move(newMenu); }
    [[nodiscard]] std::shared_ptr<const Menu> mainMenu() const override { return menu; }
    void setWindowsMenu(std::shared_ptr<Menu> newMenu) override { windowsMenu = std::move(newMenu); }
    [[nodiscard]] EventFlags keyEquivalentModifiers(EventFlags pressed) const override
    {
        return menuKeys ? menuKeys(pressed) : pressed;
    }
    bool sendAction(QStringView selector) override
    {
        sentActions.append(selector.toString());
        return takesActions;
    }
    void hide() override { ++hidings; }
    void orderFrontStandardAboutPanel() override { ++aboutPanels; }
    void terminate() override { ++terminations; }

    StartedBy starter = StartedBy::person;
    ApplicationDelegate* delegate = nullptr;
    ActivationPolicy policy = ActivationPolicy::accessory;
    std::shared_ptr<Menu> menu;
    std::shared_ptr<Menu> windowsMenu;
    /// Null where a menu's modifiers are those of the keyboard.
    std::function<EventFlags(EventFlags pressed)> menuKeys;
    QStringList sentActions;
    /// True if the object with the focus takes what is sent.
    bool takesActions = true;
    int activations = 0;
    int hidings = 0;
    int aboutPanels = 0;
    int terminations = 0;
};

} // namespace orvane
