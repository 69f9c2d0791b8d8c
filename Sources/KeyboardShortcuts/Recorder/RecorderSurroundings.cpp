#include "KeyboardShortcuts/Recorder/RecorderDecision.h"
#include "KeyboardShortcuts/Registration/CarbonKeyboardShortcuts.h"
#include "Platform/Application.h"
#include "Platform/InputSources.h"
#include "Platform/Platform.h"

namespace orvane::KeyboardShortcuts {

namespace {

std::optional<QString> titleOfMenuItemWith(const Shortcut& shortcut)
{
    const Application& application = platform().application;
    const std::shared_ptr<const Menu> menu = application.mainMenu();
    if (!menu)
        return std::nullopt;
    // The menus may have other modifiers than the model. Only the keys that really choose an item are taken.
    const Shortcut inMenus(Key{shortcut.carbonKeyCode},
                           application.keyEquivalentModifiers(shortcut.modifiers()));
    const MenuItem* item = inMenus.menuItemWithMatchingShortcut(*menu);
    return item ? std::optional(item->title) : std::nullopt;
}

} // namespace

RecorderSurroundings RecorderSurroundings::of(const QRectF& bounds)
{
    return {
        .bounds = bounds,
        .isNamed = [](std::int64_t keyCode) { return platform().inputSources.keyName(keyCode).has_value(); },
        .menuItemTitle = titleOfMenuItemWith,
        .isUsedBySystem =
            [](const Shortcut& shortcut) { return CarbonKeyboardShortcuts::system().contains(shortcut); }};
}

} // namespace orvane::KeyboardShortcuts
