// What the home window shows.
#pragma once

#include "OrvaneCore/OrvaView.h"

namespace orvane {

class AppEnvironment;

class RootView {
public:
    static AnyView make(const std::shared_ptr<AppEnvironment>& environment);
};

} // namespace orvane
