// The first page of the first run: what the program is.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"
#include "OrvaneKit/Model/OrvaComposite.h"

namespace orvane {

struct WelcomeStep {
    AnyView body() const;
    QList<AnyView> children() const { return {body()}; }
};

} // namespace orvane
