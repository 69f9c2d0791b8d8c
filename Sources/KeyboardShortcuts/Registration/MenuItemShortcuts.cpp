#include "KeyboardShortcuts/Registration/MenuItemShortcuts.h"

#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "Platform/NotificationCenter.h"
#include "Platform/Platform.h"
#include "Platform/RunLoop.h"

#include <thread>

namespace orvane::KeyboardShortcuts {

namespace {

// Static objects are made on the main thread.
const std::thread::id mainThread = std::this_thread::get_id();

void apply(MenuItem& item, const std::optional<Shortcut>& shortcut)
{
    item.keyEquivalent = shortcut ? shortcut->keyEquivalent() : QString();
    item.keyEquivalentModifierMask = shortcut ? shortcut->modifiers() : 0;
    if (shortcut)
        item.allowsAutomaticKeyEquivalentLocalization = false;
}

} // namespace

void setShortcutFor(const std::shared_ptr<MenuItem>& item, const std::optional<Name>& name)
{
    if (!name) {
        item->association.reset();
        item->keyEquivalent.clear();
        item->keyEquivalentModifierMask = 0;
        item->allowsAutomaticKeyEquivalentLocalization = true;
        return;
    }
    setShortcut(item, getShortcut(*name));
    const auto follow = [name = *name, weakItem = std::weak_ptr(item)](const Notification& notification) {
        const auto bound = weakItem.lock();
        if (bound && changedName(notification) == name)
            setShortcut(bound, getShortcut(name));
    };
    item->association =
        platform().defaultNotificationCenter.addObserver(shortcutByNameDidChangeNotification(), follow);
}

void setShortcut(const std::shared_ptr<MenuItem>& item, const std::optional<Shortcut>& shortcut)
{
    // Only the main thread may ask what a key prints.
    if (std::this_thread::get_id() == mainThread) {
        apply(*item, shortcut);
        return;
    }
    platform().mainRunLoop.perform([weakItem = std::weak_ptr(item), shortcut] {
        if (const auto later = weakItem.lock())
            apply(*later, shortcut);
    });
}

} // namespace orvane::KeyboardShortcuts
