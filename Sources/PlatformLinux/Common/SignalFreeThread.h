// Threads on which no signal is handled: the main thread handles them all. Any thread.
#pragma once

#include <csignal>
#include <thread>
#include <utility>

namespace orvane {

/// Blocks every signal on this thread until the object ends.
class SignalBlock {
public:
    SignalBlock()
    {
        sigset_t all;
        ::sigfillset(&all);
        ::pthread_sigmask(SIG_SETMASK, &all, &m_before);
    }
    ~SignalBlock() { ::pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }
    SignalBlock(const SignalBlock&) = delete;
    SignalBlock& operator=(const SignalBlock&) = delete;

private:
    sigset_t m_before{};
};

/// Throws as std::thread does; the caller's signals are as before in any case.
template <typename Function>
[[nodiscard]] std::thread startSignalFreeThread(Function&& function)
{
    const SignalBlock block; // a thread begins with the signals of the one that starts it
    return std::thread(std::forward<Function>(function));
}

} // namespace orvane
