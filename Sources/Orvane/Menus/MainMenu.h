// The application's menu bar. It has the edit commands that text fields rely on; the desktop decides whether
// it can be seen. Main thread.
#pragma once

#include "Platform/Menu.h"

#include <memory>

namespace orvane::MainMenu {

/// Makes the menu, and its "Window" menu the application's windows menu. Without a way to look for updates
/// there is no entry that offers it.
std::shared_ptr<Menu> build(MenuItem::Action checkForUpdates = {});

} // namespace orvane::MainMenu
