#include "Orvane/CapabilityDetailView.h"

#include "OrvaneCore/CapabilityRegistry.h"
#include "OrvaneCore/OrvaPage.h"
#include "OrvaneCore/Task.h"

namespace orvane {

Binding<bool> CapabilityDetailView::capabilityToggle(const std::shared_ptr<CapabilityRegistry>& registry,
                                                     const CapabilityID& id)
{
    return Binding<bool>(
        [registry, id] { return registry->isActive(id); },
        [registry, id](bool value) {
            startTask([registry, id, value]() -> Task<> { co_await registry->setEnabled(value, id); });
        },
        {registry});
}

AnyView CapabilityDetailView::make(const std::shared_ptr<CapabilityRegistry>& registry,
                                   const CapabilityID& id)
{
    const auto entry = registry->entry(id);
    if (!entry)
        return {};
    const CapabilityMetadata& metadata = entry->metadata();
    const Binding<bool> autoStart(
        [registry, id] { return registry->startMode(id) == CapabilityStartMode::automatic; },
        [registry, id](bool on) {
            registry->setStartMode(on ? CapabilityStartMode::automatic : CapabilityStartMode::manual, id);
        },
        {registry});
    const auto context = registry->context(id);
    return OrvaPage{
        .contentEnabled = Live<bool>([registry, id] { return registry->isActive(id); }, {registry}),
        .header = OrvaPageHeader{.symbol = metadata.symbolName,
                                 .title = metadata.displayName,
                                 .subtitle = metadata.summary,
                                 .autoStart = autoStart,
                                 .autoStartTitle = QStringLiteral("Auto-start at launch"),
                                 .trailing = OrvaSwitch{.isOn = capabilityToggle(registry, id),
                                                        .accessibleName = metadata.displayName}},
        .content = context ? entry->capability->makeSettingsPane(*context) : AnyView(),
    };
}

} // namespace orvane
