// The accent colour as desktops write it. Pure but for the last function; any thread.
#pragma once

#include <QColor>
#include <QStringList>
#include <QVariant>

#include <optional>

namespace orvane {

/// Reads the portal's three numbers from 0 to 1; others mean that none is set.
[[nodiscard]] std::optional<QColor> accentOfPortal(double red, double green, double blue);
/// Reads KDE's "61,174,233", or "#3daee9".
[[nodiscard]] std::optional<QColor> accentOfKde(const QVariant& value);
/// Reads the colour of chosen rows and text from a style sheet of GTK.
[[nodiscard]] std::optional<QColor> selectedColorIn(const QString& styleSheet);

/// Returns the folders in which themes lie, the user's own first.
[[nodiscard]] QStringList themeFolders();
/// Reads the style sheet of a GTK theme and those that it imports from its own folder. Blocks for the disk.
/// Absent for a theme that isn't there, that is a part of GTK itself, or whose sheet names no such colour.
[[nodiscard]] std::optional<QColor> readSelectedColor(const QString& theme, const QStringList& folders);

} // namespace orvane
