#include "PlatformLinux/Session/QtApplication.h"

#include "Platform/LogSink.h"
#include "PlatformLinux/Files/AutostartLoginItem.h"
#include "PlatformLinux/Menus/KeyEquivalent.h"
#include "PlatformLinux/Menus/MainMenuView.h"
#include "PlatformLinux/Menus/MenuCommands.h"
#include "PlatformLinux/Session/AboutPanel.h"
#include "PlatformLinux/X11/WindowManagement.h"

#include <QApplication>
#include <QEvent>
#include <QSessionManager>
#include <QSocketNotifier>
#include <QWidget>
#include <QWindow>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <utility>

#include <sys/eventfd.h>
#include <unistd.h>

namespace orvane {

namespace {

void writeLog(LogSink& log, LogLevel level, const QString& message)
{
    log.write(level, QStringLiteral("net.lindenrow.orvane"), QStringLiteral("Application"), message);
}

/// The signal handler writes to it and may do no more than that.
int endingSignal = -1;

extern "C" void noteEndingSignal(int)
{
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = ::write(endingSignal, &one, sizeof one);
}

bool isKeyablePanel(const QWindow& window)
{
    return window.type() == Qt::Tool && !(window.flags() & Qt::WindowDoesNotAcceptFocus);
}

void requireDisplay(LogSink& log)
{
    // In a Wayland session many people set the toolkit to its own protocol for all programs. Only through the
    // session's X server does this one see anything of others.
    const QByteArray plugin = qgetenv("QT_QPA_PLATFORM");
    if (!plugin.isEmpty() && !plugin.startsWith("wayland"))
        return;
    if (qEnvironmentVariableIsEmpty("DISPLAY")) {
        writeLog(log, LogLevel::fault,
                 QStringLiteral("There is no X display to run on: DISPLAY is not set. Start Orvane from a "
                                "desktop session"));
        std::exit(1);
    }
    qputenv("QT_QPA_PLATFORM", "xcb");
}

} // namespace

QtApplication::QtApplication(int& argc, char** argv, LogSink& log) : m_log(log)
{
    requireDisplay(log);
    QCoreApplication::setApplicationName(QStringLiteral("orvane"));
    QCoreApplication::setApplicationVersion(QStringLiteral(ORVANE_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("net.lindenrow.orvane"));
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    m_application = std::make_unique<QApplication>(argc, argv);
    if (QGuiApplication::arguments().contains(AutostartLoginItem::startArgument()) ||
        m_application->isSessionRestored())
        m_startedBy = StartedBy::session;
    connect(m_application.get(), &QGuiApplication::saveStateRequest, this, &QtApplication::refuseRestoring,
            Qt::DirectConnection);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    m_mainMenu = std::make_unique<MainMenuView>(
        MainMenuView::Commands{[this](QStringView selector) { return takesAction(selector); },
                               [this](QStringView selector) { return sendAction(selector); }});
    endOnSignals();
}

QtApplication::~QtApplication()
{
    // The widgets must end before the toolkit does.
    m_mainMenu.reset();
    delete m_aboutPanel;
}

/// Starting at login is what the login item is for: a session manager that restores programs as well would
/// start this one twice, and also for a person who has switched that off.
void QtApplication::refuseRestoring(QSessionManager& manager)
{
    manager.setRestartHint(QSessionManager::RestartNever);
}

void QtApplication::endOnSignals()
{
    // A handler is used and not a signalfd: a blocked mask would be inherited by every program that we start.
    endingSignal = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (endingSignal < 0) {
        writeLog(
            m_log, LogLevel::error,
            QStringLiteral("Signals can't be watched: %1").arg(QString::fromLocal8Bit(std::strerror(errno))));
        return;
    }
    m_signals = std::make_unique<QSocketNotifier>(endingSignal, QSocketNotifier::Read);
    connect(m_signals.get(), &QSocketNotifier::activated, this, [this] { terminate(); });
    struct sigaction action = {};
    action.sa_handler = noteEndingSignal;
    action.sa_flags = SA_RESTART;
    for (const int signal : std::array{SIGINT, SIGTERM, SIGHUP})
        sigaction(signal, &action, nullptr);
    // A shell that stopped this process would stop the user's keyboard with it, and so the key that continues
    // the process.
    for (const int signal : std::array{SIGTSTP, SIGTTIN, SIGTTOU})
        std::signal(signal, SIG_IGN);
}

/// Windows that are open are listed in any case, as those of every program are on this desktop.
void QtApplication::setActivationPolicy(ActivationPolicy policy)
{
    m_policy = policy;
}

void QtApplication::activateIgnoringOtherApps()
{
    unhide();
    const QWindowList windows = QGuiApplication::topLevelWindows();
    // While a panel that takes typing is open in front of the windows, these stay where they are.
    const bool hasPanel = std::any_of(windows.begin(), windows.end(), [](const QWindow* window) {
        return window->isVisible() && isKeyablePanel(*window);
    });
    for (const QWindow* window : windows) {
        if (window->isVisible() && (hasPanel ? isKeyablePanel(*window) : window->type() == Qt::Window))
            requestActivation(*window);
    }
}

void QtApplication::setMainMenu(std::shared_ptr<Menu> menu)
{
    m_mainMenu->setMenu(std::move(menu));
}

std::shared_ptr<const Menu> QtApplication::mainMenu() const
{
    return m_mainMenu->menu();
}

EventFlags QtApplication::keyEquivalentModifiers(EventFlags pressed) const
{
    return menuModifiers(pressed);
}

void QtApplication::setWindowsMenu(std::shared_ptr<Menu> menu)
{
    m_mainMenu->setWindowsMenu(std::move(menu));
}

bool QtApplication::takesAction(QStringView selector) const
{
    return menuCommands::isTaken(selector) || selector == u"hide:" || selector == u"terminate:" ||
           selector == u"orderFrontStandardAboutPanel:";
}

bool QtApplication::sendAction(QStringView selector)
{
    if (menuCommands::send(selector))
        return true;
    if (selector == u"hide:")
        hide();
    else if (selector == u"terminate:")
        terminate();
    else if (selector == u"orderFrontStandardAboutPanel:")
        orderFrontStandardAboutPanel();
    else
        return false;
    return true;
}

void QtApplication::hide()
{
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (!window->isVisible() || window->windowType() == Qt::ToolTip)
            continue;
        window->hide();
        if (window->windowType() != Qt::Popup)
            m_hidden.append(window);
    }
}

void QtApplication::unhide()
{
    const auto hidden = std::exchange(m_hidden, {});
    for (const QPointer<QWidget>& window : hidden) {
        if (window)
            window->show();
    }
}

void QtApplication::orderFrontStandardAboutPanel()
{
    if (!m_aboutPanel)
        m_aboutPanel = new AboutPanel;
    m_aboutPanel->show();
    m_aboutPanel->raise();
    if (const QWindow* window = m_aboutPanel->windowHandle())
        requestActivation(*window);
}

void QtApplication::terminate()
{
    QCoreApplication::quit();
}

int QtApplication::run()
{
    QMetaObject::invokeMethod(this, &QtApplication::launch, Qt::QueuedConnection);
    return QApplication::exec();
}

void QtApplication::launch()
{
    if (m_delegate)
        m_delegate->applicationDidFinishLaunching();
    m_hasLaunched = true;
    if (m_reopenIsDue)
        reopen();
}

void QtApplication::reopen()
{
    if (!m_hasLaunched) {
        m_reopenIsDue = true;
        return;
    }
    m_reopenIsDue = false;
    unhide();
    if (!m_delegate)
        return;
    bool hasVisibleWindows = false;
    for (const QWindow* window : QGuiApplication::topLevelWindows())
        hasVisibleWindows = hasVisibleWindows || (window->isVisible() && window->type() == Qt::Window);
    m_delegate->applicationShouldHandleReopen(hasVisibleWindows);
}

} // namespace orvane
