// Awake for as long as the capability is on.
#pragma once

#include "Capabilities/Awake/AwakeController.h"
#include "OrvaneCore/Capability/BackgroundService.h"

namespace orvane {

class AwakeService : public BackgroundService {
public:
    explicit AwakeService(std::shared_ptr<AwakeController> controller) : m_controller(std::move(controller))
    {
    }

    void start() override
    {
        if (m_isRunning)
            return;
        m_isRunning = true;
        m_controller->begin();
    }

    void stop() override
    {
        if (!m_isRunning)
            return;
        m_controller->end();
        m_isRunning = false;
    }

    bool isRunning() const override { return m_isRunning; }

private:
    std::shared_ptr<AwakeController> m_controller;
    bool m_isRunning = false;
};

} // namespace orvane
