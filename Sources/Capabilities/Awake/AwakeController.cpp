#include "Capabilities/Awake/AwakeController.h"

#include "Capabilities/Awake/AwakeMenuBar.h"
#include "Capabilities/Awake/AwakeText.h"
#include "OrvaneCore/Base/Task.h"
#include "Platform/Platform.h"
#include "Platform/RunLoop.h"
#include "Platform/Workspace.h"

#include <algorithm>

namespace orvane {

namespace {

constexpr std::chrono::milliseconds firstRetryPause{1'000};
constexpr std::chrono::milliseconds longestRetryPause{60'000};

/// True for a failure that may pass. A refusal and a system without the means stay as they are.
bool mayPass(PowerAssertions::Status status)
{
    return status == PowerAssertions::Status::timeout || status == PowerAssertions::Status::error;
}

} // namespace

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
    // Timers stand still while the machine sleeps.
    controller->m_wakeObserver = platform().sharedWorkspace.notificationCenter().addObserver(
        Workspace::didWakeNotification(), [weak](const Notification&) {
            if (const auto self = weak.lock())
                self->endIfExpired();
        });
    return controller;
}

AwakeController::AwakeController(std::shared_ptr<AwakeSettings> settings, Logger log)
    : m_settings(std::move(settings)), m_log(std::move(log))
{
}

AwakeController::~AwakeController()
{
    endPeriod();
}

PowerAssertions::Status AwakeController::createAssertion()
{
    const auto type = m_settings->keepDisplayAwake.get() ? PowerAssertionType::preventUserIdleDisplaySleep
                                                         : PowerAssertionType::preventUserIdleSystemSleep;
    const PowerAssertions::Result result = platform().powerAssertions.createWithName(
        type, PowerAssertions::levelOn, AwakeText::tr("Orvane Awake"));
    m_assertionID = result.id;
    return result.status;
}

void AwakeController::activate(AwakeDuration duration)
{
    endPeriod();
    m_retryPause = firstRetryPause;
    m_period = Period{duration, std::nullopt};
    if (const auto length = seconds(duration))
        m_period->end = platform().clock.date() + *length;
    hold();
}

/// Brings what is held, and what is shown, to the period that was asked for.
void AwakeController::hold()
{
    const PowerAssertions::Status status = createAssertion();
    if (status != PowerAssertions::Status::success) {
        if (m_loggedFailures.insert(status).second)
            m_log.error(QStringLiteral("Failed to create power assertion: %1")
                            .arg(static_cast<std::int32_t>(status)));
        showFailure(status);
        return;
    }
    m_loggedFailures.clear();
    m_retryPause = firstRetryPause;
    showState(true);
    startExpiryTimer();
    m_log.info(QStringLiteral("Awake on (%1, display=%2)")
                   .arg(rawValue(m_period->duration), m_settings->keepDisplayAwake.get()
                                                          ? QStringLiteral("true")
                                                          : QStringLiteral("false")));
}

void AwakeController::showState(bool awake)
{
    isAwake.set(awake);
    isWanted.set(hasPeriod());
    if (m_menuBar)
        m_menuBar->refreshIcon();
    expiresAt.set(awake && m_period ? m_period->end : std::nullopt);
}

void AwakeController::showFailure(PowerAssertions::Status status)
{
    m_expiryTimer.reset();
    if (mayPass(status))
        retryLater();
    else
        m_period.reset();
    showState(false);
}

void AwakeController::retryLater()
{
    const std::weak_ptr<AwakeController> weak = weak_from_this();
    m_retryTimer = platform().mainRunLoop.scheduleTimer(m_retryPause, RunLoop::Repeats::no, [weak] {
        const auto self = weak.lock();
        if (!self)
            return;
        self->endIfExpired();
        if (self->m_period)
            self->hold();
    });
    m_retryPause = std::min(m_retryPause * 2, longestRetryPause);
}

void AwakeController::startExpiryTimer()
{
    if (!m_period->end)
        return;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(*m_period->end - platform().clock.date());
    const std::weak_ptr<AwakeController> weak = weak_from_this();
    m_expiryTimer = platform().mainRunLoop.scheduleTimer(left, RunLoop::Repeats::no, [weak] {
        startTask([weak]() -> Task<> {
            if (const auto self = weak.lock())
                self->deactivate();
            co_return;
        });
    });
}

void AwakeController::endIfExpired()
{
    if (!m_period || !m_period->end)
        return;
    if (platform().clock.date() >= *m_period->end)
        deactivate();
    else if (isAwake.get())
        startExpiryTimer();
}

void AwakeController::deactivate()
{
    endPeriod();
    showState(false);
}

void AwakeController::toggleDefault()
{
    if (hasPeriod())
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
    const PowerAssertions::Status status = createAssertion();
    if (status != PowerAssertions::Status::success)
        showFailure(status);
}

void AwakeController::endPeriod()
{
    m_expiryTimer.reset();
    m_retryTimer.reset();
    m_period.reset();
    m_loggedFailures.clear();
    releaseHeldAssertion();
}

void AwakeController::releaseHeldAssertion()
{
    if (m_assertionID != 0)
        platform().powerAssertions.release(m_assertionID);
    m_assertionID = 0;
}

} // namespace orvane
