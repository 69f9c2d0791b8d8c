#include "Orvane/RootView.h"

#include "Orvane/AppEnvironment.h"
#include "Orvane/CapabilityDetailView.h"

namespace orvane {

AnyView RootView::make(const std::shared_ptr<AppEnvironment>& environment)
{
    const auto& entries = environment->registry().entries();
    return entries.isEmpty() ? AnyView()
                             : CapabilityDetailView::make(environment->sharedRegistry(), entries.first().id());
}

} // namespace orvane
