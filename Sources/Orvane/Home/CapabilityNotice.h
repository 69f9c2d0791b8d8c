// The reason why a capability that was switched on doesn't run, for where its switch is.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"
#include "OrvaneCore/Capability/CapabilityRegistry.h"

#include <memory>

namespace orvane {

class CapabilityNotice {
public:
    /// Empty while it runs or is off by the person's will. A missing permission has its reason too, or its
    /// name where no reason is known.
    [[nodiscard]] static QString reason(const CapabilityRegistry::Entry& entry);

    /// A banner for its page, shown while it has failed: missing permissions have rows there.
    [[nodiscard]] static AnyView banner(const CapabilityID& id,
                                        const std::shared_ptr<CapabilityRegistry>& registry);
    /// A line for a card, shown while there is a reason.
    [[nodiscard]] static AnyView line(const CapabilityID& id,
                                      const std::shared_ptr<CapabilityRegistry>& registry);
};

} // namespace orvane
