#include "OrvaneCore/Base/Pool.h"

#include "OrvaneCore/Base/Task.h"
#include "Platform/Platform.h"
#include "Platform/RunLoop.h"

namespace orvane {

void UnownedTask::promise_type::unhandled_exception() const noexcept
{
    logTaskFault(std::current_exception());
}

detail::Continuation::~Continuation()
{
    if (m_caller && m_ifDropped == IfDropped::destroy)
        m_caller.destroy();
}

Executor detail::poolExecutor()
{
    return [&runLoop = platform().mainRunLoop](std::function<void()> work) {
        runLoop.performDetached(std::move(work));
    };
}

void detail::hand(const Executor& executor, std::function<void()> work,
                  std::shared_ptr<Continuation> continuation)
{
    executor([work = std::move(work), continuation = std::move(continuation),
              &runLoop = platform().mainRunLoop]() mutable {
        work();
        work = nullptr;
        // This thread holds no reference to the coroutine, which belongs to the main thread.
        runLoop.perform([continuation = std::move(continuation)] { continuation->resume(); });
    });
}

} // namespace orvane
