#include "Capabilities/Awake/AwakeController.h"

#include "Capabilities/Awake/AwakeMenuBar.h"
#include "OrvaneCore/Base/Task.h"
#include "Platform/Platform.h"
#include "Platform/RunLoop.h"

namespace orvane {

std::shared_ptr<AwakeController> AwakeController::make(std::shared_ptr<AwakeSettings> settings, Logger log)
{
    std::shared_ptr<AwakeController> controller(new AwakeController(std::move(settings), std::move(log)));
    const std::weak_ptr<AwakeController> weak = controller;
    controller->m_cancellables.push_back(controller->m_settings->showMenuBarIcon.onChange([weak] {
        if (const auto self = weak.lock())
            self->refreshMenuBar();
    }));
    controller->m_cancellables.push_back(controller->m_settings->keepDisplayAwake.onChange([weak] {
        if (const auto self = weak.lock())
            self->reapplyAssertionTypeIfNeeded();
    }));
    return controller;
}

AwakeController::AwakeController(std::shared_ptr<AwakeSettings> settings, Logger log)
    : m_settings(std::move(settings)), m_log(std::move(log))
{
}

AwakeController::~AwakeController()
{
    releaseAssertion();
}

PowerAssertions::Result AwakeController::createAssertion() const
{
    const auto type = m_settings->keepDisplayAwake.get() ? PowerAssertionType::preventUserIdleDisplaySleep
                                                         : PowerAssertionType::preventUserIdleSystemSleep;
    return platform().powerAssertions.createWithName(type, PowerAssertions::levelOn,
                                                     QStringLiteral("Orvane Awake"));
}

void AwakeController::activate(AwakeDuration duration)
{
    releaseAssertion();
    const PowerAssertions::Result result = createAssertion();
    if (result.status != PowerAssertions::Status::success) {
        m_log.error(QStringLiteral("Failed to create power assertion: %1")
                        .arg(static_cast<std::int32_t>(result.status)));
        return;
    }
    m_assertionID = result.id;
    isAwake.set(true);
    if (m_menuBar)
        m_menuBar->refreshIcon();

    if (const auto length = seconds(duration)) {
        expiresAt.set(platform().clock.date() + *length);
        startExpiryTimer(*length);
    } else {
        expiresAt.set(std::nullopt);
    }
    m_log.info(QStringLiteral("Awake on (%1, display=%2)")
                   .arg(rawValue(duration), m_settings->keepDisplayAwake.get() ? QStringLiteral("true")
                                                                               : QStringLiteral("false")));
}

void AwakeController::startExpiryTimer(std::chrono::seconds duration)
{
    const std::weak_ptr<AwakeController> weak = weak_from_this();
    m_expiryTimer = platform().mainRunLoop.scheduleTimer(duration, RunLoop::Repeats::no, [weak] {
        startTask([weak]() -> Task<> {
            if (const auto self = weak.lock())
                self->deactivate();
            co_return;
        });
    });
}

void AwakeController::deactivate()
{
    releaseAssertion();
    isAwake.set(false);
    if (m_menuBar)
        m_menuBar->refreshIcon();
    expiresAt.set(std::nullopt);
}

void AwakeController::toggleDefault()
{
    if (isAwake.get())
        deactivate();
    else
        activateDefault();
}

void AwakeController::activateDefault()
{
    activate(m_settings->defaultDuration.get());
}

void AwakeController::start()
{
    m_active = true;
    refreshMenuBar();
    if (m_settings->awakeOnLaunch.get())
        activateDefault();
}

void AwakeController::stop()
{
    m_active = false;
    deactivate();
    refreshMenuBar();
}

void AwakeController::refreshMenuBar()
{
    if (m_active && m_settings->showMenuBarIcon.get()) {
        if (!m_menuBar)
            m_menuBar = std::make_unique<AwakeMenuBar>(weak_from_this());
        m_menuBar->refreshIcon();
    } else {
        m_menuBar.reset();
    }
}

void AwakeController::reapplyAssertionTypeIfNeeded()
{
    if (!isAwake.get())
        return;
    releaseHeldAssertion();
    m_assertionID = createAssertion().id;
}

void AwakeController::releaseAssertion()
{
    m_expiryTimer.reset();
    releaseHeldAssertion();
}

void AwakeController::releaseHeldAssertion()
{
    if (m_assertionID != 0)
        platform().powerAssertions.release(m_assertionID);
    m_assertionID = 0;
}

} // namespace orvane
