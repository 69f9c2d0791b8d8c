// Resizes pictures that are dropped into a window of its own.
#pragma once

#include "Capabilities/ImageResizer/ResizerWindowController.h"
#include "OrvaneCore/Capability/ControllerCapability.h"

namespace orvane {

class ImageResizerCapability final : public ControllerCapability<ResizerWindowController> {
public:
    static const CapabilityMetadata& metadata();

    [[nodiscard]] const CapabilityMetadata& classMetadata() const override { return metadata(); }
    QList<HotkeyAction> hotkeyActions() override;
    QList<MenuBarItem> menuBarContributions() override;

private:
    std::shared_ptr<ResizerWindowController> makeController(const CapabilityContext& context) override;
    AnyView makePane(const std::shared_ptr<ResizerWindowController>& controller) override;
};

} // namespace orvane
