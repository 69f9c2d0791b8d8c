// Snaps windows into halves, quarters and more: by drag, by shortcut, from a panel of layouts.
#pragma once

#include "Capabilities/SnapZones/SnapZonesController.h"
#include "OrvaneCore/Capability/ControllerCapability.h"

namespace orvane {

class SnapZonesCapability final : public ControllerCapability<SnapZonesController> {
public:
    static const CapabilityMetadata& metadata();

    [[nodiscard]] const CapabilityMetadata& classMetadata() const override { return metadata(); }
    [[nodiscard]] QList<PermissionRequirement> permissionRequirements() const override;
    QList<HotkeyAction> hotkeyActions() override;
    QList<MenuBarItem> menuBarContributions() override;

private:
    std::shared_ptr<SnapZonesController> makeController(const CapabilityContext& context) override;
    AnyView makePane(const std::shared_ptr<SnapZonesController>& controller) override;
};

} // namespace orvane
