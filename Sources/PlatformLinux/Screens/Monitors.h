// The monitors of the desktop, as the X server and the toolkit have them at this moment. Main thread; two
// round trips.
#pragma once

#include "Platform/Geometry.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace orvane {

class XExchange;

struct Monitor {
    QString name;
    /// In pixels of the root window.
    Rect pixels;
    double scale = 1;
    /// Made from the connector's name and the monitor's identification, so that a monitor that comes back has
    /// the same number; never 0.
    std::uint32_t number = 0;

    friend bool operator==(const Monitor&, const Monitor&) = default;
};

/// Returns the primary one first, and one of those that show the same picture. Uses the toolkit alone where
/// there is no X server or it doesn't answer in time.
[[nodiscard]] std::vector<Monitor> readMonitors(XExchange* exchange);

} // namespace orvane
