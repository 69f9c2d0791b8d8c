#include "Orvane/Home/CapabilityToggle.h"

#include "OrvaneCore/Base/Task.h"
#include "OrvaneCore/Capability/CapabilityRegistry.h"
#include "OrvaneKit/Model/OrvaPage.h"

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
