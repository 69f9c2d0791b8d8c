// A service that only starts and stops its controller. The controller is called once for each start and each
// stop, however often these are repeated. Main thread.
#pragma once

#include "OrvaneCore/Capability/BackgroundService.h"

#include <memory>
#include <utility>

namespace orvane {

/// `Controller` has `start()` and `stop()`.
template <typename Controller>
class ControllerService : public BackgroundService {
public:
    explicit ControllerService(std::shared_ptr<Controller> controller) : m_controller(std::move(controller))
    {
    }

    void start() override
    {
        if (m_isRunning)
            return;
        m_controller->start();
        m_isRunning = true;
    }

    void stop() override
    {
        if (!m_isRunning)
            return;
        m_controller->stop();
        m_isRunning = false;
    }

    [[nodiscard]] bool isRunning() const override { return m_isRunning; }

private:
    std::shared_ptr<Controller> m_controller;
    bool m_isRunning = false;
};

} // namespace orvane
