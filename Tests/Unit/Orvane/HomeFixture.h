// A home window's objects on the fake platform, with capabilities that a test defines.
#pragma once

#include "Fakes/FakePlatform.h"
#include "Fakes/RecordingCapability.h"
#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "Orvane/Home/HomeView.h"
#include "OrvaneCore/Capability/CapabilityRegistry.h"
#include "OrvaneCore/Permissions/PermissionManager.h"
#include "OrvaneCore/Preferences/AppPreferences.h"
#include "OrvaneKit/Model/OrvaRows.h"
#include "OrvaneKit/Model/OrvaSection.h"

#include <QSet>

#include <gtest/gtest.h>

namespace orvane::tests {

/// A recording capability with a look that the test sets.
class MadeUpCapability : public RecordingCapability {
public:
    explicit MadeUpCapability(const QString& id, CapabilityCategory category = CapabilityCategory::system)
        : RecordingCapability(id),
          m_metadata{.id = {id},
                     .displayName = QStringLiteral("The ") + id,
                     .summary = QStringLiteral("What it does."),
                     .symbolName = QStringLiteral("eye"),
                     .category = category}
    {
    }

    [[nodiscard]] const CapabilityMetadata& classMetadata() const override { return m_metadata; }
    QList<HotkeyAction> hotkeyActions() override { return hotkeys; }
    AnyView makeSettingsPane(CapabilityContext) override
    {
        ++panes;
        return OrvaPane{
            {OrvaSection{.content = {OrvaButton{QStringLiteral("In the pane"), [this] { ++presses; }}}}}};
    }

    QList<HotkeyAction> hotkeys;
    int panes = 0;
    int presses = 0;

private:
    CapabilityMetadata m_metadata;
};

struct HomeFixture : testing::Test {
    std::shared_ptr<MadeUpCapability> add(const char* id,
                                          CapabilityCategory category = CapabilityCategory::system)
    {
        auto capability = std::make_shared<MadeUpCapability>(QString::fromLatin1(id), category);
        registry->registerCapability(capability);
        return capability;
    }
    [[nodiscard]] HomeView home() const { return {registry, permissions, preferences, navigation}; }
    [[nodiscard]] CapabilityID id(const char* raw) const { return {QString::fromLatin1(raw)}; }
    void select(const char* raw) { navigation->selection.set(HomeSelection::capability(id(raw))); }
    void switchOn(const char* raw)
    {
        startTask([this, raw]() -> Task<> { co_await registry->setEnabled(true, id(raw)); });
        fake.runLoop.drain();
    }
    void grantInputMonitoring()
    {
        fake.permissions.inputMonitoring = true;
        permissions->refresh();
    }
    static PermissionRequirement
    requirement(SystemPermission permission,
                PermissionRequirement::Level level = PermissionRequirement::Level::required)
    {
        return {permission, level};
    }

    FakePlatform fake;
    KeyboardShortcuts::StateScope shortcuts;
    std::shared_ptr<AppPreferences> preferences = std::make_shared<AppPreferences>(fake.defaults);
    std::shared_ptr<PermissionManager> permissions = PermissionManager::make();
    std::shared_ptr<CapabilityStore> store = std::make_shared<CapabilityStore>(fake.defaults);
    std::shared_ptr<CapabilityRegistry> registry =
        std::make_shared<CapabilityRegistry>(store, [this](const CapabilityID& capability) {
            return CapabilityContext{.id = capability,
                                     .preferences = ScopedPreferences(fake.defaults, capability.rawValue),
                                     .permissions = permissions,
                                     .serviceHost = std::make_shared<ServiceHost>(),
                                     .eventTap = nullptr,
                                     .logger = Log::make(capability.rawValue),
                                     .appInfo = {}};
        });
    std::shared_ptr<HomeNavigation> navigation = std::make_shared<HomeNavigation>();
};

} // namespace orvane::tests
