#include "PlatformLinux/LinuxPlatform.h"

#include "Platform/NotificationCenter.h"
#include "PlatformLinux/EventTap/XInputEventTaps.h"
#include "PlatformLinux/Files/AutostartLoginItem.h"
#include "PlatformLinux/Files/JsonDefaultsStore.h"
#include "PlatformLinux/Files/ProgramBundle.h"
#include "PlatformLinux/Files/XdgFileManager.h"
#include "PlatformLinux/JournalLogSink.h"
#include "PlatformLinux/Session/LinuxPermissions.h"
#include "PlatformLinux/Session/LinuxWorkspace.h"
#include "PlatformLinux/Session/LogindPowerAssertions.h"
#include "PlatformLinux/Session/QtApplication.h"
#include "PlatformLinux/Session/QtRunLoop.h"
#include "PlatformLinux/Session/SingleInstance.h"
#include "PlatformLinux/Tray/LinuxStatusBar.h"

namespace orvane {

struct LinuxPlatform::Services {
    Services(int& argc, char** argv) : application(argc, argv, log) {}

    JournalLogSink log;
    QtApplication application;
    QtRunLoop runLoop;
    SystemClock clock;
    ProgramBundle bundle;
    XdgFileManager fileManager;
    JsonDefaultsStore defaults{JsonDefaultsStore::standardPath(), log, runLoop};
    AutostartLoginItem loginItem;
    LogindPowerAssertions powerAssertions{log};
    SingleInstance singleInstance{log};
    LinuxWorkspace workspace{log, singleInstance};
    LinuxStatusBar statusBar{log};
    NotificationCenter notificationCenter;
    XInputEventTaps eventTaps{log, [this] { return workspace.commandKeys(); }};
    LinuxPermissions permissions{log};

    Platform platform{.application = application,
                      .mainBundle = bundle,
                      .clock = clock,
                      .defaultNotificationCenter = notificationCenter,
                      .eventTaps = eventTaps,
                      .fileManager = fileManager,
                      .loginItem = loginItem,
                      .log = log,
                      .permissions = permissions,
                      .powerAssertions = powerAssertions,
                      .mainRunLoop = runLoop,
                      .standardDefaults = defaults,
                      .systemStatusBar = statusBar,
                      .sharedWorkspace = workspace};
};

LinuxPlatform::LinuxPlatform(int& argc, char** argv) : m_services(std::make_unique<Services>(argc, argv)) {}
LinuxPlatform::~LinuxPlatform() = default;

Platform& LinuxPlatform::platform()
{
    return m_services->platform;
}

int LinuxPlatform::run()
{
    QtApplication& application = m_services->application;
    if (m_services->singleInstance.claim([&application] { application.reopen(); }) ==
        SingleInstance::Claim::handedOver)
        return 0;
    return application.run();
}

} // namespace orvane
