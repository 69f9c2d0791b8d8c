// Points at a pixel of the screen and copies its colour.
#pragma once

#include "Capabilities/ColorPicker/ColorPickerController.h"
#include "OrvaneCore/Capability/ControllerCapability.h"

namespace orvane {

class ColorPickerCapability final : public ControllerCapability<ColorPickerController> {
public:
    static const CapabilityMetadata& metadata();

    [[nodiscard]] const CapabilityMetadata& classMetadata() const override { return metadata(); }
    [[nodiscard]] QList<PermissionRequirement> permissionRequirements() const override;
    QList<HotkeyAction> hotkeyActions() override;
    QList<MenuBarItem> menuBarContributions() override;

private:
    std::shared_ptr<ColorPickerController> makeController(const CapabilityContext& context) override;
    AnyView makePane(const std::shared_ptr<ColorPickerController>& controller) override;
};

} // namespace orvane
