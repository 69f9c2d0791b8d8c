// An application object without an event loop.
#pragma once

#include "Platform/Application.h"

namespace orvane {

class FakeApplication : public Application {
public:
    void setDelegate(ApplicationDelegate* newDelegate) override { delegate = newDelegate; }
    void setActivationPolicy(ActivationPolicy newPolicy) override { policy = newPolicy; }
    ActivationPolicy activationPolicy() const override { return policy; }
    void activateIgnoringOtherApps() override { ++activations; }
    void terminate() override { ++terminations; }

    ApplicationDelegate* delegate = nullptr;
    ActivationPolicy policy = ActivationPolicy::accessory;
    int activations = 0;
    int terminations = 0;
};

} // namespace orvane
