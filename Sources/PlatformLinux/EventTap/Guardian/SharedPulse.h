// The pulse in memory that a child process can be given. Any thread.
#pragma once

#include "PlatformLinux/Common/FileDescriptor.h"
#include "PlatformLinux/EventTap/Guardian/TapPulse.h"

#include <new>
#include <utility>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace orvane {

class SharedPulse {
public:
    /// The descriptor under which the guardian finds it.
    static constexpr int descriptorInGuardian = 3;

    /// Makes a new one; empty when the system has no memory for it.
    static SharedPulse make()
    {
        const FileDescriptor memory(::memfd_create("orvane-pulse", MFD_CLOEXEC));
        if (!memory || ::ftruncate(memory.get(), sizeof(TapPulse)) != 0)
            return {};
        // Beyond the numbers to which a child's descriptors are moved.
        constexpr int firstFree = 16;
        SharedPulse made(FileDescriptor(::fcntl(memory.get(), F_DUPFD_CLOEXEC, firstFree)));
        if (made.m_pulse)
            new (made.m_pulse) TapPulse;
        return made;
    }
    /// Opens the one that another process has made.
    static SharedPulse ofDescriptor(int descriptor) { return SharedPulse(FileDescriptor(descriptor)); }

    SharedPulse() = default;
    SharedPulse(SharedPulse&& other) noexcept
        : m_memory(std::move(other.m_memory)), m_pulse(std::exchange(other.m_pulse, nullptr))
    {
    }
    SharedPulse& operator=(SharedPulse&& other) noexcept
    {
        std::swap(m_memory, other.m_memory);
        std::swap(m_pulse, other.m_pulse);
        return *this;
    }
    ~SharedPulse()
    {
        if (m_pulse)
            ::munmap(m_pulse, sizeof(TapPulse));
    }

    [[nodiscard]] int descriptor() const { return m_memory.get(); }
    explicit operator bool() const { return m_pulse != nullptr; }
    TapPulse* operator->() const { return m_pulse; }

private:
    explicit SharedPulse(FileDescriptor memory) : m_memory(std::move(memory))
    {
        if (!m_memory)
            return;
        void* place =
            ::mmap(nullptr, sizeof(TapPulse), PROT_READ | PROT_WRITE, MAP_SHARED, m_memory.get(), 0);
        if (place != MAP_FAILED)
            m_pulse = static_cast<TapPulse*>(place);
    }

    FileDescriptor m_memory;
    TapPulse* m_pulse = nullptr;
};

} // namespace orvane
