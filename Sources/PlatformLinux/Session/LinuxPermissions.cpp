#include "PlatformLinux/Session/LinuxPermissions.h"

#include "Platform/NotificationCenter.h"
#include "PlatformLinux/Applications/KnownPrograms.h"
#include "PlatformLinux/X11/X11Connection.h"

namespace orvane {

namespace {

QString denialOfWindows()
{
    return QStringLiteral(
        "Windows of other programs can't be moved: no window manager is running that speaks "
        "EWMH. Start one");
}

QString denialOfSession(const QString& sessionType)
{
    if (sessionType.compare(QLatin1StringView("wayland"), Qt::CaseInsensitive) == 0) {
        return QStringLiteral(
            "This is a Wayland session, in which no program can see or change the keys, windows "
            "and screen of others, so all permissions are denied. Choose an X11 session at "
            "login to use Orvane");
    }
    if (!X11Connection::ofApplication()) {
        return QStringLiteral("There is no X server, so all permissions are denied. Start Orvane from an X11 "
                              "session");
    }
    return {};
}

} // namespace

LinuxPermissions::LinuxPermissions(LogSink& log, NotificationCenter& center, const QString& sessionType,
                                   QDBusConnection session)
    : m_center(center),
      m_denials(log),
      m_sessionDenial(denialOfSession(sessionType)),
      m_fileManager(std::move(session))
{
    QObject::connect(&m_fileManager, &FileManagerAutomation::changed, &m_fileManager,
                     [this] { announceChange(); });
}

LinuxPermissions::~LinuxPermissions() = default;

bool LinuxPermissions::sessionAllowsAnything()
{
    if (m_sessionDenial.isEmpty())
        return true;
    m_denials.say(m_sessionDenial);
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
    if (!sessionAllowsAnything())
        return false;
    followWindowManager();
    if (!m_windowManager->isPresent())
        m_denials.say(denialOfWindows());
    return m_windowManager->isPresent();
}

void LinuxPermissions::axIsProcessTrustedWithPrompt()
{
    if (!sessionAllowsAnything())
        return;
    followWindowManager();
    if (!m_windowManager->isPresent())
        m_denials.sayAgain(denialOfWindows());
}

bool LinuxPermissions::preflightListenEventAccess()
{
    if (!sessionAllowsAnything())
        return false;
    if (!m_input)
        m_input = tryInputAccess();
    if (!m_input->granted)
        m_denials.say(m_input->reason);
    return m_input->granted;
}

void LinuxPermissions::requestListenEventAccess()
{
    if (!sessionAllowsAnything())
        return;
    m_input = tryInputAccess();
    if (!m_input->granted)
        m_denials.sayAgain(m_input->reason);
}

bool LinuxPermissions::preflightScreenCaptureAccess()
{
    if (!sessionAllowsAnything())
        return false;
    if (!m_screen)
        m_screen = tryScreenAccess();
    if (!m_screen->granted)
        m_denials.say(m_screen->reason);
    return m_screen->granted;
}

void LinuxPermissions::requestScreenCaptureAccess()
{
    if (!sessionAllowsAnything())
        return;
    m_screen = tryScreenAccess();
    if (!m_screen->granted)
        m_denials.sayAgain(m_screen->reason);
}

Permissions::OSStatus LinuxPermissions::determinePermissionToAutomateTarget(const QString& bundleIdentifier,
                                                                            Prompt prompt)
{
    if (!sessionAllowsAnything())
        return errAEEventNotPermitted;
    if (bundleIdentifier != systemProgram::fileManager)
        return procNotFound;
    const OSStatus status = prompt == Prompt::yes ? m_fileManager.askAndStart() : m_fileManager.status();
    sayWhy(status);
    return status;
}

void LinuxPermissions::sayWhy(OSStatus automation)
{
    switch (automation) {
    case procNotFound:
        m_denials.say(
            QStringLiteral("The file manager can't be asked for the selected files: none answers on the "
                           "session bus to org.freedesktop.FileManager1. Install one that does, such "
                           "as Thunar"));
        break;
    case errAEEventNotPermitted:
        m_denials.say(
            QStringLiteral("The file manager can't be asked for the selected files: the session bus "
                           "refuses it to this program. The bus's policy would have to allow it"));
        break;
    case FileManagerAutomation::errAETimeout:
        m_denials.say(
            QStringLiteral("The file manager can't be asked for the selected files: it doesn't answer. "
                           "End it, and it is started anew when it is needed"));
        break;
    default:
        break;
    }
}

} // namespace orvane
