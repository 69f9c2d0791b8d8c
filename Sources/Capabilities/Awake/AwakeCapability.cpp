#include "Capabilities/Awake/AwakeCapability.h"

#include "Capabilities/Awake/AwakeController.h"
#include "Capabilities/Awake/AwakeService.h"
#include "Capabilities/Awake/AwakeSettingsPane.h"

namespace orvane {

const CapabilityMetadata& AwakeCapability::metadata()
{
    static const CapabilityMetadata metadata{
        .id = {QStringLiteral("net.lindenrow.orvane.awake")},
        .displayName = QStringLiteral("Awake"),
        .summary = QStringLiteral("Keep your Mac awake on demand — for a set time or until you turn it off."),
        .symbolName = QStringLiteral("eye.fill"),
        .category = CapabilityCategory::system,
    };
    return metadata;
}

QList<HotkeyAction> AwakeCapability::hotkeyActions()
{
    const std::weak_ptr<AwakeCapability> weak = weak_from_this();
    return {HotkeyAction{QStringLiteral("awake.toggle"), QStringLiteral("Toggle Keep Awake"), [weak] {
                             const auto self = weak.lock();
                             if (self && self->m_controller)
                                 self->m_controller->toggleDefault();
                         }}};
}

Task<> AwakeCapability::activate(CapabilityContext context)
{
    m_service = std::make_shared<AwakeService>(controller(context));
    context.serviceHost->registerService(m_service);
    co_return;
}

Task<> AwakeCapability::deactivate()
{
    if (m_service && m_service->isRunning())
        m_service->stop();
    m_service.reset();
    co_return;
}

Task<> AwakeCapability::uninstall(CapabilityContext context)
{
    if (m_controller)
        m_controller->deactivate();
    context.preferences.removeAll();
    m_controller.reset();
    co_return;
}

AnyView AwakeCapability::makeSettingsPane(CapabilityContext context)
{
    return AwakeSettingsPane::make(controller(context));
}

QList<MenuBarItem> AwakeCapability::menuBarContributions()
{
    if (!m_controller)
        return {};
    const std::weak_ptr<AwakeController> weak = m_controller;
    if (m_controller->isAwake.get()) {
        return {MenuBarItem{QStringLiteral("awake.off"), QStringLiteral("Let Mac Sleep"),
                            QStringLiteral("eye.slash"), [weak] {
                                if (const auto controller = weak.lock())
                                    controller->deactivate();
                            }}};
    }
    return {MenuBarItem{QStringLiteral("awake.on"), QStringLiteral("Keep Awake"), QStringLiteral("eye.fill"),
                        [weak] {
                            if (const auto controller = weak.lock())
                                controller->activate(controller->settings()->defaultDuration());
                        }}};
}

std::shared_ptr<AwakeController> AwakeCapability::controller(const CapabilityContext& context)
{
    if (!m_controller) {
        m_controller =
            AwakeController::make(std::make_shared<AwakeSettings>(context.preferences), context.logger);
    }
    return m_controller;
}

} // namespace orvane
