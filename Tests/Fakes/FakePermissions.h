// Permissions as a test sets them.
#pragma once

#include "Platform/NotificationCenter.h"
#include "Platform/Permissions.h"

#include <QStringList>

#include <functional>
#include <map>
#include <utility>

namespace orvane {

class FakePermissions : public Permissions {
public:
    /// `center` is told of changes; it may be null.
    explicit FakePermissions(NotificationCenter* center = nullptr) : m_center(center) {}

    bool axIsProcessTrusted() override
    {
        onRead();
        return accessibility;
    }
    void axIsProcessTrustedWithPrompt() override { asked(QStringLiteral("accessibility")); }
    bool preflightListenEventAccess() override { return inputMonitoring; }
    void requestListenEventAccess() override { asked(QStringLiteral("inputMonitoring")); }
    bool preflightScreenCaptureAccess() override { return screenRecording; }
    void requestScreenCaptureAccess() override { asked(QStringLiteral("screenRecording")); }

    OSStatus determinePermissionToAutomateTarget(const QString& bundleIdentifier, Prompt prompt) override
    {
        automationTargets.append(bundleIdentifier);
        if (prompt == Prompt::yes)
            asked(QStringLiteral("appleEvents"));
        return automation;
    }

    [[nodiscard]] Denial denial(Right right) override
    {
        const auto it = denials.find(right);
        return it != denials.end() ? it->second : Denial{};
    }

    /// Lets one of the abilities below come or go by itself, as a window manager does.
    void change(bool FakePermissions::*ability, bool isThere)
    {
        if (std::exchange(this->*ability, isThere) != isThere && m_center)
            m_center->post(didChangeNotification());
    }
    void changeAutomation(OSStatus status)
    {
        if (std::exchange(automation, status) != status && m_center)
            m_center->post(didChangeNotification());
    }

    /// Called at each reading of all permissions, before the first answer.
    std::function<void()> onRead = [] {};
    bool accessibility = false;
    bool inputMonitoring = false;
    bool screenRecording = false;
    OSStatus automation = errAEEventWouldRequireUserConsent;
    std::map<Right, Denial> denials;
    QStringList requests;
    QStringList automationTargets;
    /// The user's answer to a prompt; may change the values above.
    std::function<void()> userAnswer = [] {};

private:
    void asked(const QString& what)
    {
        requests.append(what);
        userAnswer();
    }

    NotificationCenter* m_center;
};

} // namespace orvane
