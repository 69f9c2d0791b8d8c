// The bell of the X server. Main thread.
#pragma once

#include "Platform/Sound.h"

namespace orvane {

class XkbSound : public Sound {
public:
    void beep() override;
};

} // namespace orvane
