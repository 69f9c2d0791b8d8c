#include "Fakes/FakePlatform.h"

namespace orvane {

FakePlatform::FakePlatform()
    : m_platform{.accessibility = accessibility,
                 .application = application,
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
                 .sharedWorkspace = workspace},
      m_scope(m_platform)
{
}

FakePlatform::~FakePlatform()
{
    runLoop.discardQueued();
}

} // namespace orvane
