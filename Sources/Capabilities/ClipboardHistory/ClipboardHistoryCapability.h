// Keeps a searchable history of what is copied.
#pragma once

#include "Capabilities/ClipboardHistory/ClipboardHistoryController.h"
#include "OrvaneCore/Capability/ControllerCapability.h"

namespace orvane {

class ClipboardHistoryCapability final : public ControllerCapability<ClipboardHistoryController> {
public:
    static const CapabilityMetadata& metadata();

    [[nodiscard]] const CapabilityMetadata& classMetadata() const override { return metadata(); }
    [[nodiscard]] QList<PermissionRequirement> permissionRequirements() const override;
    QList<HotkeyAction> hotkeyActions() override;
    QList<MenuBarItem> menuBarContributions() override;
    Task<> install(CapabilityContext context) override;
    Task<> activate(CapabilityContext context) override;
    Task<> deactivate() override;
    Task<> uninstall(CapabilityContext context) override;

private:
    [[nodiscard]] QString limitation() const override;
    std::shared_ptr<ClipboardHistoryController> makeController(const CapabilityContext& context) override;
    AnyView makePane(const std::shared_ptr<ClipboardHistoryController>& controller) override;
    Services makeServices(const std::shared_ptr<ClipboardHistoryController>& controller) override;
};

} // namespace orvane
