// The application's menu bar. It has the edit commands that text fields need; the desktop decides whether it
// can be seen. Main thread.
#pragma once

#include "Platform/Menu.h"

#include <memory>

namespace orvane::MainMenu {

/// Makes the menu, and makes its "Window" menu the application's windows menu. Without `checkForUpdates`
/// there is no entry for updates.
std::shared_ptr<Menu> build(MenuItem::Action checkForUpdates = {});

} // namespace orvane::MainMenu
