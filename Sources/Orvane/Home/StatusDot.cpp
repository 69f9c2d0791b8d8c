#include "Orvane/Home/StatusDot.h"

#include "OrvaneCore/Base/CapabilityState.h"
#include "OrvaneKit/Model/OrvaPage.h"

namespace orvane {

OrvaStatusDot StatusDot::of(const CapabilityState& state)
{
    const OrvaBadge badge = OrvaBadge::state(state);
    const bool off = state == CapabilityState::Kind::disabled || state == CapabilityState::Kind::installed;
    return {off ? OrvaStatusDot::Fill::hollow : OrvaStatusDot::Fill::filled, badge.color, badge.text};
}

} // namespace orvane
