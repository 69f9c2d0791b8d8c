#include "PlatformLinux/Common/FileLock.h"

#include "PlatformLinux/Common/AtomicFile.h"

#include <QFile>

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/inotify.h>
#include <sys/stat.h>

namespace orvane {

namespace {

using SteadyClock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds longestWait{10}; // the longest time between two looks

FileDescriptor openLockFile(const QByteArray& name)
{
    FileDescriptor file(
        ::open(name.constData(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0600));
    if (!file)
        throwErrno();
    return file;
}

enum class Attempt { granted, busy, stale };

/// The lock is stale: the lock file was removed or replaced meanwhile, so this lock excludes nobody.
Attempt tryLock(const FileDescriptor& file, const QByteArray& name)
{
    if (::flock(file.get(), LOCK_EX | LOCK_NB) != 0)
        return errno == EWOULDBLOCK || errno == EINTR ? Attempt::busy : Attempt::granted;
    struct stat mine = {};
    struct stat present = {};
    const bool same = ::fstat(file.get(), &mine) == 0 && ::lstat(name.constData(), &present) == 0 &&
                      mine.st_dev == present.st_dev && mine.st_ino == present.st_ino;
    return same ? Attempt::granted : Attempt::stale;
}

/// Waits until a process closes the lock file, as a holder does at the end of its turn. False at the
/// deadline. It also looks at intervals: when a holder is killed, its file is closed a moment before its lock
/// is gone.
bool waitForRelease(const FileDescriptor& watch, SteadyClock::time_point deadline)
{
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - SteadyClock::now());
    if (left.count() <= 0)
        return false;
    pollfd request = {watch.get(), POLLIN, 0};
    ::poll(&request, 1, static_cast<int>(std::min(left, longestWait).count()));
    alignas(inotify_event) char events[4096];
    while (::read(watch.get(), events, sizeof events) > 0) {
    }
    return true;
}

} // namespace

std::optional<FileLock> FileLock::acquire(const QString& path, std::chrono::milliseconds patience)
{
    const auto deadline = SteadyClock::now() + patience;
    const QByteArray name = QFile::encodeName(path);
    FileDescriptor file = openLockFile(name);
    FileDescriptor watch;
    for (;;) {
        switch (tryLock(file, name)) {
        case Attempt::granted:
            return FileLock(std::move(file));
        case Attempt::stale:
            if (SteadyClock::now() >= deadline)
                return std::nullopt;
            file = openLockFile(name);
            watch.reset();
            continue;
        case Attempt::busy:
            break;
        }
        if (watch) {
            if (!waitForRelease(watch, deadline))
                return std::nullopt;
            continue;
        }
        // The watch comes before the next attempt, so that a turn that ends in between isn't missed.
        watch = FileDescriptor(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
        if (patience.count() <= 0 || !watch ||
            ::inotify_add_watch(watch.get(), name.constData(), IN_CLOSE_WRITE) < 0)
            return std::nullopt;
    }
}

FileLock::~FileLock()
{
    // Unlocks before the file is closed: those who wait for the close must find the lock free.
    if (m_file)
        ::flock(m_file.get(), LOCK_UN);
}

} // namespace orvane
