// The one way for a capability to run something while it is on. Main thread.
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

/// Holds the running services of one capability, in the order in which they were registered.
class ServiceHost {
public:
    /// Starts the service and keeps it. An error of its `start` goes to the caller, and the service isn't
    /// kept then.
    void registerService(std::shared_ptr<BackgroundService> service);
    /// Stops all services, the last registered first, and drops them.
    void stopAll();
    /// Returns how many of its services report at this moment that they run.
    [[nodiscard]] int runningCount() const;

private:
    std::vector<std::shared_ptr<BackgroundService>> m_services;
};

} // namespace orvane
