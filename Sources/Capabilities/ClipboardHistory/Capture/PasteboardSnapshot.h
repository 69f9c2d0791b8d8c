// What a copy is, of the kinds that the history keeps. Pure.
#pragma once

#include "Capabilities/ClipboardHistory/Capture/PasteboardReading.h"

#include <variant>

namespace orvane {

namespace capturedContent {

/// Exactly as read.
struct Text {
    QString string;
    friend bool operator==(const Text&, const Text&) = default;
};

/// Trimmed.
struct URL {
    QString string;
    friend bool operator==(const URL&, const URL&) = default;
};

/// PNG, never empty.
struct Image {
    QByteArray png;
    friend bool operator==(const Image&, const Image&) = default;
};

/// Paths in the order of the pasteboard, at least one.
struct Files {
    QStringList paths;
    friend bool operator==(const Files&, const Files&) = default;
};

} // namespace capturedContent

using CapturedContent =
    std::variant<capturedContent::Text, capturedContent::URL, capturedContent::Image, capturedContent::Files>;

namespace PasteboardSnapshot {

/// Files before pictures, pictures before links, links before text. A kind that isn't captured is passed
/// over, and the copy may still count as one of the others.
std::optional<CapturedContent> classify(const PasteboardReading& pasteboard, bool captureFiles,
                                        bool captureImages, bool captureText);

} // namespace PasteboardSnapshot

} // namespace orvane
