// Work on the pool of threads, awaited on the main thread.
//
//     UnownedTask LampController::measure(std::weak_ptr<LampController> weak, Lamp lamp)
//     {
//         auto measure = [lamp = std::move(lamp)] { return lamp.measured(); };
//         const auto lumens = co_await onPool(measure);
//         if (const auto self = weak.lock())
//             self->show(lumens);
//     }
#pragma once

#include <coroutine>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

namespace orvane {

/// A coroutine whose end nobody awaits. It runs from its call on, and an error that leaves it is logged as a
/// fault. If the run loop ends before it was resumed from the pool, it is destroyed. As its owner may end
/// while it waits, it is a static function whose parameters are values and weak pointers. Main thread.
class UnownedTask {
public:
    struct promise_type {
        [[nodiscard]] UnownedTask get_return_object() const noexcept { return {}; }
        [[nodiscard]] std::suspend_never initial_suspend() const noexcept { return {}; }
        [[nodiscard]] std::suspend_never final_suspend() const noexcept { return {}; }
        void return_void() const noexcept {}
        void unhandled_exception() const noexcept;
    };
};

namespace detail {

/// A coroutine that has to be resumed once.
class Continuation {
public:
    enum class IfDropped { leave, destroy };

    Continuation(std::coroutine_handle<> caller, IfDropped ifDropped)
        : m_caller(caller), m_ifDropped(ifDropped)
    {
    }
    ~Continuation();
    Continuation(const Continuation&) = delete;
    Continuation& operator=(const Continuation&) = delete;

    void resume() { std::exchange(m_caller, nullptr).resume(); }

private:
    std::coroutine_handle<> m_caller;
    IfDropped m_ifDropped;
};

template <class T>
struct PoolResult {
    std::optional<T> value;
    std::exception_ptr error;
};
template <>
struct PoolResult<void> {
    std::exception_ptr error;
};

} // namespace detail

/// Takes a piece of work to a thread that may block, and returns before it is done.
using Executor = std::function<void(std::function<void()> work)>;

/// The result of `onPool` and `onExecutor`: to be awaited once, on the main thread.
template <class T>
class PoolWork {
public:
    PoolWork(Executor executor, std::function<T()> work)
        : m_executor(std::move(executor)), m_work(std::move(work))
    {
    }

    [[nodiscard]] bool await_ready() const noexcept { return false; }

    template <class Promise>
    void await_suspend(std::coroutine_handle<Promise> caller);

    T await_resume()
    {
        if (m_result->error)
            std::rethrow_exception(m_result->error);
        if constexpr (!std::is_void_v<T>)
            return *std::move(m_result->value);
    }

private:
    Executor m_executor;
    std::function<T()> m_work;
    std::shared_ptr<detail::PoolResult<T>> m_result = std::make_shared<detail::PoolResult<T>>();
};

/// Work that may be handed over inside a `co_await`. GCC 12 destroys a closure twice that is a temporary
/// there, so one with captures must have a name.
template <class Work>
concept NamedWork = std::is_lvalue_reference_v<Work> || std::is_trivially_copyable_v<Work>;

/// Runs `work`, which is moved from, on a thread of the pool; `co_await` returns its result, or throws its
/// error, in a later turn of the main run loop. `work` must not touch anything that belongs to the main
/// thread; what it holds is released before the result comes.
template <NamedWork Work>
[[nodiscard]] PoolWork<std::invoke_result_t<Work>> onPool(Work&& work);

/// Does the same with an executor other than the pool itself, such as one that keeps an order.
template <NamedWork Work>
[[nodiscard]] PoolWork<std::invoke_result_t<Work>> onExecutor(Executor executor, Work&& work)
{
    return {std::move(executor), std::move(work)}; // NOLINT(bugprone-move-forwarding-reference)
}

namespace detail {

Executor poolExecutor();
/// Runs `work` by the executor, then resumes on the main thread.
void hand(const Executor& executor, std::function<void()> work, std::shared_ptr<Continuation> continuation);

} // namespace detail

template <NamedWork Work>
PoolWork<std::invoke_result_t<Work>> onPool(Work&& work)
{
    return {detail::poolExecutor(), std::move(work)}; // NOLINT(bugprone-move-forwarding-reference)
}

template <class T>
template <class Promise>
void PoolWork<T>::await_suspend(std::coroutine_handle<Promise> caller)
{
    using enum detail::Continuation::IfDropped;
    // A task of another kind belongs to its holder.
    constexpr auto ifDropped = std::is_same_v<Promise, UnownedTask::promise_type> ? destroy : leave;
    detail::hand(
        m_executor,
        [result = m_result, work = std::move(m_work)] {
            try {
                if constexpr (std::is_void_v<T>)
                    work();
                else
                    result->value.emplace(work());
            } catch (...) {
                result->error = std::current_exception();
            }
        },
        std::make_shared<detail::Continuation>(caller, ifDropped));
}

} // namespace orvane
