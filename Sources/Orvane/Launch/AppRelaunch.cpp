#include "Orvane/Launch/AppRelaunch.h"

#include "OrvaneCore/Base/Log.h"
#include "OrvaneCore/Base/Task.h"
#include "Platform/Application.h"
#include "Platform/Bundle.h"
#include "Platform/Platform.h"
#include "Platform/Workspace.h"

namespace orvane {

void AppRelaunch::relaunch()
{
    const QString path = platform().mainBundle.path();
    platform().sharedWorkspace.openApplication(
        path, {.createsNewApplicationInstance = true}, [](const std::optional<QString>& error) {
            if (error) {
                Log::make(QStringLiteral("Relaunch"))
                    .error(
                        QStringLiteral("Orvane ends without a successor; start it by hand. %1").arg(*error));
            }
            startTask([]() -> Task<> {
                platform().application.terminate();
                co_return;
            });
        });
}

} // namespace orvane
