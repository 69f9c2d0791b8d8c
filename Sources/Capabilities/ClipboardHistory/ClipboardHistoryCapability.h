// Keeps a searchable history of what is copied.
#pragma once

#include "OrvaneCore/Capability/Capability.h"

namespace orvane {

class ClipboardHistoryController;
class ClipboardWatcherService;

class ClipboardHistoryCapability : public Capability,
                                   public std::enable_shared_from_this<ClipboardHistoryCapability> {
public:
    static const CapabilityMetadata& metadata();

    const CapabilityMetadata& classMetadata() const override { return metadata(); }
    QList<PermissionRequirement> permissionRequirements() const override;
    QList<HotkeyAction> hotkeyActions() override;
    Task<> install(CapabilityContext context) override;
    Task<> activate(CapabilityContext context) override;
    Task<> deactivate() override;
    Task<> uninstall(CapabilityContext context) override;
    AnyView makeSettingsPane(CapabilityContext context) override;
    QList<MenuBarItem> menuBarContributions() override;

private:
    std::shared_ptr<ClipboardHistoryController> controller(const CapabilityContext& context);

    std::shared_ptr<ClipboardHistoryController> m_controller;
    std::shared_ptr<ClipboardWatcherService> m_service;
};

} // namespace orvane
