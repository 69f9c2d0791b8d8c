// Helps to find the pointer: a spotlight for a moment, and crosshairs that follow it.
#pragma once

#include "Capabilities/MouseTools/MouseToolsController.h"
#include "OrvaneCore/Capability/ControllerCapability.h"

namespace orvane {

class MouseToolsCapability final : public ControllerCapability<MouseToolsController> {
public:
    static const CapabilityMetadata& metadata();

    [[nodiscard]] const CapabilityMetadata& classMetadata() const override { return metadata(); }
    [[nodiscard]] QList<PermissionRequirement> permissionRequirements() const override;
    QList<HotkeyAction> hotkeyActions() override;
    QList<MenuBarItem> menuBarContributions() override;

private:
    std::shared_ptr<MouseToolsController> makeController(const CapabilityContext& context) override;
    AnyView makePane(const std::shared_ptr<MouseToolsController>& controller) override;
};

} // namespace orvane
