#include "Orvane/RootView.h"

#include "Orvane/AppEnvironment.h"
#include "Orvane/HomeView.h"

namespace orvane {

AnyView RootView::make(const std::shared_ptr<AppEnvironment>& environment)
{
    return HomeView{environment->sharedRegistry()};
}

} // namespace orvane
