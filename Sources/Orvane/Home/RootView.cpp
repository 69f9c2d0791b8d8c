#include "Orvane/Home/RootView.h"

#include "Orvane/Home/HomeView.h"
#include "Orvane/Launch/AppEnvironment.h"
#include "Orvane/Navigation/OrvaNavigation.h"
#include "Orvane/Onboarding/OnboardingFlow.h"
#include "Platform/DefaultsStore.h"
#include "Platform/Platform.h"

namespace orvane {

namespace {

/// Bound to the stored value and observable here.
Binding<bool> storedFlag(const QString& key)
{
    const auto value = std::make_shared<Observable<bool>>(platform().standardDefaults.boolean(key));
    return Binding<bool>([value] { return value->get(); },
                         [value, key](bool flag) {
                             platform().standardDefaults.set(key, flag);
                             value->set(flag);
                         },
                         {value});
}

} // namespace

AnyView RootView::make(const std::shared_ptr<AppEnvironment>& environment)
{
    return RootView{storedFlag(QStringLiteral("hasOnboarded")), environment->sharedRegistry(),
                    environment->sharedPermissions(), environment->sharedAppPreferences(),
                    environment->homeNavigation()};
}

AnyView RootView::body() const
{
    const Binding<bool> flag = hasOnboarded;
    const auto page =
        Live<QString>([flag] { return flag.get() ? QStringLiteral("home") : QStringLiteral("onboarding"); },
                      flag.sources());
    return OrvaKeyed{page, [view = *this](const QString&) -> AnyView {
                         if (!view.hasOnboarded.get())
                             return OnboardingFlow::make(view.hasOnboarded, view.registry, view.permissions);
                         return HomeView{view.registry, view.permissions, view.preferences, view.navigation};
                     }};
}

} // namespace orvane
