// Keeps the machine from idle sleep on demand.
#pragma once

#include "OrvaneCore/Capability/Capability.h"

namespace orvane {

class AwakeController;
class AwakeService;

class AwakeCapability : public Capability, public std::enable_shared_from_this<AwakeCapability> {
public:
    static const CapabilityMetadata& metadata();

    const CapabilityMetadata& classMetadata() const override { return metadata(); }
    QList<HotkeyAction> hotkeyActions() override;
    Task<> activate(CapabilityContext context) override;
    Task<> deactivate() override;
    Task<> uninstall(CapabilityContext context) override;
    AnyView makeSettingsPane(CapabilityContext context) override;
    QList<MenuBarItem> menuBarContributions() override;

private:
    std::shared_ptr<AwakeController> controller(const CapabilityContext& context);

    std::shared_ptr<AwakeController> m_controller;
    std::shared_ptr<AwakeService> m_service;
};

} // namespace orvane
