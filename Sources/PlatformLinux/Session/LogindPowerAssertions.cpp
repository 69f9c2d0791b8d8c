#include "PlatformLinux/Session/LogindPowerAssertions.h"

#include "Platform/LogSink.h"
#include "PlatformLinux/Session/LogindInhibitor.h"
#include "PlatformLinux/Session/ScreenSaverInhibitor.h"
#include "PlatformLinux/Session/SessionInhibitor.h"

#include <vector>

namespace orvane {

namespace {

const QString application = QStringLiteral("Orvane");

const SessionInhibitor::Service screenSaver{
    QStringLiteral("org.freedesktop.ScreenSaver"), QStringLiteral("/org/freedesktop/ScreenSaver"),
    QStringLiteral("org.freedesktop.ScreenSaver"), QStringLiteral("UnInhibit")};
const SessionInhibitor::Service powerManagement{QStringLiteral("org.freedesktop.PowerManagement"),
                                                QStringLiteral("/org/freedesktop/PowerManagement/Inhibit"),
                                                QStringLiteral("org.freedesktop.PowerManagement.Inhibit"),
                                                QStringLiteral("UnInhibit")};
const SessionInhibitor::Service sessionManager{
    QStringLiteral("org.gnome.SessionManager"), QStringLiteral("/org/gnome/SessionManager"),
    QStringLiteral("org.gnome.SessionManager"), QStringLiteral("Uninhibit")};
/// The session isn't marked as idle. The flag for suspending would hold back the user's own suspend too.
constexpr uint sessionManagerIdleFlag = 8;

} // namespace

struct LogindPowerAssertions::Assertion {
    std::unique_ptr<LogindInhibitor> machine;
    std::unique_ptr<ScreenSaverInhibitor> display;
    std::vector<std::unique_ptr<SessionInhibitor>> services;

    void ask(const SessionInhibitor::Service& service, const QVariantList& arguments)
    {
        services.push_back(std::make_unique<SessionInhibitor>(service, arguments));
    }
};

LogindPowerAssertions::LogindPowerAssertions(LogSink& log) : m_log(log) {}
LogindPowerAssertions::~LogindPowerAssertions() = default;

PowerAssertions::Result LogindPowerAssertions::createWithName(PowerAssertionType type, std::uint32_t level,
                                                              const QString& name)
{
    if (level != levelOn)
        return {Status::unsupported, 0};

    const bool withDisplay = type == PowerAssertionType::preventUserIdleDisplaySleep;
    auto machine = LogindInhibitor::create(QStringLiteral("idle"), application, name);
    auto assertion = std::make_unique<Assertion>();
    assertion->machine = std::move(machine.inhibitor);
    if (withDisplay)
        assertion->display = ScreenSaverInhibitor::create();
    if (machine.status != Status::success) {
        // Where there is no logind nothing is known to put the machine to sleep. Where there is one that
        // refused, the machine will.
        const bool displaySuffices = machine.status == Status::unsupported && assertion->display;
        m_log.write(
            LogLevel::error, QStringLiteral("net.lindenrow.orvane"), QStringLiteral("Power"),
            displaySuffices
                ? QStringLiteral("logind can't hold the machine awake, so only the display is held: %1")
                      .arg(machine.error)
                : QStringLiteral("logind can't hold the machine awake: %1").arg(machine.error));
        if (!displaySuffices)
            return {machine.status, 0};
    }
    assertion->ask(powerManagement, {application, name});
    assertion->ask(sessionManager, {application, 0U, name, sessionManagerIdleFlag});
    if (withDisplay)
        assertion->ask(screenSaver, {application, name});
    const PowerAssertionID id = ++m_lastID;
    m_held.emplace(id, std::move(assertion));
    return {Status::success, id};
}

void LogindPowerAssertions::release(PowerAssertionID id)
{
    m_held.erase(id);
}

} // namespace orvane
