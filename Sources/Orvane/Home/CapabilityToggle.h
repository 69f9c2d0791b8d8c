// The switch of a capability: on exactly while the capability is active.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"
#include "OrvaneCore/Capability/CapabilityMetadata.h"

namespace orvane {

class CapabilityRegistry;

class CapabilityToggle {
public:
    /// Makes a switch without a label, named after the capability for assistive technology.
    static AnyView make(const CapabilityID& id, const std::shared_ptr<CapabilityRegistry>& registry);

    /// A set starts a task that enables or disables the capability. Until it has ended the value is the old
    /// one, so the switch doesn't move.
    static Binding<bool> isOn(const CapabilityID& id, const std::shared_ptr<CapabilityRegistry>& registry);
};

} // namespace orvane
