// Wakes another thread that waits in poll(), through a kernel counter and without a lock. Any thread.
#pragma once

#include "PlatformLinux/Common/FileDescriptor.h"

#include <cstdint>
#include <system_error>

#include <sys/eventfd.h>

namespace orvane {

class EventSignal {
public:
    EventSignal() : m_descriptor(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
    {
        if (!m_descriptor)
            throw std::system_error(errno, std::generic_category(), "eventfd");
    }

    /// The descriptor is readable after raise() until the next clear().
    [[nodiscard]] int descriptor() const { return m_descriptor.get(); }

    void raise()
    {
        const std::uint64_t one = 1;
        // The write can fail only when the counter stands at its limit, and then the signal is raised
        // already.
        [[maybe_unused]] const ssize_t written = ::write(m_descriptor.get(), &one, sizeof one);
    }

    void clear()
    {
        std::uint64_t count = 0;
        [[maybe_unused]] const ssize_t read = ::read(m_descriptor.get(), &count, sizeof count);
    }

private:
    FileDescriptor m_descriptor;
};

} // namespace orvane
