// The events of the grid of layouts.
#pragma once

#include "Capabilities/SnapZones/Geometry/SnapZone.h"
#include "OrvaneCore/Base/Observable.h"

#include <functional>

namespace orvane {

class SnapLayoutModel : public ObservableObject {
public:
    /// Called when a cell was pressed. May be absent.
    std::function<void(SnapZone)> onSelect;
};

} // namespace orvane
