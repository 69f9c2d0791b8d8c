// Power assertions on this desktop.
//
// The machine is held awake by a blocking inhibitor of logind ("sleep", and "idle" with the display); the
// display by suspending the X server's screen saver and, where the desktop offers it, by
// org.freedesktop.ScreenSaver. Each of them ends with this process.
#pragma once

#include "Platform/PowerAssertions.h"

#include <memory>
#include <unordered_map>

namespace orvane {

class LogSink;

class LogindPowerAssertions : public PowerAssertions {
public:
    explicit LogindPowerAssertions(LogSink& log);
    ~LogindPowerAssertions() override;

    Result createWithName(PowerAssertionType type, std::uint32_t level, const QString& name) override;
    void release(PowerAssertionID id) override;

private:
    struct Assertion;

    LogSink& m_log;
    PowerAssertionID m_lastID = 0;
    std::unordered_map<PowerAssertionID, std::unique_ptr<Assertion>> m_held;
};

} // namespace orvane
