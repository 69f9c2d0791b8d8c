#include "PlatformLinux/Session/LinuxPermissions.h"

#include "Platform/NotificationCenter.h"
#include "PlatformLinux/Applications/KnownPrograms.h"
#include "PlatformLinux/Common/LinuxText.h"

namespace orvane {

namespace {

QString denialOfWindows()
{
    return LinuxText::tr("Windows of other programs can't be moved: no window manager is running that speaks "
                         "EWMH. Start one.");
}

/// Says what keeps the file manager from being asked; empty if nothing does.
QString denialOfAutomation(Permissions::OSStatus status)
{
    switch (status) {
    case Permissions::procNotFound:
        return LinuxText::tr("The file manager can't be asked for the selected files: none answers on the "
                             "session bus to org.freedesktop.FileManager1. Install one that does, such as "
                             "Thunar.");
    case Permissions::errAEEventNotPermitted:
        return LinuxText::tr("The file manager can't be asked for the selected files: the session bus "
                             "refuses it to this program. The bus's policy would have to allow it.");
    case FileManagerAutomation::errAETimeout:
        return LinuxText::tr("The file manager can't be asked for the selected files: it doesn't answer. End "
                             "it, and it is started anew when it is needed.");
    default:
        return {};
    }
}

QString denialUnderWayland(Permissions::Right right)
{
    switch (right) {
    case Permissions::Right::accessibility:
        return LinuxText::tr(
            "This is a Wayland session. Orvane could move the windows of X11 programs alone, "
            "not those of others, so it moves none. In an X11 session it moves all.");
    case Permissions::Right::listenEvent:
        return LinuxText::tr("This is a Wayland session. Orvane would see keys only while an X11 program has "
                             "the focus, so it leaves them alone. In an X11 session it sees all.");
    case Permissions::Right::screenCapture:
        return LinuxText::tr(
            "This is a Wayland session. Orvane could read the windows of X11 programs alone, "
            "so it reads none. In an X11 session it reads the whole screen.");
    case Permissions::Right::automation:
        break; // works over the session bus
    }
    return {};
}

} // namespace

LinuxPermissions::LinuxPermissions(LogSink& log, NotificationCenter& center, SessionKind session,
                                   QDBusConnection bus)
    : m_center(center), m_denials(log), m_session(session), m_fileManager(std::move(bus))
{
    QObject::connect(&m_fileManager, &FileManagerAutomation::changed, &m_fileManager,
                     [this] { announceChange(); });
}

LinuxPermissions::~LinuxPermissions() = default;

QString LinuxPermissions::denialOfSession(Right right) const
{
    if (right == Right::automation)
        return {};
    switch (m_session) {
    case SessionKind::x11:
        return {};
    case SessionKind::xwayland:
        return denialUnderWayland(right);
    case SessionKind::waylandAlone:
        return LinuxText::tr(
            "This Wayland session has no X server, through which Orvane sees keys, windows and "
            "screen. Install Xwayland, or choose an X11 session at login.");
    case SessionKind::withoutServer:
        return LinuxText::tr(
            "There is no X server, through which Orvane sees keys, windows and screen. Start "
            "Orvane from an X11 session.");
    }
    Q_UNREACHABLE();
}

/// A server that couldn't be reached may be there now.
void LinuxPermissions::lookForServer()
{
    if (m_session == SessionKind::withoutServer)
        m_session = sessionKind();
}

bool LinuxPermissions::sessionAllows(Right right)
{
    const QString denial = denialOfSession(right);
    if (denial.isEmpty())
        return true;
    m_denials.say(denial);
    return false;
}

void LinuxPermissions::announceChange()
{
    m_center.post(Permissions::didChangeNotification());
}

void LinuxPermissions::followWindowManager()
{
    if (m_windowManager)
        return;
    m_windowManager.emplace([this](bool isPresent) {
        m_denials.sayAgain(isPresent ? QStringLiteral("A window manager is there again.")
                                     : QStringLiteral("The window manager is gone: windows of other programs "
                                                      "can't be moved until there is one again."));
        announceChange();
    });
}

bool LinuxPermissions::axIsProcessTrusted()
{
    if (!sessionAllows(Right::accessibility))
        return false;
    followWindowManager();
    if (!m_windowManager->isPresent())
        m_denials.say(denialOfWindows());
    return m_windowManager->isPresent();
}

void LinuxPermissions::axIsProcessTrustedWithPrompt()
{
    lookForServer();
    if (!sessionAllows(Right::accessibility))
        return;
    followWindowManager();
    if (!m_windowManager->isPresent())
        m_denials.sayAgain(denialOfWindows());
}

bool LinuxPermissions::preflightListenEventAccess()
{
    if (!sessionAllows(Right::listenEvent))
        return false;
    if (!m_input)
        m_input = tryInputAccess();
    if (!m_input->granted)
        m_denials.say(m_input->reason);
    return m_input->granted;
}

void LinuxPermissions::requestListenEventAccess()
{
    lookForServer();
    if (!sessionAllows(Right::listenEvent))
        return;
    m_input = tryInputAccess();
    if (!m_input->granted)
        m_denials.sayAgain(m_input->reason);
}

bool LinuxPermissions::preflightScreenCaptureAccess()
{
    if (!sessionAllows(Right::screenCapture))
        return false;
    if (!m_screen)
        m_screen = tryScreenAccess();
    if (!m_screen->granted)
        m_denials.say(m_screen->reason);
    return m_screen->granted;
}

void LinuxPermissions::requestScreenCaptureAccess()
{
    lookForServer();
    if (!sessionAllows(Right::screenCapture))
        return;
    m_screen = tryScreenAccess();
    if (!m_screen->granted)
        m_denials.sayAgain(m_screen->reason);
}

Permissions::OSStatus LinuxPermissions::determinePermissionToAutomateTarget(const QString& bundleIdentifier,
                                                                            Prompt prompt)
{
    if (bundleIdentifier != systemProgram::fileManager)
        return procNotFound;
    const OSStatus status = prompt == Prompt::yes ? m_fileManager.askAndStart() : m_fileManager.status();
    if (const QString denial = denialOfAutomation(status); !denial.isEmpty())
        m_denials.say(denial);
    return status;
}

Permissions::Denial LinuxPermissions::denial(Right right)
{
    if (const QString reason = denialOfSession(right); !reason.isEmpty()) {
        const bool maybeReached = m_session == SessionKind::withoutServer;
        return {.reason = reason, .canBeRequested = maybeReached, .needsRestart = false};
    }
    const auto ofServer = [](const std::optional<XAccess>& access) {
        return access && !access->granted ? Denial{access->reason, access->isLate, false}
                                          : Denial{.needsRestart = false};
    };
    switch (right) {
    case Right::accessibility:
        if (m_windowManager && !m_windowManager->isPresent())
            return {.reason = denialOfWindows(), .canBeRequested = false, .needsRestart = false};
        return {.needsRestart = false};
    case Right::listenEvent:
        return ofServer(m_input);
    case Right::screenCapture:
        return ofServer(m_screen);
    case Right::automation: {
        const OSStatus status = m_fileManager.status();
        return {.reason = denialOfAutomation(status),
                .canBeRequested = status != errAEEventNotPermitted,
                .needsRestart = false};
    }
    }
    Q_UNREACHABLE();
}

} // namespace orvane
