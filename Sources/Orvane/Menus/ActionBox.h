// Carries a capability's menu entry, and with it a closure, as the represented object of a menu item.
#pragma once

#include "OrvaneCore/Capability/Capability.h"

namespace orvane {

struct ActionBox {
    MenuBarItem item;
};

} // namespace orvane
