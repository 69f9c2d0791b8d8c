// A hot key that pastes the clipboard without its formatting.
#pragma once

#include "Capabilities/PlainPaste/PlainPasteController.h"
#include "OrvaneCore/Capability/ControllerCapability.h"

namespace orvane {

class PlainPasteCapability final : public ControllerCapability<PlainPasteController> {
public:
    static const CapabilityMetadata& metadata();

    [[nodiscard]] const CapabilityMetadata& classMetadata() const override { return metadata(); }
    [[nodiscard]] QList<PermissionRequirement> permissionRequirements() const override;
    QList<HotkeyAction> hotkeyActions() override;
    QList<MenuBarItem> menuBarContributions() override;

private:
    [[nodiscard]] QString limitation() const override;
    std::shared_ptr<PlainPasteController> makeController(const CapabilityContext& context) override;
    AnyView makePane(const std::shared_ptr<PlainPasteController>& controller) override;
};

} // namespace orvane
