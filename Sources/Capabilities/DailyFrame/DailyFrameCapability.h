// Puts a new picture on the desktop once a day.
#pragma once

#include "Capabilities/DailyFrame/DailyFrameController.h"
#include "OrvaneCore/Capability/ControllerCapability.h"

namespace orvane {

class DailyFrameCapability final : public ControllerCapability<DailyFrameController> {
public:
    static const CapabilityMetadata& metadata();

    [[nodiscard]] const CapabilityMetadata& classMetadata() const override { return metadata(); }
    QList<HotkeyAction> hotkeyActions() override;
    QList<MenuBarItem> menuBarContributions() override;

private:
    std::shared_ptr<DailyFrameController> makeController(const CapabilityContext& context) override;
    AnyView makePane(const std::shared_ptr<DailyFrameController>& controller) override;
};

} // namespace orvane
