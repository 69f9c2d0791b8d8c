#include "Fakes/FakePlatform.h"

namespace orvane {

FakePlatform::FakePlatform()
    : m_platform{.application = application,
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
                 .sharedWorkspace = workspace},
      m_scope(m_platform)
{
}

FakePlatform::~FakePlatform()
{
    runLoop.discardQueued();
}

} // namespace orvane
