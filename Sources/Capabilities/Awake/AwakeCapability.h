// Keeps the machine from idle sleep on demand.
#pragma once

#include "Capabilities/Awake/AwakeController.h"
#include "OrvaneCore/Capability/ControllerCapability.h"

namespace orvane {

class AwakeCapability final : public ControllerCapability<AwakeController> {
public:
    static const CapabilityMetadata& metadata();

    [[nodiscard]] const CapabilityMetadata& classMetadata() const override { return metadata(); }
    QList<HotkeyAction> hotkeyActions() override;
    QList<MenuBarItem> menuBarContributions() override;
    Task<> uninstall(CapabilityContext context) override;

private:
    std::shared_ptr<AwakeController> makeController(const CapabilityContext& context) override;
    AnyView makePane(const std::shared_ptr<AwakeController>& controller) override;
};

} // namespace orvane
