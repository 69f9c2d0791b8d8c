// The light by which the sidebar shows the state of a capability.
#pragma once

#include "Orvane/Navigation/OrvaNavigation.h"

namespace orvane {

struct CapabilityState;

namespace StatusDot {

/// An empty ring while off, else filled in the colour of the state.
OrvaStatusDot of(const CapabilityState& state);

} // namespace StatusDot
} // namespace orvane
