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
    /// Of the root window.
    Rect pixels;
    double scale = 1;
    /// Made of the connector's name and of what the monitor says of itself, so that it is the same one when
    /// it comes back; never 0.
    std::uint32_t number = 0;

    friend bool operator==(const Monitor&, const Monitor&) = default;
};

/// The primary one first. Of those that show the same picture, one. From the toolkit alone where there is no
/// X server or it can't tell in time.
[[nodiscard]] std::vector<Monitor> readMonitors(XExchange* exchange);

} // namespace orvane
