#include "Worker/Confinement.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <memory>

#include <fcntl.h>
#include <sched.h>
#include <seccomp.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace orvane::Confinement {

namespace {

constexpr rlim_t mebibyte = 1024 * 1024;
/// Address space; the libraries and the stacks of the threads take about 700 MB of it before any picture.
constexpr rlim_t mostMemory = 3072 * mebibyte;
constexpr rlim_t longestFile = 1024 * mebibyte;
constexpr rlim_t mostDescriptors = 64;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool isSanitized = true; // these reserve terabytes of address space
#else
constexpr bool isSanitized = false;
#endif

void limit(__rlimit_resource resource, rlim_t most)
{
    const rlimit both{most, most};
    ::setrlimit(resource, &both);
}

/// Calls that concern only this process's memory, threads, clocks and the descriptors that it has.
constexpr std::array allowed{
    SCMP_SYS(brk),
    SCMP_SYS(madvise),
    SCMP_SYS(mmap),
    SCMP_SYS(mprotect),
    SCMP_SYS(mremap),
    SCMP_SYS(munmap),
    SCMP_SYS(futex),
    SCMP_SYS(membarrier),
    SCMP_SYS(rseq),
    SCMP_SYS(sched_yield),
    SCMP_SYS(sched_getaffinity),
    SCMP_SYS(set_robust_list),
    SCMP_SYS(gettid),
    SCMP_SYS(getpid),
    SCMP_SYS(exit),
    SCMP_SYS(exit_group),
    SCMP_SYS(clock_gettime),
    SCMP_SYS(clock_nanosleep),
    SCMP_SYS(gettimeofday),
    SCMP_SYS(nanosleep),
    SCMP_SYS(alarm),
    SCMP_SYS(setitimer),
    SCMP_SYS(times),
    SCMP_SYS(getrusage),
    SCMP_SYS(getrandom),
    SCMP_SYS(uname),
    SCMP_SYS(rt_sigaction),
    SCMP_SYS(rt_sigprocmask),
    SCMP_SYS(rt_sigreturn),
    SCMP_SYS(sigaltstack),
    SCMP_SYS(restart_syscall),
    SCMP_SYS(close),
    SCMP_SYS(dup),
    SCMP_SYS(fstat),
    SCMP_SYS(lseek),
    SCMP_SYS(poll),
    SCMP_SYS(ppoll),
    SCMP_SYS(pread64),
    SCMP_SYS(pwrite64),
    SCMP_SYS(read),
    SCMP_SYS(readv),
    SCMP_SYS(write),
    SCMP_SYS(writev),
    SCMP_SYS(recvmsg),
    SCMP_SYS(sendmsg),
    SCMP_SYS(shutdown),
};

bool allowAll(scmp_filter_ctx filter)
{
    for (const int call : allowed) {
        if (::seccomp_rule_add(filter, SCMP_ACT_ALLOW, call, 0) != 0)
            return false;
    }
    // By a pipe the sanitizers find out if an object's memory can be read, before they look at its type.
    if (isSanitized && ::seccomp_rule_add(filter, SCMP_ACT_ALLOW, SCMP_SYS(pipe2), 0) != 0)
        return false;
    // Threads, but no processes. The flags of clone3 can't be seen by a filter; the library takes clone then.
    const auto isThread = SCMP_A0(SCMP_CMP_MASKED_EQ, CLONE_THREAD, CLONE_THREAD);
    // Of all that fcntl can do, the reading of flags; and fstat by its newer name, without a path.
    const auto readsFlags = SCMP_A1(SCMP_CMP_EQ, F_GETFL);
    const auto isEmptyPath = SCMP_A3(SCMP_CMP_EQ, AT_EMPTY_PATH);
    // Signals to itself, as abort() does.
    const auto isItself = SCMP_A0(SCMP_CMP_EQ, static_cast<scmp_datum_t>(::getpid()));
    return ::seccomp_rule_add_array(filter, SCMP_ACT_ALLOW, SCMP_SYS(clone), 1, &isThread) == 0 &&
           ::seccomp_rule_add(filter, SCMP_ACT_ERRNO(ENOSYS), SCMP_SYS(clone3), 0) == 0 &&
           ::seccomp_rule_add_array(filter, SCMP_ACT_ALLOW, SCMP_SYS(fcntl), 1, &readsFlags) == 0 &&
           ::seccomp_rule_add_array(filter, SCMP_ACT_ALLOW, SCMP_SYS(newfstatat), 1, &isEmptyPath) == 0 &&
           ::seccomp_rule_add_array(filter, SCMP_ACT_ALLOW, SCMP_SYS(tgkill), 1, &isItself) == 0;
}

} // namespace

void limitResources(int firstToClose)
{
    ::close_range(static_cast<unsigned>(firstToClose), ~0U, 0);
    ::prctl(PR_SET_DUMPABLE, 0);
    limit(RLIMIT_CORE, 0);
    limit(RLIMIT_FSIZE, longestFile);
    limit(RLIMIT_NOFILE, mostDescriptors);
    if (!isSanitized)
        limit(RLIMIT_AS, mostMemory);
    std::signal(SIGXFSZ, SIG_IGN); // the write fails instead
}

bool enter()
{
    const std::unique_ptr<void, decltype(&::seccomp_release)> filter(::seccomp_init(SCMP_ACT_ERRNO(EPERM)),
                                                                     &::seccomp_release);
    // Threads that the libraries have made already are confined with this one. No new privileges is the
    // filter's own default.
    return filter && ::seccomp_attr_set(filter.get(), SCMP_FLTATR_CTL_TSYNC, 1) == 0 &&
           allowAll(filter.get()) && ::seccomp_load(filter.get()) == 0;
}

} // namespace orvane::Confinement
