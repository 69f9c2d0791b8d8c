// Permissions as a test sets them.
#pragma once

#include "Platform/Permissions.h"

#include <QStringList>

#include <functional>
#include <vector>

namespace orvane {

class FakePermissions : public Permissions {
public:
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

    /// Called at each reading of all permissions, before the first answer.
    std::function<void()> onRead = [] {};
    bool accessibility = false;
    bool inputMonitoring = false;
    bool screenRecording = false;
    OSStatus automation = errAEEventWouldRequireUserConsent;
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
};

} // namespace orvane
