// Permissions as tests of ability: nobody on this desktop is asked for consent, so the answers say what
// works. The reason of a denial is written to the log, once each.
#pragma once

#include "Platform/Permissions.h"
#include "PlatformLinux/Session/AccessibilityBus.h"
#include "PlatformLinux/Session/DenialLog.h"
#include "PlatformLinux/Session/FileManagerAutomation.h"
#include "PlatformLinux/X11/WindowManagerWatch.h"
#include "PlatformLinux/X11/XAccess.h"

#include <optional>

namespace orvane {

class LogSink;

class LinuxPermissions : public Permissions {
public:
    /// `sessionType` is the value of XDG_SESSION_TYPE.
    explicit LinuxPermissions(LogSink& log,
                              const QString& sessionType = qEnvironmentVariable("XDG_SESSION_TYPE"));
    ~LinuxPermissions() override;

    /// True if a window manager speaks EWMH and the accessibility bus is enabled.
    bool axIsProcessTrusted() override;
    /// Enables the accessibility bus; axIsProcessTrusted() follows later.
    void axIsProcessTrustedWithPrompt() override;

    /// True if XInput and XTEST are there and the server lets the keyboard be held. Tried once, and again at
    /// each request.
    bool preflightListenEventAccess() override;
    void requestListenEventAccess() override;

    /// True if the root window can be read. Tried once, and again at each request.
    bool preflightScreenCaptureAccess() override;
    void requestScreenCaptureAccess() override;

    /// Knows the file manager alone; every other program is procNotFound.
    OSStatus determinePermissionToAutomateTarget(const QString& bundleIdentifier, Prompt prompt) override;

private:
    /// Returns false, and logs the reason, where everything is denied.
    bool sessionAllowsAnything();
    void sayWhy(OSStatus automation);

    DenialLog m_denials;
    /// The reason why this kind of session allows nothing; empty where it allows something.
    const QString m_sessionDenial;
    std::optional<WindowManagerWatch> m_windowManager;
    AccessibilityBus m_accessibilityBus;
    FileManagerAutomation m_fileManager;
    std::optional<XAccess> m_input;
    std::optional<XAccess> m_screen;
};

} // namespace orvane
