// The switch of a capability: on exactly while it is active.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"
#include "OrvaneCore/Capability/CapabilityMetadata.h"

namespace orvane {

class CapabilityRegistry;

class CapabilityToggle {
public:
    /// A switch without label, named after the capability for assistive technology.
    static AnyView make(const CapabilityID& id, const std::shared_ptr<CapabilityRegistry>& registry);

    /// Setting it starts a task that enables or disables. Until that has come to its end the value is the old
    /// one, so what shows it stays still.
    static Binding<bool> isOn(const CapabilityID& id, const std::shared_ptr<CapabilityRegistry>& registry);
};

} // namespace orvane
