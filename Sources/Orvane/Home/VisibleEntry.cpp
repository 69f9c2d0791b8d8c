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
    const auto update = [weak] {
        if (const auto self = weak.lock())
            self->preferencesChanged();
    };
    AppPreferences& preferences = environment->appPreferences();
    entry->m_cancellables.push_back(preferences.showDockIconValue().onChange(update));
    entry->m_cancellables.push_back(preferences.showMenuBarItemValue().onChange(update));
    entry->setPolicy();
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

/// The task bar lists windows and not programs, so a program that is to be there at all times needs a window.
bool VisibleEntry::isEntryWanted() const
{
    const auto environment = m_environment.lock();
    return environment && (environment->appPreferences().showDockIcon() || isItemMissing());
}

/// Before the launch nothing is shown.
void VisibleEntry::preferencesChanged()
{
    setPolicy();
    const auto environment = m_environment.lock();
    if (!environment || !m_hasLaunched)
        return;
    if (isEntryWanted())
        showEntry();
    else
        environment->homeWindow().leaveTaskBar();
}

void VisibleEntry::setPolicy()
{
    const auto environment = m_environment.lock();
    if (!environment)
        return;
    platform().application.setActivationPolicy(isEntryWanted() ? Application::ActivationPolicy::regular
                                                               : Application::ActivationPolicy::accessory);
}

void VisibleEntry::launched()
{
    m_hasLaunched = true;
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
            if (isEntryWanted())
                showEntry();
            else
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
    if (isEntryWanted())
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
