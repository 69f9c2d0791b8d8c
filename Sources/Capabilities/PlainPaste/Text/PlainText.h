// The plain text in a pasteboard's content.
#pragma once

#include "Platform/Pasteboard.h"

#include <optional>

namespace orvane::PlainText {

/// Returns the types that a text can be taken from, the best one first.
QStringList types();

/// Returns the plain flavour exactly as it is, even if it is empty; else the text of the RTF, or of the HTML
/// when there is no readable RTF. Any thread; slow for large formatted documents.
std::optional<QString> from(const PasteboardContents& contents);

} // namespace orvane::PlainText
