#include "Capabilities/Awake/AwakeCapability.h"

#include "Capabilities/Awake/AwakeSettingsPane.h"
#include "Capabilities/Awake/AwakeText.h"

namespace orvane {

const CapabilityMetadata& AwakeCapability::metadata()
{
    static const CapabilityMetadata metadata{
        .id = {QStringLiteral("net.lindenrow.orvane.awake")},
        .displayName = AwakeText::tr("Awake"),
        .summary = AwakeText::tr("Keep your Mac awake on demand — for a set time or until you turn it off."),
        .symbolName = QStringLiteral("eye.fill"),
        .category = CapabilityCategory::system,
    };
    return metadata;
}

QList<HotkeyAction> AwakeCapability::hotkeyActions()
{
    return {{QStringLiteral("awake.toggle"), AwakeText::tr("Toggle Keep Awake"),
             withController(&AwakeController::toggleDefault)}};
}

QList<MenuBarItem> AwakeCapability::menuBarContributions()
{
    if (!controller())
        return {};
    if (controller()->hasPeriod())
        return {{QStringLiteral("awake.off"), AwakeText::tr("Let Mac Sleep"), QStringLiteral("eye.slash"),
                 withController(&AwakeController::deactivate)}};
    return {{QStringLiteral("awake.on"), AwakeText::tr("Keep Awake"), QStringLiteral("eye.fill"),
             withController(&AwakeController::activateDefault)}};
}

Task<> AwakeCapability::uninstall(CapabilityContext context)
{
    if (controller())
        controller()->deactivate();
    return ControllerCapability::uninstall(std::move(context));
}

std::shared_ptr<AwakeController> AwakeCapability::makeController(const CapabilityContext& context)
{
    return AwakeController::make(std::make_shared<AwakeSettings>(context.preferences), context.logger);
}

AnyView AwakeCapability::makePane(const std::shared_ptr<AwakeController>& controller)
{
    return AwakeSettingsPane::make(controller);
}

} // namespace orvane
