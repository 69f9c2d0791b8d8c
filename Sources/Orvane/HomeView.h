// The content of the home window: the capabilities on the left, the page of the chosen one on the right.
#pragma once

#include "OrvaneCore/OrvaView.h"

namespace orvane {

class CapabilityRegistry;

struct HomeView {
    std::shared_ptr<CapabilityRegistry> registry;
};

QWidget* makeOrvaWidget(const HomeView& view);

} // namespace orvane
