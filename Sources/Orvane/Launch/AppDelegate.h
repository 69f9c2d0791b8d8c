// The application's delegate: takes the launched process to the first capability. Main thread.
#pragma once

#include "OrvaneCore/Base/Observable.h"
#include "Platform/Application.h"
#include "Platform/NotificationCenter.h"

#include <functional>
#include <memory>

namespace orvane {

class AppEnvironment;
class MenuBarController;
class VisibleEntry;

class AppDelegate : public ApplicationDelegate {
public:
    /// The function is called at launch, not before.
    explicit AppDelegate(std::function<std::shared_ptr<AppEnvironment>()> environment);
    ~AppDelegate() override;

    void applicationDidFinishLaunching() override;
    /// Shows the home window; always true.
    bool applicationShouldHandleReopen(bool hasVisibleWindows) override;

private:
    std::function<std::shared_ptr<AppEnvironment>()> m_makeEnvironment;
    std::shared_ptr<AppEnvironment> m_environment;
    Cancellables m_cancellables;
    std::unique_ptr<NotificationCenter::Token> m_openHomeObserver;
    std::shared_ptr<MenuBarController> m_menuBar;
    std::shared_ptr<VisibleEntry> m_visibleEntry;
};

} // namespace orvane
