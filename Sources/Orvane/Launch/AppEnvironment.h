// The composition root: owns every long-lived object, for the life of the process. Main thread.
#pragma once

#include "Orvane/Launch/CapabilityBootstrap.h"
#include "OrvaneCore/Base/Observable.h"
#include "OrvaneCore/Capability/CapabilityRegistry.h"
#include "OrvaneCore/Capability/CapabilityStore.h"
#include "OrvaneCore/Permissions/PermissionManager.h"
#include "OrvaneCore/Preferences/AppPreferences.h"
#include "Platform/NotificationCenter.h"

#include <functional>
#include <memory>

namespace orvane {

class EventTapService;
class HomeNavigation;
class HomeWindowController;
class HotkeyManager;

class AppEnvironment : public ObservableObject, public std::enable_shared_from_this<AppEnvironment> {
public:
    /// Made on first use and never released: it would otherwise be destroyed after the platform that it uses.
    static std::shared_ptr<AppEnvironment> shared();
    using RegisterCapabilities = std::function<void(CapabilityRegistry&)>;
    /// Makes a separate environment on the installed platform, with the suite's capabilities or others.
    static std::shared_ptr<AppEnvironment>
    make(const RegisterCapabilities& registerCapabilities = &CapabilityBootstrap::registerInto);
    ~AppEnvironment() override;

    AppPreferences& appPreferences() { return *m_appPreferences; }
    [[nodiscard]] const std::shared_ptr<AppPreferences>& sharedAppPreferences() const
    {
        return m_appPreferences;
    }
    PermissionManager& permissions() { return *m_permissions; }
    [[nodiscard]] const std::shared_ptr<PermissionManager>& sharedPermissions() const
    {
        return m_permissions;
    }
    EventTapService& eventTap() { return *m_eventTap; }
    HotkeyManager& hotkeys() { return *m_hotkeys; }
    HomeWindowController& homeWindow() { return *m_homeWindow; }
    /// The page that the home window shows, or will show when it opens.
    [[nodiscard]] const std::shared_ptr<HomeNavigation>& homeNavigation() const { return m_homeNavigation; }
    CapabilityRegistry& registry() { return *m_registry; }
    [[nodiscard]] const std::shared_ptr<CapabilityRegistry>& sharedRegistry() const { return m_registry; }
    CapabilityStore& store() { return *m_store; }

    /// False until the onboarding has been finished.
    [[nodiscard]] bool hasOnboarded() const;

private:
    explicit AppEnvironment(const RegisterCapabilities& registerCapabilities);
    [[nodiscard]] CapabilityRegistry::MakeContext contextMaker() const;
    void wireHomeWindow();
    void registerHotkeys();
    void followActiveOnes();
    void claimActiveOnes();
    void followPermissions();

    std::shared_ptr<AppPreferences> m_appPreferences;
    std::shared_ptr<PermissionManager> m_permissions;
    std::shared_ptr<EventTapService> m_eventTap;
    std::shared_ptr<HotkeyManager> m_hotkeys;
    std::shared_ptr<HomeWindowController> m_homeWindow;
    std::shared_ptr<HomeNavigation> m_homeNavigation;
    std::shared_ptr<CapabilityStore> m_store;
    std::shared_ptr<CapabilityRegistry> m_registry;
    struct GatedShortcut {
        CapabilityID capability;
        QString name;
    };
    QList<GatedShortcut> m_gatedShortcuts;
    Subscription m_activityObserver;
    std::unique_ptr<NotificationCenter::Token> m_shortcutsObserver;
    std::unique_ptr<NotificationCenter::Token> m_permissionsObserver;
};

} // namespace orvane
