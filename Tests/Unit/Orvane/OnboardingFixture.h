// The common parts of the tests of the first run: three capabilities and a flag that isn't set yet.
#pragma once

#include "Fakes/FakePlatform.h"
#include "Fakes/RecordingCapability.h"
#include "Orvane/Onboarding/OnboardingFlow.h"
#include "OrvaneCore/Capability/CapabilityRegistry.h"
#include "OrvaneCore/Capability/CapabilityStore.h"
#include "OrvaneCore/Permissions/PermissionManager.h"
#include "OrvaneKit/Model/OrvaLayout.h"
#include "OrvaneKit/Model/OrvaRows.h"

#include <memory>
#include <vector>

#include <gtest/gtest.h>

namespace orvane::tests {

using Step = OnboardingFlow::Step;

struct OnboardedFlag {
    Observable<bool> hasOnboarded{false};
};

class OnboardingFixture : public testing::Test {
protected:
    OnboardingFixture()
    {
        for (const char* name : {"lamp", "fan", "kettle"}) {
            capabilities.push_back(std::make_shared<RecordingCapability>(QString::fromLatin1(name)));
            registry->registerCapability(capabilities.back());
        }
    }

    CapabilityContext context(const CapabilityID& id)
    {
        return {.id = id,
                .preferences = ScopedPreferences(platform().standardDefaults, id.rawValue),
                .permissions = permissions,
                .serviceHost = std::make_shared<ServiceHost>(),
                .eventTap = nullptr,
                .logger = Log::make(id.rawValue),
                .appInfo = AppInfo::current(id)};
    }

    AnyView makeFlow()
    {
        return OnboardingFlow::make(bind(flag, &OnboardedFlag::hasOnboarded), registry, permissions);
    }
    static Step step(const AnyView& flow) { return flow.as<OnboardingFlow>()->step->get(); }

    static std::shared_ptr<const OrvaButton> button(const AnyView& view, const QString& title)
    {
        for (const auto& candidate : view.all<OrvaButton>()) {
            if (candidate->title.get() == title)
                return candidate;
        }
        return nullptr;
    }
    static void press(const AnyView& view, const char* title)
    {
        const auto found = button(view, QString::fromLatin1(title));
        ASSERT_TRUE(found) << title;
        found->action();
    }
    static bool showsBack(const AnyView& flow)
    {
        for (const auto& conditional : flow.all<OrvaIf>()) {
            const auto* inside = conditional->content.as<OrvaButton>();
            if (inside && inside->title.get() == QStringLiteral("Back"))
                return conditional->condition.get();
        }
        return false;
    }
    static QStringList texts(const AnyView& view)
    {
        QStringList list;
        for (const auto& text : view.all<OrvaText>())
            list.append(text->text.get());
        return list;
    }

    FakePlatform fake;
    std::shared_ptr<CapabilityStore> store = std::make_shared<CapabilityStore>(fake.defaults);
    std::shared_ptr<PermissionManager> permissions = PermissionManager::make();
    std::shared_ptr<CapabilityRegistry> registry =
        std::make_shared<CapabilityRegistry>(store, [this](const CapabilityID& id) { return context(id); });
    std::vector<std::shared_ptr<RecordingCapability>> capabilities;
    std::shared_ptr<OnboardedFlag> flag = std::make_shared<OnboardedFlag>();
};

} // namespace orvane::tests
