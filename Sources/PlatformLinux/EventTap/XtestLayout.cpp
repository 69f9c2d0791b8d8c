#include "PlatformLinux/EventTap/XtestLayout.h"

#include "PlatformLinux/EventTap/DeviceKeymap.h"

#include <algorithm>
#include <vector>

namespace orvane {

namespace {

/// Returns the keymap that most of them have, of equals the first one; an empty one where there is none.
DeviceKeymap mostCommon(const std::vector<DeviceKeymap>& keymaps)
{
    const auto users = [&](const DeviceKeymap& keymap) {
        return std::ranges::count_if(keymaps,
                                     [&](const DeviceKeymap& each) { return each.hasKeysOf(keymap); });
    };
    const auto found = std::ranges::max_element(keymaps, {}, users);
    return found == keymaps.end() ? DeviceKeymap() : *found;
}

} // namespace

std::string bringXtestIntoTheUsersLayout(InputConnection& connection)
{
    const Keyboards present = connection.keyboards();
    if (present.xtest == 0)
        return {}; // an unanswered question; whoever needs the keyboards asks again
    DeviceKeymap users;
    if (present.lastUsed != present.xtest && present.lastUsed != present.master) {
        users = DeviceKeymap::of(connection, present.master);
    } else {
        // The master has the keymap of the XTEST keyboard, or the one with which the server began.
        const DeviceKeymap xtest = DeviceKeymap::of(connection, present.xtest);
        std::vector<DeviceKeymap> keymaps;
        for (const KeyboardDevice& device : present.hardware) {
            DeviceKeymap keymap = DeviceKeymap::of(connection, device.id);
            if (!keymap.isEmpty())
                keymaps.push_back(std::move(keymap));
        }
        const auto agrees = std::ranges::find_if(
            keymaps, [&](const DeviceKeymap& keymap) { return keymap.hasKeysOf(xtest); });
        users = agrees == keymaps.end() ? mostCommon(keymaps) : xtest;
    }
    if (users.isEmpty())
        return {};
    // The master's keymap follows with the first key. The meaning of that key must be known before.
    const std::string problem = users.applyTo(connection, present.xtest);
    return problem.empty() ? users.applyTo(connection, present.master) : problem;
}

} // namespace orvane
