#include "PlatformLinux/Session/LogindPowerAssertions.h"

#include "Platform/LogSink.h"
#include "PlatformLinux/Session/LogindInhibitor.h"
#include "PlatformLinux/Session/ScreenSaverInhibitor.h"

namespace orvane {

struct LogindPowerAssertions::Assertion {
    std::unique_ptr<LogindInhibitor> machine;
    std::unique_ptr<ScreenSaverInhibitor> display;
};

LogindPowerAssertions::LogindPowerAssertions(LogSink& log) : m_log(log) {}
LogindPowerAssertions::~LogindPowerAssertions() = default;

PowerAssertions::Result LogindPowerAssertions::createWithName(PowerAssertionType type, std::uint32_t level,
                                                              const QString& name)
{
    if (level != levelOn)
        return {Status::unsupported, 0};

    const bool withDisplay = type == PowerAssertionType::preventUserIdleDisplaySleep;
    auto assertion = std::make_unique<Assertion>();
    auto machine = LogindInhibitor::create(
        withDisplay ? QStringLiteral("idle:sleep") : QStringLiteral("sleep"), QStringLiteral("Orvane"), name);
    assertion->machine = std::move(machine.inhibitor);
    if (withDisplay)
        assertion->display = ScreenSaverInhibitor::create(QStringLiteral("Orvane"), name);

    if (machine.status != Status::success) {
        m_log.write(
            LogLevel::error, QStringLiteral("net.lindenrow.orvane"), QStringLiteral("Power"),
            assertion->display
                ? QStringLiteral("logind can't hold the machine awake, so only the display is held: %1")
                      .arg(machine.error)
                : QStringLiteral("logind can't hold the machine awake: %1").arg(machine.error));
        if (!assertion->display)
            return {machine.status, 0};
    }
    const PowerAssertionID id = ++m_lastID;
    m_held.emplace(id, std::move(assertion));
    return {Status::success, id};
}

void LogindPowerAssertions::release(PowerAssertionID id)
{
    m_held.erase(id);
}

} // namespace orvane
