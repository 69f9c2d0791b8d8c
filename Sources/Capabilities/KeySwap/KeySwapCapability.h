// Ctrl+C, Ctrl+V and their like become Command shortcuts.
#pragma once

#include "OrvaneCore/Capability/Capability.h"

namespace orvane {

class KeySwapController;
class KeySwapService;

class KeySwapCapability : public Capability {
public:
    static const CapabilityMetadata& metadata();

    const CapabilityMetadata& classMetadata() const override { return metadata(); }
    QList<PermissionRequirement> permissionRequirements() const override;
    Task<> activate(CapabilityContext context) override;
    Task<> deactivate() override;
    Task<> uninstall(CapabilityContext context) override;
    AnyView makeSettingsPane(CapabilityContext context) override;

private:
    std::shared_ptr<KeySwapController> controller(const CapabilityContext& context);

    std::shared_ptr<KeySwapController> m_controller;
    std::shared_ptr<KeySwapService> m_service;
};

} // namespace orvane
