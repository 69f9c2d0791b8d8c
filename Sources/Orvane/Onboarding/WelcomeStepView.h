// The first page of the first run: what the program is.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"

namespace orvane {

struct WelcomeStep {
    [[nodiscard]] QList<AnyView> children() const;
};

QWidget* makeOrvaWidget(const WelcomeStep& step);

} // namespace orvane
