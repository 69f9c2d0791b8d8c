// The one way for a capability to run something for as long as it is on. Main thread.
#pragma once

#include <memory>
#include <vector>

namespace orvane {

class BackgroundService {
public:
    virtual ~BackgroundService() = default;
    /// Throws an error with readable text when it can't start.
    virtual void start() = 0;
    virtual void stop() = 0;
    [[nodiscard]] virtual bool isRunning() const = 0;
};

/// Holds the running services of one capability, first registered first.
class ServiceHost {
public:
    /// Starts the service and keeps it. What its `start` throws goes to the caller, and then it isn't kept.
    void registerService(std::shared_ptr<BackgroundService> service);
    /// Stops all in reverse order of registering, and forgets them.
    void stopAll();
    /// How many of the services held say that they run, at this moment.
    [[nodiscard]] int runningCount() const;

private:
    std::vector<std::shared_ptr<BackgroundService>> m_services;
};

} // namespace orvane
