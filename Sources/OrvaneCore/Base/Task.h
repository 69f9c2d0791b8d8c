// Asynchronous work on the main thread.
#pragma once

#include <QCoroTask>

#include <exception>
#include <functional>

namespace orvane {

template <class T = void>
using Task = QCoro::Task<T>;

/// Starts a task on the main thread: a queued call, so it begins after the caller has returned.
/// The body's captures live until the task has ended. An error that leaves it is logged as a fault.
void startTask(std::function<Task<>()> body);

/// Logs the error of a task whose end nobody awaits.
void logTaskFault(const std::exception_ptr& error) noexcept;

} // namespace orvane
