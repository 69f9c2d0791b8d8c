#include "Orvane/Launch/AppDelegate.h"

#include "Orvane/Home/HomeWindowController.h"
#include "Orvane/Home/VisibleEntry.h"
#include "Orvane/Launch/AppEnvironment.h"
#include "Orvane/Menus/MainMenu.h"
#include "Orvane/Menus/MenuBarController.h"
#include "OrvaneCore/Base/OrvaNotifications.h"
#include "OrvaneCore/Base/Task.h"
#include "Platform/Platform.h"

namespace orvane {

AppDelegate::AppDelegate(std::function<std::shared_ptr<AppEnvironment>()> environment)
    : m_makeEnvironment(std::move(environment))
{
}

AppDelegate::~AppDelegate() = default;

void AppDelegate::applicationDidFinishLaunching()
{
    m_environment = m_makeEnvironment();
    AppPreferences& preferences = m_environment->appPreferences();
    platform().application.setMainMenu(MainMenu::build());

    m_visibleEntry = VisibleEntry::make(m_environment);

    m_menuBar = std::make_shared<MenuBarController>(m_environment);
    m_cancellables.push_back(
        preferences.showMenuBarItemValue().subscribe([weak = std::weak_ptr(m_menuBar)](bool visible) {
            if (const auto menuBar = weak.lock())
                menuBar->setVisible(visible);
        }));

    m_openHomeObserver = platform().defaultNotificationCenter.addObserver(
        OrvaNotifications::openHome, [this](const Notification&) { m_environment->homeWindow().show(); });

    startTask([registry = m_environment->sharedRegistry()]() -> Task<> {
        co_await registry->restorePersistedState();
    });

    if (!m_environment->hasOnboarded())
        m_environment->homeWindow().show();
    m_visibleEntry->launched();
}

bool AppDelegate::applicationShouldHandleReopen(bool)
{
    if (m_environment)
        m_environment->homeWindow().show();
    return true;
}

} // namespace orvane
