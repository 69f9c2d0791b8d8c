// The desktops that keep their picture in GSettings: one for all displays. Blocks; any thread but the main
// one.
#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace orvane::GSettingsPicture {

struct Keys {
    QString schema;
    QString picture;
    /// The desktop's picture in its dark appearance; empty where there is none.
    QString darkPicture;
    QString options;
    bool isPath = false; // otherwise a URL
};

/// Returns nothing for a desktop, told as in XDG_CURRENT_DESKTOP, that doesn't keep its picture there.
[[nodiscard]] std::optional<Keys> keysFor(const QStringList& desktops);

/// Runs the tool with its arguments and returns its output; nothing when it fails.
using Tool = std::function<std::optional<QString>(const QStringList& arguments)>;
/// Throws PlatformError.
void set(const Keys& keys, const QString& path, const Tool& tool);
[[nodiscard]] Tool systemTool();

} // namespace orvane::GSettingsPicture
