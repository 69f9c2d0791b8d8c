// Copies the text in any part of the screen that the user drags a box over.
#pragma once

#include "Capabilities/TextExtractor/TextExtractorController.h"
#include "OrvaneCore/Capability/ControllerCapability.h"

namespace orvane {

class TextExtractorCapability final : public ControllerCapability<TextExtractorController> {
public:
    static const CapabilityMetadata& metadata();

    [[nodiscard]] const CapabilityMetadata& classMetadata() const override { return metadata(); }
    [[nodiscard]] QList<PermissionRequirement> permissionRequirements() const override;
    QList<HotkeyAction> hotkeyActions() override;
    QList<MenuBarItem> menuBarContributions() override;

private:
    std::shared_ptr<TextExtractorController> makeController(const CapabilityContext& context) override;
    AnyView makePane(const std::shared_ptr<TextExtractorController>& controller) override;
};

} // namespace orvane
