// Power assertions on this desktop.
//
// The machine is held awake by a blocking "idle" inhibitor of logind and by those of the desktop's own power
// managers, the display by suspending the X server's screen saver and by org.freedesktop.ScreenSaver. None of
// them holds back a suspend that the user asks for. Each of them ends with this process.
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
