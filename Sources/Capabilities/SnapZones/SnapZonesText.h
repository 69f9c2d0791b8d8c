// The texts of Snap Zones: SnapZonesText::tr("Text").
#pragma once

#include <QCoreApplication>

namespace orvane {

struct SnapZonesText {
    Q_DECLARE_TR_FUNCTIONS(SnapZonesText)
};

} // namespace orvane
