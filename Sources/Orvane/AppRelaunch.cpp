#include "Orvane/AppRelaunch.h"

#include "OrvaneCore/Task.h"
#include "Platform/Application.h"
#include "Platform/Bundle.h"
#include "Platform/Platform.h"
#include "Platform/Workspace.h"

namespace orvane {

void AppRelaunch::relaunch()
{
    platform().sharedWorkspace.openApplication(platform().mainBundle.path(),
                                               {.createsNewApplicationInstance = true},
                                               [](const std::optional<QString>&) {
                                                   startTask([]() -> Task<> {
                                                       platform().application.terminate();
                                                       co_return;
                                                   });
                                               });
}

} // namespace orvane
