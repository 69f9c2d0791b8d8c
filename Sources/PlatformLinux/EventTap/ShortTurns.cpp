#include "PlatformLinux/EventTap/ShortTurns.h"

#include <chrono>
#include <cstdint>

#include <sched.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace orvane {

namespace {

using namespace std::chrono_literals;

/// The shortest turn that the kernel grants.
constexpr std::chrono::nanoseconds shortestTurn = 100us;
/// The kernel takes this for its own default.
constexpr std::chrono::nanoseconds usualTurn = 0ns;

/// The kernel's `sched_attr` in its first form. Its own header can't be included beside the C library's.
struct Attributes {
    std::uint32_t size = 0;
    std::uint32_t policy = 0;
    std::uint64_t flags = 0;
    std::int32_t nice = 0;
    std::uint32_t priority = 0;
    std::uint64_t runtime = 0; // for usual threads the length of a turn
    std::uint64_t deadline = 0;
    std::uint64_t period = 0;
};
constexpr std::uint64_t resetOnFork = 1;

/// The scheduler prefers the thread whose turn would end first, so a short turn begins soon.
void setTurn(std::chrono::nanoseconds length)
{
    constexpr int thisThread = 0;
    Attributes attributes;
    if (::syscall(SYS_sched_getattr, thisThread, &attributes, sizeof attributes, 0) != 0 ||
        attributes.policy != SCHED_OTHER)
        return;
    attributes.size = sizeof attributes;
    attributes.flags &= resetOnFork;
    attributes.runtime = static_cast<std::uint64_t>(length.count());
    ::syscall(SYS_sched_setattr, thisThread, &attributes, 0);
}

} // namespace

ShortTurns::ShortTurns()
{
    setTurn(shortestTurn);
}

ShortTurns::~ShortTurns()
{
    setTurn(usualTurn);
}

} // namespace orvane
