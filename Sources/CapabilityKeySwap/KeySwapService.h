// On the tap for as long as the capability is on.
#pragma once

#include "CapabilityKeySwap/KeySwapController.h"
#include "OrvaneCore/BackgroundService.h"

namespace orvane {

class KeySwapService : public BackgroundService {
public:
    explicit KeySwapService(std::shared_ptr<KeySwapController> controller)
        : m_controller(std::move(controller))
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

    bool isRunning() const override { return m_isRunning; }

private:
    std::shared_ptr<KeySwapController> m_controller;
    bool m_isRunning = false;
};

} // namespace orvane
