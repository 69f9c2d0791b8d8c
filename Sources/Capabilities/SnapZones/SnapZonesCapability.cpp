#include "Capabilities/SnapZones/SnapZonesCapability.h"

#include "Capabilities/SnapZones/SnapZonesSettingsPane.h"
#include "Capabilities/SnapZones/SnapZonesText.h"

namespace orvane {

const CapabilityMetadata& SnapZonesCapability::metadata()
{
    static const CapabilityMetadata metadata{
        .id = {QStringLiteral("net.lindenrow.orvane.snapzones")},
        .displayName = SnapZonesText::tr("Snap Zones"),
        .summary =
            SnapZonesText::tr("Drag windows to the edges — or use shortcuts — to snap them into halves, "
                              "quarters, or fullscreen."),
        .symbolName = QStringLiteral("rectangle.split.2x2"),
        .category = CapabilityCategory::windowing,
    };
    return metadata;
}

QList<PermissionRequirement> SnapZonesCapability::permissionRequirements() const
{
    return {{SystemPermission::accessibility, PermissionRequirement::Level::required,
             SnapZonesText::tr("Move and resize the windows of other apps.")}};
}

QList<HotkeyAction> SnapZonesCapability::hotkeyActions()
{
    QList<HotkeyAction> actions;
    for (const SnapZone zone : allCases<SnapZone>()) {
        actions.append({QStringLiteral("snapzones.") + rawValue(zone),
                        SnapZonesText::tr("Snap: %1").arg(title(zone)),
                        withController([zone](auto& controller) { controller.snap(zone); })});
    }
    actions.append({QStringLiteral("snapzones.showLayouts"), SnapZonesText::tr("Show Snap Layouts"),
                    withController(&SnapZonesController::showFlyout)});
    return actions;
}

QList<MenuBarItem> SnapZonesCapability::menuBarContributions()
{
    if (!controller())
        return {};
    return {{QStringLiteral("snapzones.maximize"), SnapZonesText::tr("Maximize Window"),
             QStringLiteral("rectangle.fill"),
             withController([](auto& controller) { controller.snap(SnapZone::maximize); })},
            {QStringLiteral("snapzones.layouts"), SnapZonesText::tr("Snap Layouts…"),
             QStringLiteral("rectangle.split.2x2"), withController(&SnapZonesController::showFlyout)}};
}

std::shared_ptr<SnapZonesController> SnapZonesCapability::makeController(const CapabilityContext& context)
{
    return SnapZonesController::make(std::make_shared<SnapZonesSettings>(context.preferences),
                                     context.logger);
}

AnyView SnapZonesCapability::makePane(const std::shared_ptr<SnapZonesController>& controller)
{
    return SnapZonesSettingsPane::make(controller->settings());
}

} // namespace orvane
