#include "Orvane/Shortcuts/HotkeyManager.h"

#include "KeyboardShortcuts/KeyboardShortcuts.h"

#include <utility>

namespace orvane {

void HotkeyManager::registerHotkey(const QString& id, IsActive isActive, Handler handler)
{
    KeyboardShortcuts::onKeyUp(KeyboardShortcuts::Name(id),
                               [isActive = std::move(isActive), handler = std::move(handler)] {
                                   if (isActive())
                                       handler();
                               });
}

void HotkeyManager::registerAppLevel(const QString& id, Handler handler)
{
    KeyboardShortcuts::onKeyUp(KeyboardShortcuts::Name(id), std::move(handler));
}

} // namespace orvane
