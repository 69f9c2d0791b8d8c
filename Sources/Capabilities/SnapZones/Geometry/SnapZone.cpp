#include "Capabilities/SnapZones/Geometry/SnapZone.h"

#include <QLatin1StringView>

namespace orvane {

namespace {

struct Row {
    QLatin1StringView rawValue;
    QLatin1StringView title;
    QLatin1StringView symbol;
};

constexpr QLatin1StringView operator""_text(const char* text, std::size_t length)
{
    return {text, static_cast<qsizetype>(length)};
}

/// In the order of the cases.
constexpr std::array rows{
    Row{"leftHalf"_text, "Left Half"_text, "rectangle.lefthalf.filled"_text},
    Row{"rightHalf"_text, "Right Half"_text, "rectangle.righthalf.filled"_text},
    Row{"topHalf"_text, "Top Half"_text, "rectangle.tophalf.filled"_text},
    Row{"bottomHalf"_text, "Bottom Half"_text, "rectangle.bottomhalf.filled"_text},
    Row{"topLeft"_text, "Top Left"_text, "rectangle.inset.topleft.filled"_text},
    Row{"topRight"_text, "Top Right"_text, "rectangle.inset.topright.filled"_text},
    Row{"bottomLeft"_text, "Bottom Left"_text, "rectangle.inset.bottomleft.filled"_text},
    Row{"bottomRight"_text, "Bottom Right"_text, "rectangle.inset.bottomright.filled"_text},
    Row{"maximize"_text, "Maximize"_text, "rectangle.fill"_text},
    Row{"center"_text, "Center"_text, "rectangle.center.inset.filled"_text},
};
static_assert(rows.size() == allSnapZones.size());

const Row& row(SnapZone zone)
{
    return rows.at(static_cast<std::size_t>(zone));
}

} // namespace

QString rawValue(SnapZone zone)
{
    return row(zone).rawValue;
}

QString title(SnapZone zone)
{
    return row(zone).title;
}

QString symbol(SnapZone zone)
{
    return row(zone).symbol;
}

} // namespace orvane
