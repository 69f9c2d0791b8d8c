// The plain text of what a pasteboard holds.
#pragma once

#include "Platform/Pasteboard.h"

#include <optional>

namespace orvane::PlainText {

/// The types that a text can be had from, the best one first.
QStringList types();

/// The plain flavour exactly as it stands, also when it is empty; else the text of the RTF, or of the HTML
/// when there is no RTF that can be read. Any thread; slow for large formatted documents.
std::optional<QString> from(const PasteboardContents& contents);

} // namespace orvane::PlainText
