#include "Orvane/Home/VisibleEntry.h"

#include "Orvane/Home/HomeWindowController.h"
#include "Orvane/Launch/AppEnvironment.h"
#include "Platform/Application.h"
#include "Platform/Platform.h"
#include "Platform/RunLoop.h"
#include "Platform/StatusBar.h"

#include <utility>

namespace orvane {

std::shared_ptr<VisibleEntry> VisibleEntry::make(const std::shared_ptr<AppEnvironment>& environment)
{
    std::shared_ptr<VisibleEntry> entry(new VisibleEntry(environment));
    const std::weak_ptr<VisibleEntry> weak = entry;
    entry->m_observer = platform().defaultNotificationCenter.addObserver(
        StatusBar::areaDidChangeNotification(), [weak](const Notification&) {
            if (const auto self = weak.lock())
                self->areaChanged();
        });
    environment->homeWindow().setWentOutOfSight([weak] {
        if (const auto self = weak.lock())
            self->windowWentOutOfSight();
    });
    const auto update = [weak](bool) {
        if (const auto self = weak.lock())
            self->setPolicy();
    };
    AppPreferences& preferences = environment->appPreferences();
    entry->m_cancellables.push_back(preferences.showDockIconValue().subscribe(update));
    entry->m_cancellables.push_back(preferences.showMenuBarItemValue().onChange([update] { update(true); }));
    return entry;
}

VisibleEntry::VisibleEntry(const std::shared_ptr<AppEnvironment>& environment) : m_environment(environment) {}
VisibleEntry::~VisibleEntry() = default;

bool VisibleEntry::isItemMissing() const
{
    const auto environment = m_environment.lock();
    return environment && (!environment->appPreferences().showMenuBarItem() ||
                           platform().systemStatusBar.area() == StatusBar::Area::absent);
}

/// Only a regular program is listed in the task bar.
void VisibleEntry::setPolicy()
{
    const auto environment = m_environment.lock();
    if (!environment)
        return;
    const bool isListed = environment->appPreferences().showDockIcon() || isItemMissing();
    platform().application.setActivationPolicy(isListed ? Application::ActivationPolicy::regular
                                                        : Application::ActivationPolicy::accessory);
}

void VisibleEntry::launched()
{
    m_showsWindow = platform().application.startedBy() == Application::StartedBy::person;
    areaChanged();
}

void VisibleEntry::areaChanged()
{
    const auto environment = m_environment.lock();
    if (!environment)
        return;
    setPolicy();
    if (!isItemMissing()) {
        m_timer.reset();
        if (platform().systemStatusBar.area() == StatusBar::Area::present) {
            m_showsWindow = false;
            environment->homeWindow().leaveTaskBar();
        }
        return;
    }
    if (std::exchange(m_showsWindow, false))
        environment->homeWindow().show();
    else if (environment->appPreferences().showMenuBarItem())
        waitForArea();
    else
        showEntry();
}

void VisibleEntry::windowWentOutOfSight()
{
    if (isItemMissing())
        showEntry();
}

void VisibleEntry::waitForArea()
{
    if (m_timer)
        return;
    m_timer = platform().mainRunLoop.scheduleTimer(patience, RunLoop::Repeats::no, [weak = weak_from_this()] {
        const auto self = weak.lock();
        if (!self)
            return;
        const auto timer = std::move(self->m_timer);
        if (self->isItemMissing())
            self->showEntry();
    });
}

void VisibleEntry::showEntry()
{
    if (const auto environment = m_environment.lock())
        environment->homeWindow().showInTaskBar();
}

} // namespace orvane
