#include "PlatformLinux/Worker/PixelMemory.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace orvane::PixelMemory {

FileDescriptor make(std::size_t size)
{
    FileDescriptor memory(::memfd_create("orvane-pixels", MFD_CLOEXEC | MFD_ALLOW_SEALING));
    if (!memory || ::ftruncate(memory.get(), static_cast<off_t>(size)) != 0 ||
        ::fcntl(memory.get(), F_ADD_SEALS, F_SEAL_GROW | F_SEAL_SHRINK | F_SEAL_SEAL) != 0)
        return {};
    return memory;
}

std::optional<QByteArray> read(int memory, qsizetype size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    qsizetype done = 0;
    while (done < size) {
        const ssize_t got = ::pread(memory, bytes.data() + done, static_cast<std::size_t>(size - done), done);
        if (got <= 0)
            return std::nullopt;
        done += got;
    }
    return bytes;
}

bool write(int memory, const QByteArray& bytes)
{
    qsizetype done = 0;
    while (done < bytes.size()) {
        const ssize_t written =
            ::pwrite(memory, bytes.constData() + done, static_cast<std::size_t>(bytes.size() - done), done);
        if (written <= 0)
            return false;
        done += written;
    }
    return true;
}

} // namespace orvane::PixelMemory
