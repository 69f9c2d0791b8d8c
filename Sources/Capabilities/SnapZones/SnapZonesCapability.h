// Windows snap into halves, quarters and more: by drag, by shortcut, from a panel of layouts.
#pragma once

#include "OrvaneCore/Capability/Capability.h"

namespace orvane {

class SnapZonesController;
class SnapZonesService;

class SnapZonesCapability : public Capability, public std::enable_shared_from_this<SnapZonesCapability> {
public:
    static const CapabilityMetadata& metadata();

    const CapabilityMetadata& classMetadata() const override { return metadata(); }
    QList<PermissionRequirement> permissionRequirements() const override;
    QList<HotkeyAction> hotkeyActions() override;
    Task<> activate(CapabilityContext context) override;
    Task<> deactivate() override;
    Task<> uninstall(CapabilityContext context) override;
    AnyView makeSettingsPane(CapabilityContext context) override;
    QList<MenuBarItem> menuBarContributions() override;

private:
    using Use = std::function<void(SnapZonesController&)>;

    std::shared_ptr<SnapZonesController> controller(const CapabilityContext& context);
    /// For handlers, which outlive the capability and come before its controller: does nothing then.
    std::function<void()> weakly(Use use);

    std::shared_ptr<SnapZonesController> m_controller;
    std::shared_ptr<SnapZonesService> m_service;
};

} // namespace orvane
