// Named holds on the machine's power state. Main thread. All are released when the process ends, however
// it ends.
#pragma once

#include <QString>

#include <cstdint>

namespace orvane {

/// Identifies a held assertion; 0 is none.
using PowerAssertionID = std::uint32_t;

enum class PowerAssertionType {
    /// "PreventUserIdleSystemSleep": the machine doesn't go to sleep while it is unused; the display may.
    preventUserIdleSystemSleep,
    /// "PreventUserIdleDisplaySleep": neither the display nor the machine does.
    preventUserIdleDisplaySleep,
};

class PowerAssertions {
public:
    static constexpr std::uint32_t levelOn = 255;

    /// Return codes, with their values in the I/O Kit's table.
    enum class Status : std::int32_t {
        success = 0,
        error = -536870212,        // 0xE00002BC: the service answered and refused
        notPermitted = -536870174, // 0xE00002E2
        unsupported = -536870201,  // 0xE00002C7: nothing on this system can hold it
        timeout = -536870186,      // 0xE00002D6: the service didn't answer
    };

    struct Result {
        Status status = Status::error;
        PowerAssertionID id = 0; // other than 0 exactly on success
    };

    virtual ~PowerAssertions() = default;

    /// `name` is shown to the user by the system's own tools. Returns within half a second.
    [[nodiscard]] virtual Result createWithName(PowerAssertionType type, std::uint32_t level,
                                                const QString& name) = 0;
    /// An unknown id changes nothing.
    virtual void release(PowerAssertionID id) = 0;
};

} // namespace orvane
