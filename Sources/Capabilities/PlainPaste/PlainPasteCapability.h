// A hot key that pastes the clipboard without its formatting.
#pragma once

#include "OrvaneCore/Capability/Capability.h"

namespace orvane {

class PlainPasteController;

class PlainPasteCapability : public Capability, public std::enable_shared_from_this<PlainPasteCapability> {
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
    std::shared_ptr<PlainPasteController> controller(const CapabilityContext& context);

    std::shared_ptr<PlainPasteController> m_controller;
};

} // namespace orvane
