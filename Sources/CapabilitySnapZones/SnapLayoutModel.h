// What the grid of layouts tells.
#pragma once

#include "CapabilitySnapZones/SnapZone.h"
#include "OrvaneCore/Observable.h"

#include <functional>

namespace orvane {

class SnapLayoutModel : public ObservableObject {
public:
    /// A cell was pressed. May be absent.
    std::function<void(SnapZone)> onSelect;
};

} // namespace orvane
