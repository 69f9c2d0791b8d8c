// Counts the sounds and plays none.
#pragma once

#include "Platform/Sound.h"

namespace orvane {

class FakeSound : public Sound {
public:
    void beep() override { ++beeps; }

    int beeps = 0;
};

} // namespace orvane
