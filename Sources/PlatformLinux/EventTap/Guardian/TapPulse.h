// The messages between the tap's thread and the guardian, in memory that both processes have: they show the
// guardian when keys are typed but not taken, because the program stands still. Any thread.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>

namespace orvane {

class TapPulse {
public:
    /// The limit of device numbers; higher ones are ignored.
    static constexpr std::uint16_t deviceLimit = 256;

    /// Set by the tap's thread: its own id, the keyboards whose keys it takes, and the server's time of each
    /// key that it has taken.
    void setThread(std::uint32_t thread) { m_thread.store(thread); }
    void setTakes(std::uint16_t keyboard, bool takes)
    {
        if (keyboard >= deviceLimit)
            return;
        const std::uint64_t bit = std::uint64_t{1} << (keyboard % 64);
        if (takes)
            m_keyboards[keyboard / 64].fetch_or(bit);
        else
            m_keyboards[keyboard / 64].fetch_and(~bit);
    }
    void setTaken(std::uint32_t time) { m_lastTaken.store(hasTaken | time); }
    /// True if the guardian has freed the keyboards.
    [[nodiscard]] bool wasFreed() const { return m_wasFreed.load() != 0; }

    /// Used by the guardian.
    [[nodiscard]] std::uint32_t thread() const { return m_thread.load(); }
    [[nodiscard]] bool takes(std::uint16_t keyboard) const
    {
        return keyboard < deviceLimit && (m_keyboards[keyboard / 64].load() >> (keyboard % 64) & 1) != 0;
    }
    /// True if a key of this time was taken. The server's clock wraps around after 49 days.
    [[nodiscard]] bool hasTakenSince(std::uint32_t time) const
    {
        const std::uint64_t last = m_lastTaken.load();
        return (last & hasTaken) != 0 &&
               static_cast<std::int32_t>(static_cast<std::uint32_t>(last) - time) >= 0;
    }
    void setFreed() { m_wasFreed.store(1); }

private:
    static constexpr std::uint64_t hasTaken = std::uint64_t{1} << 32;

    std::atomic<std::uint32_t> m_thread{0};
    std::atomic<std::uint32_t> m_wasFreed{0};
    std::atomic<std::uint64_t> m_lastTaken{0};
    std::array<std::atomic<std::uint64_t>, deviceLimit / 64> m_keyboards{};

    // Otherwise two processes couldn't share it.
    static_assert(std::atomic<std::uint64_t>::is_always_lock_free);
};

} // namespace orvane
