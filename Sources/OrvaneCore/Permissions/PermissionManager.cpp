#include "OrvaneCore/Permissions/PermissionManager.h"

#include "Platform/Platform.h"
#include "Platform/Workspace.h"

#include <QUrl>

#include <algorithm>

namespace orvane {

namespace {

// Automation is tested with the file manager alone.
const QString automationTarget = QStringLiteral("com.apple.finder");

PermissionStatus grantedOrDenied(bool granted)
{
    return granted ? PermissionStatus::granted : PermissionStatus::denied;
}

PermissionStatus automationStatus(Permissions::Prompt prompt)
{
    switch (platform().permissions.determinePermissionToAutomateTarget(automationTarget, prompt)) {
    case Permissions::noErr:
        return PermissionStatus::granted;
    case Permissions::errAEEventNotPermitted:
        return PermissionStatus::denied;
    default:
        return PermissionStatus::notDetermined;
    }
}

Permissions::Right right(SystemPermission permission)
{
    switch (permission) {
    case SystemPermission::accessibility:
        return Permissions::Right::accessibility;
    case SystemPermission::inputMonitoring:
        return Permissions::Right::listenEvent;
    case SystemPermission::screenRecording:
        return Permissions::Right::screenCapture;
    case SystemPermission::appleEvents:
        return Permissions::Right::automation;
    }
    Q_UNREACHABLE();
}

PermissionStatus read(SystemPermission permission)
{
    Permissions& system = platform().permissions;
    switch (permission) {
    case SystemPermission::accessibility:
        return grantedOrDenied(system.axIsProcessTrusted());
    case SystemPermission::inputMonitoring:
        return grantedOrDenied(system.preflightListenEventAccess());
    case SystemPermission::screenRecording:
        return grantedOrDenied(system.preflightScreenCaptureAccess());
    case SystemPermission::appleEvents:
        return automationStatus(Permissions::Prompt::no);
    }
    Q_UNREACHABLE();
}

} // namespace

std::shared_ptr<PermissionManager> PermissionManager::make()
{
    auto manager = make(PermissionStatuses{});
    manager->refresh();
    return manager;
}

std::shared_ptr<PermissionManager> PermissionManager::make(PermissionStatuses testStatuses)
{
    return std::shared_ptr<PermissionManager>(new PermissionManager(std::move(testStatuses)));
}

PermissionStatus PermissionManager::status(SystemPermission permission) const
{
    const auto it = m_statuses.find(permission);
    return it != m_statuses.end() ? it->second : PermissionStatus::notDetermined;
}

Permissions::Denial PermissionManager::denial(SystemPermission permission)
{
    return platform().permissions.denial(right(permission));
}

bool PermissionManager::restartMayHelp(const QList<SystemPermission>& permissions) const
{
    return std::ranges::any_of(permissions, [this](SystemPermission permission) {
        return !isGranted(status(permission)) && denial(permission).needsRestart;
    });
}

void PermissionManager::refresh()
{
    for (const SystemPermission permission : allSystemPermissions) {
        m_statuses[permission] = read(permission);
        announceChange();
    }
}

void PermissionManager::request(SystemPermission permission)
{
    Permissions& system = platform().permissions;
    switch (permission) {
    case SystemPermission::accessibility:
        system.axIsProcessTrustedWithPrompt();
        break;
    case SystemPermission::inputMonitoring:
        system.requestListenEventAccess();
        break;
    case SystemPermission::screenRecording:
        system.requestScreenCaptureAccess();
        break;
    case SystemPermission::appleEvents:
        requestAutomation();
        return;
    }
    refresh();
}

void PermissionManager::requestAutomation()
{
    if (automationStatus(Permissions::Prompt::no) == PermissionStatus::denied) {
        openSettings(SystemPermission::appleEvents); // the system doesn't ask twice
        refresh();
        return;
    }
    promptForAutomation(weak_from_this());
}

/// The prompting read blocks until the user has answered.
UnownedTask PermissionManager::promptForAutomation(std::weak_ptr<PermissionManager> weak)
{
    co_await onPool([] { automationStatus(Permissions::Prompt::yes); });
    if (const auto self = weak.lock())
        self->refresh();
}

void PermissionManager::openSettings(SystemPermission permission)
{
    openSettings(settingsURLString(permission));
}

void PermissionManager::openSettings(const QString& url)
{
    if (QUrl(url, QUrl::StrictMode).isValid())
        platform().sharedWorkspace.openURL(url);
}

} // namespace orvane
