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
    } catch (...) {
        logTaskFault(std::current_exception());
    }
}

} // namespace

void logTaskFault(const std::exception_ptr& error) noexcept
{
    QString text = QStringLiteral("unknown");
    try {
        std::rethrow_exception(error);
    } catch (const std::exception& known) {
        text = QString::fromUtf8(known.what());
    } catch (...) {
        // The error has no text.
    }
    Log::make(QStringLiteral("Task")).fault(QStringLiteral("A task ended with an error: %1").arg(text));
}

void startTask(std::function<Task<>()> body)
{
    platform().mainRunLoop.perform([body = std::move(body)] { run(body); });
}

} // namespace orvane
