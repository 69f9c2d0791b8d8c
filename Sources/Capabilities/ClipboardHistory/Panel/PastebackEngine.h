// Puts an entry back on the general pasteboard, and pastes it.
#pragma once

#include "Capabilities/ClipboardHistory/Store/ClipItem.h"
#include "Platform/Pasteboard.h"

#include <optional>

namespace orvane::PastebackEngine {

/// Returns the picture in an entry's file, for place(). Nothing when the file isn't there or isn't a picture.
/// Blocks; any thread.
std::optional<PasteboardImage> image(const QString& path);

/// Takes the general pasteboard in any case and returns its new change count. `image` is given for an entry
/// that is a picture. Main thread.
int place(const ClipItem& item, const std::optional<PasteboardImage>& image);

/// Posts a marked ⌘V. Main thread.
void synthesizePaste();

} // namespace orvane::PastebackEngine
