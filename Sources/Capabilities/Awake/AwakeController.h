// Holds the one power assertion, for a chosen time or until turned off. Main thread.
//
// The observed state is what is held, not what was asked for: it is awake exactly while there is an
// assertion. An assertion that failed for a reason that may pass is asked for again, in growing pauses, until
// the period ends or is called off.
#pragma once

#include "Capabilities/Awake/AwakeDuration.h"
#include "Capabilities/Awake/AwakeSettings.h"
#include "OrvaneCore/Base/Log.h"
#include "OrvaneCore/Base/Observable.h"
#include "Platform/Clock.h"
#include "Platform/NotificationCenter.h"
#include "Platform/PowerAssertions.h"

#include <memory>
#include <optional>
#include <set>

namespace orvane {

class AwakeMenuBar;
class Timer;

class AwakeController : public std::enable_shared_from_this<AwakeController> {
public:
    static std::shared_ptr<AwakeController> make(std::shared_ptr<AwakeSettings> settings, Logger log);
    ~AwakeController();
    AwakeController(const AwakeController&) = delete;
    AwakeController& operator=(const AwakeController&) = delete;

    [[nodiscard]] const std::shared_ptr<AwakeSettings>& settings() const { return m_settings; }

    /// Starts a new period; one that runs ends first. While no assertion can be had, the state is asleep, and
    /// each kind of failure is logged once.
    void activate(AwakeDuration duration);
    /// Begins a period of the length in the settings.
    void activateDefault();
    void deactivate();
    /// Ends the period that was asked for, also one that isn't held yet; begins one if there is none.
    void toggleDefault();
    /// True while there is a period, whether its assertion is held or still asked for.
    [[nodiscard]] bool hasPeriod() const { return m_period.has_value(); }

    /// Called when the capability is switched on and off.
    void start();
    void stop();

    Observable<bool> isAwake{false};
    /// True while there is a period, held or still asked for: what the person wants.
    Observable<bool> isWanted{false};
    /// When a timed period ends.
    Observable<std::optional<Clock::Date>> expiresAt;

private:
    AwakeController(std::shared_ptr<AwakeSettings> settings, Logger log);

    void refreshMenuBar();
    void reapplyAssertionTypeIfNeeded();
    void endPeriod();
    void releaseHeldAssertion();
    PowerAssertions::Status createAssertion();
    void hold();
    void showState(bool awake);
    void showFailure(PowerAssertions::Status status);
    void retryLater();
    void startExpiryTimer();
    void endIfExpired();

    std::shared_ptr<AwakeSettings> m_settings;
    Logger m_log;
    PowerAssertionID m_assertionID = 0;
    /// What was asked for last. It is kept while it can't be held, unless that will never change.
    struct Period {
        AwakeDuration duration;
        std::optional<Clock::Date> end;
    };
    std::optional<Period> m_period;
    std::unique_ptr<Timer> m_expiryTimer;
    std::unique_ptr<Timer> m_retryTimer;
    std::chrono::milliseconds m_retryPause{0};
    /// The failures since the period began or an assertion was last had.
    std::set<PowerAssertions::Status> m_loggedFailures;
    std::unique_ptr<NotificationCenter::Token> m_wakeObserver;
    std::unique_ptr<AwakeMenuBar> m_menuBar;
    bool m_active = false;
    Cancellables m_cancellables;
};

} // namespace orvane
