#include "Capabilities/SnapZones/SnapZonesCapability.h"

#include "Capabilities/SnapZones/SnapZonesController.h"
#include "Capabilities/SnapZones/SnapZonesService.h"
#include "Capabilities/SnapZones/SnapZonesSettingsPane.h"

namespace orvane {

const CapabilityMetadata& SnapZonesCapability::metadata()
{
    static const CapabilityMetadata metadata{
        .id = {QStringLiteral("net.lindenrow.orvane.snapzones")},
        .displayName = QStringLiteral("Snap Zones"),
        .summary = QStringLiteral("Drag windows to the edges — or use shortcuts — to snap them into halves, "
                                  "quarters, or fullscreen."),
        .symbolName = QStringLiteral("rectangle.split.2x2"),
        .category = CapabilityCategory::windowing,
    };
    return metadata;
}

QList<PermissionRequirement> SnapZonesCapability::permissionRequirements() const
{
    return {{SystemPermission::accessibility, PermissionRequirement::Level::required,
             QStringLiteral("Move and resize the windows of other apps.")}};
}

QList<HotkeyAction> SnapZonesCapability::hotkeyActions()
{
    QList<HotkeyAction> actions;
    for (const SnapZone zone : allSnapZones) {
        actions.append({QStringLiteral("snapzones.") + rawValue(zone), QStringLiteral("Snap: ") + title(zone),
                        weakly([zone](SnapZonesController& controller) { controller.snap(zone); })});
    }
    actions.append({QStringLiteral("snapzones.showLayouts"), QStringLiteral("Show Snap Layouts"),
                    weakly([](SnapZonesController& controller) { controller.showFlyout(); })});
    return actions;
}

QList<MenuBarItem> SnapZonesCapability::menuBarContributions()
{
    if (!m_controller)
        return {};
    return {{QStringLiteral("snapzones.maximize"), QStringLiteral("Maximize Window"),
             QStringLiteral("rectangle.fill"),
             weakly([](SnapZonesController& controller) { controller.snap(SnapZone::maximize); })},
            {QStringLiteral("snapzones.layouts"), QStringLiteral("Snap Layouts…"),
             QStringLiteral("rectangle.split.2x2"),
             weakly([](SnapZonesController& controller) { controller.showFlyout(); })}};
}

Task<> SnapZonesCapability::activate(CapabilityContext context)
{
    m_service = std::make_shared<SnapZonesService>(controller(context));
    context.serviceHost->registerService(m_service);
    co_return;
}

Task<> SnapZonesCapability::deactivate()
{
    if (m_service && m_service->isRunning())
        m_service->stop();
    m_service.reset();
    co_return;
}

Task<> SnapZonesCapability::uninstall(CapabilityContext context)
{
    context.preferences.removeAll();
    m_controller.reset();
    co_return;
}

AnyView SnapZonesCapability::makeSettingsPane(CapabilityContext context)
{
    return SnapZonesSettingsPane::make(controller(context)->settings());
}

std::shared_ptr<SnapZonesController> SnapZonesCapability::controller(const CapabilityContext& context)
{
    if (!m_controller) {
        m_controller = SnapZonesController::make(std::make_shared<SnapZonesSettings>(context.preferences),
                                                 context.logger);
    }
    return m_controller;
}

std::function<void()> SnapZonesCapability::weakly(Use use)
{
    return [weak = weak_from_this(), use = std::move(use)] {
        const auto self = weak.lock();
        // Its own reference: what it does may take the controller away from the capability.
        if (const auto controller = self ? self->m_controller : nullptr)
            use(*controller);
    };
}

} // namespace orvane
