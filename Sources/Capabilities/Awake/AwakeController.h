// Holds the one power assertion, for a chosen time or until turned off. Main thread.
#pragma once

#include "Capabilities/Awake/AwakeDuration.h"
#include "Capabilities/Awake/AwakeSettings.h"
#include "OrvaneCore/Base/Log.h"
#include "OrvaneCore/Base/Observable.h"
#include "Platform/Clock.h"
#include "Platform/PowerAssertions.h"

#include <memory>
#include <optional>

namespace orvane {

class AwakeMenuBar;
class Timer;

class AwakeController : public std::enable_shared_from_this<AwakeController> {
public:
    static std::shared_ptr<AwakeController> make(std::shared_ptr<AwakeSettings> settings, Logger log);
    ~AwakeController();
    AwakeController(const AwakeController&) = delete;
    AwakeController& operator=(const AwakeController&) = delete;

    const std::shared_ptr<AwakeSettings>& settings() const { return m_settings; }

    /// Starts a new period; one that runs ends first. A refused assertion is logged, and the observed
    /// state stays what it was.
    void activate(AwakeDuration duration);
    /// For the duration of the settings.
    void activateDefault();
    void deactivate();
    void toggleDefault();

    /// The capability is on, and off.
    void start();
    void stop();

    Observable<bool> isAwake{false};
    /// The end of a timed period.
    Observable<std::optional<Clock::Date>> expiresAt;

private:
    AwakeController(std::shared_ptr<AwakeSettings> settings, Logger log);

    void refreshMenuBar();
    void reapplyAssertionTypeIfNeeded();
    void releaseAssertion();
    void releaseHeldAssertion();
    PowerAssertions::Result createAssertion() const;
    void startExpiryTimer(std::chrono::seconds duration);

    std::shared_ptr<AwakeSettings> m_settings;
    Logger m_log;
    PowerAssertionID m_assertionID = 0;
    std::unique_ptr<Timer> m_expiryTimer;
    std::unique_ptr<AwakeMenuBar> m_menuBar;
    bool m_active = false;
    Cancellables m_cancellables;
};

} // namespace orvane
