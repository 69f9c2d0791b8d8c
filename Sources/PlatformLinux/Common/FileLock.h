// The turn to change a file that several processes share: an flock on a file beside it, which is made on
// first use and never removed. It ends with the object, or with the process however that ends.
#pragma once

#include "PlatformLinux/Common/FileDescriptor.h"

#include <QString>

#include <chrono>
#include <optional>

namespace orvane {

class FileLock {
public:
    /// Returns the lock, or nothing when another holder kept it for all of `patience`. The wait ends with the
    /// holder's turn (inotify) and never sleeps. Throws std::system_error when there can be no lock file. On
    /// a file system without locks the call succeeds, for no lock could ever be had there.
    static std::optional<FileLock> acquire(const QString& path, std::chrono::milliseconds patience);

    ~FileLock();
    FileLock(FileLock&&) = default;
    FileLock& operator=(FileLock&&) = delete;

private:
    explicit FileLock(FileDescriptor file) : m_file(std::move(file)) {}

    FileDescriptor m_file;
};

} // namespace orvane
