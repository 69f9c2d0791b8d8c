// The desktop of Xfce, which follows its settings as soon as they change. Blocks; any thread but the main
// one.
#pragma once

#include "Platform/Screens.h"
#include "PlatformLinux/DesktopPicture/BlockingBus.h"

#include <QStringList>
#include <QVariantMap>

namespace orvane::XfcePicture {

/// True while Xfce's desktop runs.
[[nodiscard]] bool isThere(const BlockingBus& bus);
/// Sets the picture for every workspace of the displays. Throws PlatformError.
void set(const BlockingBus& bus, const QString& path, const QList<Screen>& screens);

/// Returns the folders of the settings of a display's workspaces: those that there are in `properties`, and
/// those of the present workspaces.
[[nodiscard]] QStringList workspaceFolders(const QVariantMap& properties, const QString& display,
                                           int workspaces);
/// True unless the folder's settings have a picture shown.
[[nodiscard]] bool lacksStyle(const QVariantMap& properties, const QString& folder);

} // namespace orvane::XfcePicture
