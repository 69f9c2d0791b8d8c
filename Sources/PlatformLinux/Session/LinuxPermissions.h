// Permissions as tests of ability: nobody on this desktop is asked for consent, so the answers say what
// works. The reason of a denial is written to the log, once each.
#pragma once

#include "Platform/Permissions.h"
#include "PlatformLinux/Session/DenialLog.h"
#include "PlatformLinux/Session/FileManagerAutomation.h"
#include "PlatformLinux/X11/SessionKind.h"
#include "PlatformLinux/X11/WindowManagerWatch.h"
#include "PlatformLinux/X11/XAccess.h"

#include <optional>

namespace orvane {

class LogSink;
class NotificationCenter;

class LinuxPermissions : public Permissions {
public:
    /// Changes are told on `center`, from the first answer on.
    LinuxPermissions(LogSink& log, NotificationCenter& center, SessionKind session = sessionKind(),
                     QDBusConnection bus = QDBusConnection::sessionBus());
    ~LinuxPermissions() override;

    /// True if a window manager speaks EWMH: windows of others are read and moved through it alone.
    bool axIsProcessTrusted() override;
    /// Nobody on this desktop can be asked for a window manager, so this only says again why there is none.
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

    [[nodiscard]] Denial denial(Right right) override;

    /// Ends a request that waits for another program, since this one is about to end.
    void giveUpWaiting() { m_fileManager.giveUp(); }

private:
    /// Returns false, and logs the reason, where the session denies it.
    void lookForServer();
    bool sessionAllows(Right right);
    [[nodiscard]] QString denialOfSession(Right right) const;
    void followWindowManager();
    void announceChange();

    NotificationCenter& m_center;
    DenialLog m_denials;
    SessionKind m_session;
    std::optional<WindowManagerWatch> m_windowManager;
    FileManagerAutomation m_fileManager;
    std::optional<XAccess> m_input;
    std::optional<XAccess> m_screen;
};

} // namespace orvane
