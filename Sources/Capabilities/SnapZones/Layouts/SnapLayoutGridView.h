// The grid of layouts: a heading, and a button for each zone that can be chosen.
#pragma once

#include "Capabilities/SnapZones/Layouts/SnapLayoutModel.h"
#include "Capabilities/SnapZones/SnapZonesText.h"

#include <array>
#include <memory>

class QWidget;

namespace orvane {

/// In points.
struct SnapLayoutGridView {
    struct Columns {
        int count;
        double width;
        double spacing; // between rows too
    };

    std::shared_ptr<SnapLayoutModel> model;
    /// In reading order. The lower half is reached by its shortcut and by dragging.
    std::array<SnapZone, 9> zones{
        SnapZone::leftHalf,   SnapZone::rightHalf,   SnapZone::maximize,
        SnapZone::topLeft,    SnapZone::topRight,    SnapZone::center,
        SnapZone::bottomLeft, SnapZone::bottomRight, SnapZone::topHalf,
    };
    Columns columns{.count = 3, .width = 74, .spacing = 10};

    static QString headline() { return SnapZonesText::tr("Snap Layouts"); }
};

QWidget* makeOrvaWidget(const SnapLayoutGridView& grid);

} // namespace orvane
