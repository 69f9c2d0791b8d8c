// The status item of Awake: a click toggles, a right click or Control-click opens a menu. Main thread.
#pragma once

#include "Platform/Menu.h"

#include <memory>

namespace orvane {

class AwakeController;
class StatusItem;
struct StatusItemEvent;

class AwakeMenuBar {
public:
    /// Makes the status item, which exists for the life of this object.
    explicit AwakeMenuBar(std::weak_ptr<AwakeController> controller);
    ~AwakeMenuBar();
    AwakeMenuBar(const AwakeMenuBar&) = delete;
    AwakeMenuBar& operator=(const AwakeMenuBar&) = delete;

    /// Shows if the controller is awake; one that is gone isn't.
    void refreshIcon();

private:
    void clicked(const StatusItemEvent* currentEvent);
    void showMenu();
    Menu makeMenu(const AwakeController& controller);
    void toggleAwake();
    void pickDuration(const MenuItem& item);
    void openSettings();

    std::weak_ptr<AwakeController> m_controller;
    std::unique_ptr<StatusItem> m_statusItem;
    /// A menu action comes later than the click, when this object may be gone.
    std::shared_ptr<AwakeMenuBar*> m_self = std::make_shared<AwakeMenuBar*>(this);
};

} // namespace orvane
