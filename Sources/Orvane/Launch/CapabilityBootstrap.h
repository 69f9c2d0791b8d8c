// The list of the suite's capabilities.
#pragma once

namespace orvane {

class CapabilityRegistry;

namespace CapabilityBootstrap {

/// Registers each capability in its fixed place. The order is that of lists, of restoring and of menus: Daily
/// Wallpaper, Dock Peek, Snap Zones, File Cut & Paste, Finder Actions, Drop Shelf, Image Resizer, Ctrl
/// Shortcuts, Mouse Tools, Clipboard History, Color Picker, Text Extractor, Magnifier, Awake, Paste as Plain
/// Text.
void registerInto(CapabilityRegistry& registry);

} // namespace CapabilityBootstrap
} // namespace orvane
