// Reads the outlines of symbols from their files.
#pragma once

#include <QByteArrayView>
#include <QPainterPath>

#include <optional>

namespace orvane {

/// Reads the path data of an SVG file: the commands M, L, H, V, C, Z in absolute coordinates, and A for arcs
/// of circles. Nothing for any other data.
[[nodiscard]] std::optional<QPainterPath> symbolPath(QByteArrayView data);

} // namespace orvane
