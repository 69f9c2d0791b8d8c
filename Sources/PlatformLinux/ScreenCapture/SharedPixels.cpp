#include "PlatformLinux/ScreenCapture/SharedPixels.h"

#include "PlatformLinux/Common/FileDescriptor.h"

#include <fcntl.h>
#include <sys/mman.h>

namespace orvane {

std::unique_ptr<SharedPixels> SharedPixels::make(XExchange& exchange, std::size_t size)
{
    FileDescriptor file(::memfd_create("orvane-screen", MFD_CLOEXEC));
    if (!file || ::ftruncate(file.get(), static_cast<off_t>(size)) != 0)
        return nullptr;
    void* bytes = ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, file.get(), 0);
    if (bytes == MAP_FAILED)
        return nullptr;
    auto shared = std::unique_ptr<SharedPixels>(
        new SharedPixels(exchange.link(), static_cast<std::byte*>(bytes), size));
    // The library closes the descriptor that it sends.
    const int sent = ::fcntl(file.get(), F_DUPFD_CLOEXEC, 0);
    if (sent < 0)
        return nullptr;
    const auto cookie = xcb_shm_attach_fd_checked(exchange.xcb(), shared->m_segment, sent, 0);
    if (exchange.check(cookie) != XOutcome::answered)
        return nullptr;
    shared->m_isAttached = true;
    return shared;
}

SharedPixels::~SharedPixels()
{
    if (m_isAttached)
        xcb_shm_detach(m_link.xcb(), m_segment);
    ::munmap(m_bytes, m_size);
}

} // namespace orvane
