#include "Orvane/Onboarding/OnboardingFlow.h"

#include "Orvane/Brand/ShellText.h"
#include "Orvane/Onboarding/CapabilityPickerView.h"
#include "Orvane/Onboarding/OnboardingFlowView.h"
#include "Orvane/Onboarding/PageDotsView.h"
#include "Orvane/Onboarding/WelcomeStepView.h"
#include "Orvane/Permissions/PermissionChecklistView.h"
#include "OrvaneKit/Model/OrvaRows.h"

namespace orvane {

namespace {

using Step = OnboardingFlow::Step;

constexpr Step lastStep = OnboardingFlow::allSteps.back();

Step neighbour(Step step, int distance)
{
    return static_cast<Step>(static_cast<int>(step) + distance);
}

} // namespace

AnyView OnboardingFlow::make(Binding<bool> hasOnboarded, std::shared_ptr<CapabilityRegistry> registry,
                             std::shared_ptr<PermissionManager> permissions)
{
    return OnboardingFlow{.hasOnboarded = std::move(hasOnboarded),
                          .registry = std::move(registry),
                          .permissions = std::move(permissions)};
}

QList<AnyView> OnboardingFlow::children() const
{
    return {content(step->get()), backButton(), dots(), forwardButton()};
}

AnyView OnboardingFlow::content(Step shown) const
{
    switch (shown) {
    case Step::welcome:
        return WelcomeStep{};
    case Step::permissions:
        return PermissionChecklistView{permissions};
    case Step::capabilities:
        return CapabilityPickerView{registry};
    }
    Q_UNREACHABLE();
}

AnyView OnboardingFlow::backButton() const
{
    const auto present = step;
    const OrvaButton back{.title = ShellText::tr("Back"), .action = [present] {
                              if (present->get() != Step::welcome)
                                  present->set(neighbour(present->get(), -1));
                          }};
    return OrvaIf{Live<bool>([present] { return present->get() != Step::welcome; }, {present}), back};
}

AnyView OnboardingFlow::dots() const
{
    const auto present = step;
    return PageDots{.count = static_cast<int>(allSteps.size()),
                    .index = Live<int>([present] { return static_cast<int>(present->get()); }, {present})};
}

AnyView OnboardingFlow::forwardButton() const
{
    const auto present = step;
    const auto title = [present] {
        return present->get() == lastStep ? ShellText::tr("Get Started") : ShellText::tr("Continue");
    };
    const auto forward = [present, finished = hasOnboarded] {
        if (present->get() == lastStep)
            finished.set(true);
        else
            present->set(neighbour(present->get(), 1));
    };
    return OrvaButton{.title = Live<QString>(title, {present}), .action = forward};
}

QWidget* makeOrvaWidget(const OnboardingFlow& flow)
{
    return new OnboardingFlowView(flow);
}

} // namespace orvane
