#include "Orvane/CapabilityToggle.h"

#include "OrvaneCore/CapabilityRegistry.h"
#include "OrvaneCore/OrvaPage.h"
#include "OrvaneCore/Task.h"

namespace orvane {

AnyView CapabilityToggle::make(const CapabilityID& id, const std::shared_ptr<CapabilityRegistry>& registry)
{
    const auto entry = registry->entry(id);
    return OrvaSwitch{.isOn = isOn(id, registry),
                      .accessibleName = entry ? entry->metadata().displayName : id.rawValue};
}

Binding<bool> CapabilityToggle::isOn(const CapabilityID& id,
                                     const std::shared_ptr<CapabilityRegistry>& registry)
{
    return Binding<bool>(
        [registry, id] { return registry->isActive(id); },
        [registry, id](bool value) {
            startTask([registry, id, value]() -> Task<> { co_await registry->setEnabled(value, id); });
        },
        {registry});
}

} // namespace orvane
