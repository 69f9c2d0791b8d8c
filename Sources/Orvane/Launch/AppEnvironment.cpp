#include "Orvane/Launch/AppEnvironment.h"

#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "Orvane/Home/HomeNavigation.h"
#include "Orvane/Home/HomeWindowController.h"
#include "Orvane/Home/RootView.h"
#include "Orvane/Shortcuts/HotkeyManager.h"
#include "OrvaneCore/Base/Task.h"
#include "OrvaneCore/Input/EventTapService.h"
#include "Platform/DefaultsStore.h"
#include "Platform/Permissions.h"
#include "Platform/Platform.h"

namespace orvane {

std::shared_ptr<AppEnvironment> AppEnvironment::shared()
{
    static const auto* const instance = new std::shared_ptr<AppEnvironment>(make());
    return *instance;
}

std::shared_ptr<AppEnvironment> AppEnvironment::make(const RegisterCapabilities& registerCapabilities)
{
    std::shared_ptr<AppEnvironment> environment(new AppEnvironment(registerCapabilities));
    environment->wireHomeWindow();
    environment->registerHotkeys();
    environment->followPermissions();
    return environment;
}

// The order of construction is part of the contract: later objects may use earlier ones.
AppEnvironment::AppEnvironment(const RegisterCapabilities& registerCapabilities)
{
    DefaultsStore& defaults = platform().standardDefaults;
    m_appPreferences = std::make_shared<AppPreferences>(defaults);
    m_permissions = PermissionManager::make();
    m_eventTap = std::make_shared<EventTapService>(Log::make(QStringLiteral("EventTap")));
    m_hotkeys = std::make_shared<HotkeyManager>();
    m_homeWindow = std::make_shared<HomeWindowController>();
    m_homeNavigation = HomeNavigation::remembered();
    m_store = std::make_shared<CapabilityStore>(defaults);
    m_registry = std::make_shared<CapabilityRegistry>(m_store, contextMaker());
    registerCapabilities(*m_registry);
    m_eventTap->start();
}

AppEnvironment::~AppEnvironment() = default;

CapabilityRegistry::MakeContext AppEnvironment::contextMaker() const
{
    return [permissions = m_permissions, eventTap = m_eventTap](const CapabilityID& id) {
        ScopedPreferences preferences(platform().standardDefaults, id.rawValue);
        auto serviceHost = std::make_shared<ServiceHost>();
        Logger logger = Log::make(id.rawValue);
        AppInfo appInfo = AppInfo::current(id);
        return CapabilityContext{.id = id,
                                 .preferences = std::move(preferences),
                                 .permissions = permissions,
                                 .serviceHost = std::move(serviceHost),
                                 .eventTap = eventTap,
                                 .logger = std::move(logger),
                                 .appInfo = std::move(appInfo)};
    };
}

void AppEnvironment::wireHomeWindow()
{
    m_homeWindow->setMakeContentView([weak = weak_from_this()]() -> AnyView {
        const auto self = weak.lock();
        return self ? RootView::make(self) : AnyView();
    });
}

// Adds the actions once, for all capabilities, also those that are off. Their shortcuts are taken from other
// programs only while they are on.
void AppEnvironment::registerHotkeys()
{
    const std::weak_ptr<AppEnvironment> weak = weak_from_this();
    m_hotkeys->registerAppLevel(QStringLiteral("app.openOrvane"), [weak] {
        if (const auto self = weak.lock())
            self->homeWindow().show();
    });
    for (const CapabilityRegistry::Entry& entry : m_registry->entries()) {
        for (const HotkeyAction& action : entry.capability->hotkeyActions()) {
            const auto isActive = [weak, id = entry.id()] {
                const auto self = weak.lock();
                return self && self->registry().isActive(id);
            };
            m_gatedShortcuts.append({entry.id(), action.id});
            KeyboardShortcuts::release(KeyboardShortcuts::Name(action.id));
            m_hotkeys->registerHotkey(action.id, isActive, action.handler);
        }
    }
    followActiveOnes();
    m_shortcutsObserver = platform().defaultNotificationCenter.addObserver(
        KeyboardShortcuts::shortcutByNameDidChangeNotification(), [weak](const Notification&) {
            if (const auto self = weak.lock())
                self->claimActiveOnes();
        });
}

/// Two actions may hold one shortcut. When one of them gets another, the system gives up the keys of both.
void AppEnvironment::claimActiveOnes()
{
    for (const auto& [capability, id] : m_gatedShortcuts) {
        if (registry().isActive(capability))
            KeyboardShortcuts::enable({KeyboardShortcuts::Name(id)});
    }
}

void AppEnvironment::followActiveOnes()
{
    m_activityObserver = m_registry->onChange([weak = weak_from_this()] {
        const auto self = weak.lock();
        if (!self)
            return;
        for (const auto& [capability, id] : self->m_gatedShortcuts) {
            const KeyboardShortcuts::Name name(id);
            if (self->registry().isActive(capability))
                KeyboardShortcuts::claim(name);
            else
                KeyboardShortcuts::release(name);
        }
    });
}

/// A feature that waits for an ability starts when that comes, also while no page of the window is open that
/// looks.
void AppEnvironment::followPermissions()
{
    m_permissionsObserver = platform().defaultNotificationCenter.addObserver(
        Permissions::didChangeNotification(), [weak = weak_from_this()](const Notification&) {
            const auto self = weak.lock();
            if (!self)
                return;
            self->permissions().refresh();
            startTask([registry = self->sharedRegistry()]() -> Task<> {
                co_await registry->reevaluatePermissionGated();
            });
        });
}

bool AppEnvironment::hasOnboarded() const
{
    return platform().standardDefaults.boolean(QStringLiteral("hasOnboarded"));
}

} // namespace orvane
