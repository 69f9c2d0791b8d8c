// Everything of the system that a capability may use, in one value. Main thread.
#pragma once

#include "OrvaneCore/Base/Log.h"
#include "OrvaneCore/Capability/BackgroundService.h"
#include "OrvaneCore/Capability/CapabilityMetadata.h"
#include "OrvaneCore/Preferences/ScopedPreferences.h"

#include <memory>

namespace orvane {

class EventTapService;
class PermissionManager;

struct AppInfo {
    QString bundleID;
    /// The marketing version; "0" when the bundle has none.
    QString version;
    /// The capability's private folder, an absolute path. The code that writes into it creates it.
    QString supportDirectory;

    /// Ends the process when the user has no application support directory at all.
    static AppInfo current(const CapabilityID& id);
};

/// Made once for each capability at registration. Copies share the services.
struct CapabilityContext {
    CapabilityID id;
    ScopedPreferences preferences;
    std::shared_ptr<PermissionManager> permissions;
    /// Holds this capability's services.
    std::shared_ptr<ServiceHost> serviceHost;
    std::shared_ptr<EventTapService> eventTap;
    Logger logger;
    AppInfo appInfo;
};

} // namespace orvane
