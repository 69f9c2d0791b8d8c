// While it exists, the kernel lets its thread run sooner after a wake-up, for a shorter turn. The thread gets
// no more of the processor than before. Needs no permission; kernels before 6.12 ignore it.
#pragma once

namespace orvane {

class ShortTurns {
public:
    ShortTurns();
    /// Must be called on the same thread.
    ~ShortTurns();
    ShortTurns(const ShortTurns&) = delete;
    ShortTurns& operator=(const ShortTurns&) = delete;
};

} // namespace orvane
