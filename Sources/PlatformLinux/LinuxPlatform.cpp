#include "PlatformLinux/LinuxPlatform.h"

#include "Platform/NotificationCenter.h"
#include "PlatformLinux/Accessibility/X11Accessibility.h"
#include "PlatformLinux/Appearance/DesktopAppearance.h"
#include "PlatformLinux/Common/LargeBlocks.h"
#include "PlatformLinux/Defaults/JsonDefaultsStore.h"
#include "PlatformLinux/Defaults/SavingAtExit.h"
#include "PlatformLinux/DesktopPicture/LinuxDesktopPicture.h"
#include "PlatformLinux/EventMonitors/X11EventMonitors.h"
#include "PlatformLinux/EventTap/XInputEventTaps.h"
#include "PlatformLinux/Files/AutostartLoginItem.h"
#include "PlatformLinux/Files/ProgramBundle.h"
#include "PlatformLinux/Files/XdgFileManager.h"
#include "PlatformLinux/HotKeys/X11HotKeys.h"
#include "PlatformLinux/Http/FetcherHttp.h"
#include "PlatformLinux/Keys/ServerKeymap.h"
#include "PlatformLinux/Keys/XkbInputSources.h"
#include "PlatformLinux/Language/Catalogues.h"
#include "PlatformLinux/Menus/MenuTracking.h"
#include "PlatformLinux/Overlays/X11Overlays.h"
#include "PlatformLinux/Panels/X11Panels.h"
#include "PlatformLinux/Pasteboard/X11Pasteboard.h"
#include "PlatformLinux/ScreenCapture/X11ScreenCapture.h"
#include "PlatformLinux/Screens/X11Screens.h"
#include "PlatformLinux/Session/JournalLogSink.h"
#include "PlatformLinux/Session/LinuxPermissions.h"
#include "PlatformLinux/Session/LinuxWorkspace.h"
#include "PlatformLinux/Session/LogindPowerAssertions.h"
#include "PlatformLinux/Session/QtApplication.h"
#include "PlatformLinux/Session/QtRunLoop.h"
#include "PlatformLinux/Session/RealtimeKit.h"
#include "PlatformLinux/Session/SingleInstance.h"
#include "PlatformLinux/Session/Succession.h"
#include "PlatformLinux/Session/XkbSound.h"
#include "PlatformLinux/Shortcuts/DesktopShortcuts.h"
#include "PlatformLinux/Thumbnails/DesktopThumbnails.h"
#include "PlatformLinux/Tray/LinuxStatusBar.h"
#include "PlatformLinux/WindowDrags/X11WindowDrags.h"
#include "PlatformLinux/Worker/WorkerPictures.h"
#include "PlatformLinux/Worker/WorkerTextRecognition.h"

#include <QThreadPool>

namespace orvane {

namespace {

/// A process that has been told to end takes a fraction of this.
constexpr std::chrono::seconds longestFarewell{5};

} // namespace

/// The part of a process that exists before it knows whether it is the one instance.
struct LinuxPlatform::Process {
    Process(int& argc, char** argv) : application(argc, argv, log) {}

    JournalLogSink log;
    QtApplication application;
    Catalogues catalogues;
    SingleInstance singleInstance{log};
};

struct LinuxPlatform::Services {
    explicit Services(Process& theProcess) : process(theProcess)
    {
        // It waits for the disk. The entry's file is replaced as a whole.
        runLoop.performDetached([item = loginItem]() mutable { item.renew(); });
        eventTaps.onPost = [this](std::uint32_t keyCode, std::uint32_t modifiers) {
            hotKeys.giveWayTo(keyCode, modifiers);
        };
        eventTaps.onKeysWait = [this](pid_t thread) { realtimeKit.raise(thread); };
        eventTaps.onKeysPass = [this] { realtimeKit.lower(); };
    }

    Process& process;
    LogSink& log = process.log;
    DesktopAppearance appearance;
    QtRunLoop runLoop;
    SystemClock clock;
    ProgramBundle bundle;
    XdgFileManager fileManager;
    JsonDefaultsStore defaults{JsonDefaultsStore::standardPath(), log};
    SavingAtExit savingAtExit{defaults};
    AutostartLoginItem loginItem;
    LogindPowerAssertions powerAssertions{log};
    LinuxWorkspace workspace{log, process.singleInstance};
    NotificationCenter notificationCenter;
    MenuTracking menuTracking{notificationCenter};
    LinuxStatusBar statusBar{log, notificationCenter, &menuTracking};
    ServerKeymap keymap;
    DesktopShortcuts desktopShortcuts{keymap};
    X11HotKeys hotKeys{log, desktopShortcuts};
    XkbInputSources inputSources{keymap, notificationCenter};
    XkbSound sound;
    RealtimeKit realtimeKit;
    XInputEventTaps eventTaps{log, [this] { return workspace.commandKeys(); }};
    X11Screens screens{notificationCenter};
    X11ScreenCapture screenCapture{screens, runLoop};
    X11Panels panels{notificationCenter};
    X11Overlays overlays{[this] { hotKeys.letGoOfKeyboard(); }};
    X11EventMonitors eventMonitors{eventTaps, menuTracking, screens};
    LinuxPermissions permissions{log, notificationCenter};
    X11Accessibility accessibility{screens, permissions};
    X11WindowDrags windowDrags{eventMonitors, screens, permissions};
    X11Pasteboard generalPasteboard{log, runLoop};
    WorkerPictures pictures{log};
    WorkerTextRecognition textRecognition{log};
    DesktopThumbnails thumbnails{pictures};
    FetcherHttp http{runLoop};
    LinuxDesktopPicture desktopPicture{pictures};

    Platform platform{.accessibility = accessibility,
                      .application = process.application,
                      .mainBundle = bundle,
                      .clock = clock,
                      .defaultNotificationCenter = notificationCenter,
                      .desktopPicture = desktopPicture,
                      .eventMonitors = eventMonitors,
                      .eventTaps = eventTaps,
                      .fileManager = fileManager,
                      .generalPasteboard = generalPasteboard,
                      .hotKeys = hotKeys,
                      .http = http,
                      .inputSources = inputSources,
                      .loginItem = loginItem,
                      .log = log,
                      .overlays = overlays,
                      .panels = panels,
                      .permissions = permissions,
                      .pictures = pictures,
                      .powerAssertions = powerAssertions,
                      .mainRunLoop = runLoop,
                      .screenCapture = screenCapture,
                      .screens = screens,
                      .sound = sound,
                      .standardDefaults = defaults,
                      .systemStatusBar = statusBar,
                      .textRecognition = textRecognition,
                      .thumbnails = thumbnails,
                      .windowDrags = windowDrags,
                      .sharedWorkspace = workspace};
};

LinuxPlatform::LinuxPlatform(int& argc, char** argv) : m_process(std::make_unique<Process>(argc, argv))
{
    returnLargeBlocksToSystem();
}
LinuxPlatform::~LinuxPlatform() = default;

std::optional<int> LinuxPlatform::handOver()
{
    QtApplication& application = m_process->application;
    Succession::awaitPredecessor(longestFarewell, m_process->log);
    switch (
        m_process->singleInstance.claim(application.startedBy(), [&application] { application.reopen(); })) {
    case SingleInstance::Claim::claimed:
    case SingleInstance::Claim::unavailable:
        break;
    case SingleInstance::Claim::handedOver:
    case SingleInstance::Claim::leftAlone:
        return 0;
    case SingleInstance::Claim::unanswered:
        return 1;
    }
    return std::nullopt;
}

Platform& LinuxPlatform::platform()
{
    if (!m_services)
        m_services = std::make_unique<Services>(*m_process);
    return m_services->platform;
}

int LinuxPlatform::run()
{
    const int status = m_process->application.run();
    if (m_services) {
        m_services->permissions.giveUpWaiting();
        m_services->pictures.giveUp();
        m_services->textRecognition.giveUp();
        m_services->thumbnails.giveUp();
        m_services->generalPasteboard.giveUp();
        m_services->http.giveUp();
    }
    // Work on the pool may use the platform, and files that it writes have to be complete.
    QThreadPool::globalInstance()->waitForDone();
    return status;
}

} // namespace orvane
