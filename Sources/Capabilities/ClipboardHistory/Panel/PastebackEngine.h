// Puts an entry back on the general pasteboard, and pastes it.
#pragma once

#include "Capabilities/ClipboardHistory/Store/ClipItem.h"
#include "Platform/Pasteboard.h"

#include <optional>

namespace orvane::PastebackEngine {

/// What an entry's file holds, for place(). Nothing when it isn't there or no picture. Blocks; any thread.
std::optional<PasteboardImage> image(const QString& path);

/// Takes the general pasteboard in any case, and gives its new change count. `image` is that of an entry
/// which is a picture. Main thread.
int place(const ClipItem& item, const std::optional<PasteboardImage>& image);

/// Posts a marked ⌘V. Main thread.
void synthesizePaste();

} // namespace orvane::PastebackEngine
