// The first start's content of the home window: welcome, permissions, choice of features.
//
// Only the present page is kept, and only in memory: after an early quit the first run begins again, with the
// features that were turned on.
#pragma once

#include "OrvaneCore/Base/Observable.h"
#include "OrvaneCore/Base/OrvaView.h"

#include <array>
#include <memory>

namespace orvane {

class CapabilityRegistry;
class PermissionManager;

struct OnboardingFlow {
    enum class Step { welcome = 0, permissions = 1, capabilities = 2 };
    static constexpr std::array allSteps{Step::welcome, Step::permissions, Step::capabilities};

    Binding<bool> hasOnboarded;
    std::shared_ptr<CapabilityRegistry> registry;
    std::shared_ptr<PermissionManager> permissions;
    std::shared_ptr<Observable<Step>> step = std::make_shared<Observable<Step>>(Step::welcome);

    /// Begins at the welcome. Finishing sets `hasOnboarded`; what is shown afterwards is up to the owner.
    static AnyView make(Binding<bool> hasOnboarded, std::shared_ptr<CapabilityRegistry> registry,
                        std::shared_ptr<PermissionManager> permissions);

    /// The present page, then the footer: back, dots, forward.
    [[nodiscard]] QList<AnyView> children() const;

    [[nodiscard]] AnyView content(Step shown) const;
    /// Left out on the first page.
    [[nodiscard]] AnyView backButton() const;
    [[nodiscard]] AnyView dots() const;
    /// "Continue" to the next page, or "Get Started" on the last one.
    [[nodiscard]] AnyView forwardButton() const;
};

QWidget* makeOrvaWidget(const OnboardingFlow& flow);

} // namespace orvane
