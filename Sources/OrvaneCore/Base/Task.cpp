#include "OrvaneCore/Base/Task.h"

#include "OrvaneCore/Base/Log.h"
#include "Platform/Platform.h"
#include "Platform/RunLoop.h"

namespace orvane {

namespace {

// The body is a parameter, so the coroutine's frame keeps it, and with it the captures of a lambda that
// is itself a coroutine.
Task<> run(std::function<Task<>()> body)
{
    try {
        co_await body();
    } catch (const std::exception& error) {
        Log::make(QStringLiteral("Task"))
            .fault(QStringLiteral("A task ended with an error: %1").arg(QString::fromUtf8(error.what())));
    }
}

} // namespace

void startTask(std::function<Task<>()> body)
{
    platform().mainRunLoop.perform([body = std::move(body)] { run(body); });
}

} // namespace orvane
