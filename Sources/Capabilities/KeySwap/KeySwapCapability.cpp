#include "Capabilities/KeySwap/KeySwapCapability.h"

#include "Capabilities/KeySwap/KeySwapSettingsPane.h"
#include "Capabilities/KeySwap/KeySwapText.h"

namespace orvane {

const CapabilityMetadata& KeySwapCapability::metadata()
{
    static const CapabilityMetadata metadata{
        .id = {QStringLiteral("net.lindenrow.orvane.keyswap")},
        .displayName = KeySwapText::tr("Ctrl Shortcuts"),
        .summary = KeySwapText::tr(
            "Use Windows-style Ctrl+C / Ctrl+V / Ctrl+Z everywhere — Orvane maps Ctrl to Cmd."),
        .symbolName = QStringLiteral("command"),
        .category = CapabilityCategory::input,
    };
    return metadata;
}

QList<PermissionRequirement> KeySwapCapability::permissionRequirements() const
{
    return {{SystemPermission::inputMonitoring, PermissionRequirement::Level::required,
             KeySwapText::tr("See and rewrite keyboard events to remap Ctrl to Cmd.")},
            {SystemPermission::accessibility, PermissionRequirement::Level::optional,
             KeySwapText::tr("Some macOS versions require Accessibility to modify key events in secure "
                             "fields.")}};
}

std::shared_ptr<KeySwapController> KeySwapCapability::makeController(const CapabilityContext& context)
{
    return KeySwapController::make(std::make_shared<KeySwapSettings>(context.preferences), context.eventTap,
                                   context.logger);
}

AnyView KeySwapCapability::makePane(const std::shared_ptr<KeySwapController>& controller)
{
    return KeySwapSettingsPane::make(controller->settings());
}

} // namespace orvane
