// The outlines of symbols as their files write them.
#pragma once

#include <QByteArrayView>
#include <QPainterPath>

#include <optional>

namespace orvane {

/// Reads the path data of an SVG file: the commands M, L, H, V, C, Z with places counted from the corner, and
/// A for arcs of circles. Nothing for any other data.
[[nodiscard]] std::optional<QPainterPath> symbolPath(QByteArrayView data);

} // namespace orvane
