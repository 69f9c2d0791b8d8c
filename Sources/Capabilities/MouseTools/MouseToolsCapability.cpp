#include "Capabilities/MouseTools/MouseToolsCapability.h"

#include "Capabilities/MouseTools/MouseToolsSettingsPane.h"
#include "Capabilities/MouseTools/MouseToolsText.h"

namespace orvane {

namespace {

const QString spotlightID = QStringLiteral("mousetools.spotlight");
const QString crosshairsID = QStringLiteral("mousetools.crosshairs");

} // namespace

const CapabilityMetadata& MouseToolsCapability::metadata()
{
    static const CapabilityMetadata metadata{
        .id = {QStringLiteral("net.lindenrow.orvane.mousetools")},
        .displayName = MouseToolsText::tr("Mouse Tools"),
        .summary = MouseToolsText::tr(
            "Find your cursor with a spotlight (double-tap Ctrl) and toggle crosshairs that follow it."),
        .symbolName = QStringLiteral("cursorarrow.rays"),
        .category = CapabilityCategory::input,
    };
    return metadata;
}

QList<PermissionRequirement> MouseToolsCapability::permissionRequirements() const
{
    return {
        {SystemPermission::inputMonitoring, PermissionRequirement::Level::optional,
         MouseToolsText::tr("Detect the double-Ctrl gesture for the spotlight. Shortcuts work without it.")}};
}

QList<HotkeyAction> MouseToolsCapability::hotkeyActions()
{
    return {{spotlightID, MouseToolsText::tr("Find My Cursor (Spotlight)"),
             withController(&MouseToolsController::showSpotlight)},
            {crosshairsID, MouseToolsText::tr("Toggle Crosshairs"),
             withController(&MouseToolsController::toggleCrosshairs)}};
}

QList<MenuBarItem> MouseToolsCapability::menuBarContributions()
{
    if (!controller())
        return {};
    return {{spotlightID, MouseToolsText::tr("Find My Cursor"), QStringLiteral("cursorarrow.rays"),
             withController(&MouseToolsController::showSpotlight)},
            {crosshairsID, MouseToolsText::tr("Toggle Crosshairs"), QStringLiteral("plus.viewfinder"),
             withController(&MouseToolsController::toggleCrosshairs)}};
}

std::shared_ptr<MouseToolsController> MouseToolsCapability::makeController(const CapabilityContext& context)
{
    return MouseToolsController::make(std::make_shared<MouseToolsSettings>(context.preferences),
                                      context.eventTap, context.logger);
}

AnyView MouseToolsCapability::makePane(const std::shared_ptr<MouseToolsController>& controller)
{
    return MouseToolsSettingsPane::make(controller->settings());
}

} // namespace orvane
