// The page of settings for the suite as a whole: start-up, menu bar, permissions, the shortcut of the window,
// about. Main thread.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"
#include "OrvaneCore/Capability/CapabilityRegistry.h"
#include "OrvaneCore/Permissions/SystemPermission.h"
#include "OrvaneKit/Model/OrvaComposite.h"

#include <chrono>

namespace orvane {

class AppPreferences;
class HomeNavigation;
class PermissionManager;

struct GeneralSettingsView {
    static constexpr std::chrono::milliseconds tick{2000};
    static QString permissionsAnchor() { return QStringLiteral("general.permissions"); }

    std::shared_ptr<AppPreferences> preferences;
    std::shared_ptr<PermissionManager> permissions;
    std::shared_ptr<CapabilityRegistry> registry;
    std::shared_ptr<HomeNavigation> navigation;
    /// The section of the program's updates; left out when it is empty.
    AnyView updates = {};

    [[nodiscard]] AnyView body() const;
    [[nodiscard]] QList<AnyView> children() const { return {body()}; }

    /// Returns the capabilities that a permission is for: "Required by A, B · Optional for C", or the
    /// permission's own explanation when none lists it.
    static QString usageText(SystemPermission permission, const QList<CapabilityRegistry::Entry>& entries);
};

} // namespace orvane
