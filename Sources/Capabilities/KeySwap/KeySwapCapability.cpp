#include "Capabilities/KeySwap/KeySwapCapability.h"

#include "Capabilities/KeySwap/KeySwapController.h"
#include "Capabilities/KeySwap/KeySwapService.h"
#include "Capabilities/KeySwap/KeySwapSettingsPane.h"

namespace orvane {

const CapabilityMetadata& KeySwapCapability::metadata()
{
    static const CapabilityMetadata metadata{
        .id = {QStringLiteral("net.lindenrow.orvane.keyswap")},
        .displayName = QStringLiteral("Ctrl Shortcuts"),
        .summary = QStringLiteral(
            "Use Windows-style Ctrl+C / Ctrl+V / Ctrl+Z everywhere — Orvane maps Ctrl to Cmd."),
        .symbolName = QStringLiteral("command"),
        .category = CapabilityCategory::input,
    };
    return metadata;
}

QList<PermissionRequirement> KeySwapCapability::permissionRequirements() const
{
    return {{SystemPermission::inputMonitoring, PermissionRequirement::Level::required,
             QStringLiteral("See and rewrite keyboard events to remap Ctrl to Cmd.")},
            {SystemPermission::accessibility, PermissionRequirement::Level::optional,
             QStringLiteral("Some macOS versions require Accessibility to modify key events in secure "
                            "fields.")}};
}

Task<> KeySwapCapability::activate(CapabilityContext context)
{
    m_service = std::make_shared<KeySwapService>(controller(context));
    context.serviceHost->registerService(m_service);
    co_return;
}

Task<> KeySwapCapability::deactivate()
{
    if (m_service && m_service->isRunning())
        m_service->stop();
    m_service.reset();
    co_return;
}

Task<> KeySwapCapability::uninstall(CapabilityContext context)
{
    context.preferences.removeAll();
    m_controller.reset();
    co_return;
}

AnyView KeySwapCapability::makeSettingsPane(CapabilityContext context)
{
    return KeySwapSettingsPane::make(controller(context)->settings());
}

std::shared_ptr<KeySwapController> KeySwapCapability::controller(const CapabilityContext& context)
{
    if (!m_controller) {
        m_controller = KeySwapController::make(std::make_shared<KeySwapSettings>(context.preferences),
                                               context.eventTap, context.logger);
    }
    return m_controller;
}

} // namespace orvane
