// The page of one capability: its name and switches, and its settings pane, live only while it is active.
#pragma once

#include "OrvaneCore/CapabilityMetadata.h"
#include "OrvaneCore/OrvaView.h"

namespace orvane {

class CapabilityRegistry;

class CapabilityDetailView {
public:
    /// An empty view for an unknown id.
    static AnyView make(const std::shared_ptr<CapabilityRegistry>& registry, const CapabilityID& id);

    /// The switch: on exactly while the capability is active; flipping it starts a task that enables or
    /// disables.
    static Binding<bool> capabilityToggle(const std::shared_ptr<CapabilityRegistry>& registry,
                                          const CapabilityID& id);
};

} // namespace orvane
