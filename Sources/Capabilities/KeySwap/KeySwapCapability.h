// Turns Ctrl+C, Ctrl+V and similar chords into Command shortcuts.
#pragma once

#include "Capabilities/KeySwap/KeySwapController.h"
#include "OrvaneCore/Capability/ControllerCapability.h"

namespace orvane {

class KeySwapCapability final : public ControllerCapability<KeySwapController> {
public:
    static const CapabilityMetadata& metadata();

    [[nodiscard]] const CapabilityMetadata& classMetadata() const override { return metadata(); }
    [[nodiscard]] QList<PermissionRequirement> permissionRequirements() const override;

private:
    std::shared_ptr<KeySwapController> makeController(const CapabilityContext& context) override;
    AnyView makePane(const std::shared_ptr<KeySwapController>& controller) override;
};

} // namespace orvane
