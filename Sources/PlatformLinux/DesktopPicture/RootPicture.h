// The root window's picture, where no desktop draws one of its own. It is told to others as is customary, by
// _XROOTPMAP_ID, and stays when this program ends. Blocks; any thread but the main one.
#pragma once

#include "Platform/Pictures.h"
#include "Platform/Screens.h"

namespace orvane::RootPicture {

/// Fills the displays without distortion, cutting off what is too much; the others keep what they show.
/// Throws PlatformError.
void set(Pictures& pictures, const QString& path, const QList<Screen>& screens);

} // namespace orvane::RootPicture
