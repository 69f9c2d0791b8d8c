#include "OrvaneCore/Preferences/LaunchAtLogin.h"

#include "Platform/LoginItem.h"
#include "Platform/Platform.h"

namespace orvane {

bool LaunchAtLogin::isEnabled()
{
    return platform().loginItem.status() == LoginItem::Status::enabled;
}

void LaunchAtLogin::set(bool enabled)
{
    LoginItem& item = platform().loginItem;
    const bool present = item.status() == LoginItem::Status::enabled;
    if (enabled && !present)
        item.registerItem();
    else if (!enabled && present)
        item.unregisterItem();
}

} // namespace orvane
