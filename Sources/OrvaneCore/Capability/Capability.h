// The contract of a feature that the user can switch on and off. Main thread, asynchronous operations
// included; they may suspend.
//
// A constructor does no work: real objects are made on first need, by `activate` or by the settings pane.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"
#include "OrvaneCore/Base/Task.h"
#include "OrvaneCore/Capability/CapabilityContext.h"
#include "OrvaneCore/Capability/CapabilityMetadata.h"
#include "OrvaneCore/Permissions/SystemPermission.h"

#include <QList>

#include <functional>
#include <optional>

namespace orvane {

struct PermissionRequirement {
    /// Activation depends on required permissions only; an optional one is merely shown.
    enum class Level { required, optional };

    SystemPermission permission;
    Level level = Level::required;
    /// Tells the user what this feature does with the permission.
    std::optional<QString> note = std::nullopt;

    [[nodiscard]] QString id() const { return rawValue(permission); }
};

struct HotkeyAction {
    /// Also the name of the stored shortcut.
    QString id;
    QString title;
    std::function<void()> handler;
};

/// An entry of the capability in the suite's menu.
struct MenuBarItem {
    QString id;
    QString title;
    std::optional<QString> systemImage;
    std::function<void()> action;
};

class Capability {
public:
    virtual ~Capability() = default;

    /// A constant of the class; every class offers it as `static const CapabilityMetadata& metadata()` too.
    [[nodiscard]] virtual const CapabilityMetadata& classMetadata() const = 0;
    [[nodiscard]] virtual QList<PermissionRequirement> permissionRequirements() const { return {}; }
    virtual QList<HotkeyAction> hotkeyActions() { return {}; }

    /// Contexts are passed by value, so a suspended operation keeps its own. Runs at most once before the
    /// first activation, and may never run: rely on `activate` alone.
    virtual Task<> install(CapabilityContext context);
    /// Throws an error with readable text, which the user may get to see.
    virtual Task<> activate(CapabilityContext context) = 0;
    virtual Task<> deactivate() = 0;
    virtual Task<> uninstall(CapabilityContext context);

    /// Also called while the capability is off, so it must not activate anything.
    virtual AnyView makeSettingsPane(CapabilityContext context) = 0;
    /// Read at each opening of the status menu, so titles may follow the state.
    virtual QList<MenuBarItem> menuBarContributions() { return {}; }

    /// Returns the permissions of one level, in the order of declaration.
    [[nodiscard]] QList<SystemPermission> requiredPermissions() const;
    [[nodiscard]] QList<SystemPermission> optionalPermissions() const;
};

} // namespace orvane
