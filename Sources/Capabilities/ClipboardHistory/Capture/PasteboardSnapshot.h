// Decides which of the history's kinds a copy is. Pure.
#pragma once

#include "Capabilities/ClipboardHistory/Capture/PasteboardReading.h"

#include <variant>

namespace orvane {

namespace capturedContent {

/// The text exactly as it was read.
struct Text {
    QString string;
    friend bool operator==(const Text&, const Text&) = default;
};

/// The link without the space around it.
struct URL {
    QString string;
    friend bool operator==(const URL&, const URL&) = default;
};

/// A PNG, never empty.
struct Image {
    QByteArray png;
    friend bool operator==(const Image&, const Image&) = default;
};

/// The paths in the order of the pasteboard, at least one.
struct Files {
    QStringList paths;
    friend bool operator==(const Files&, const Files&) = default;
};

} // namespace capturedContent

using CapturedContent =
    std::variant<capturedContent::Text, capturedContent::URL, capturedContent::Image, capturedContent::Files>;

namespace PasteboardSnapshot {

/// Files come before pictures, pictures before links, links before text. A kind that isn't captured is
/// skipped, and the copy may still count as one of the others.
std::optional<CapturedContent> classify(const PasteboardReading& pasteboard, bool captureFiles,
                                        bool captureImages, bool captureText);

} // namespace PasteboardSnapshot

} // namespace orvane
