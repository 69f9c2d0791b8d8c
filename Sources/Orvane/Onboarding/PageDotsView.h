// Dots that show how many pages there are and which one is shown.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"

namespace orvane {

struct PageDots {
    int count;
    Live<int> index; // from 0
};

QWidget* makeOrvaWidget(const PageDots& dots);

} // namespace orvane
