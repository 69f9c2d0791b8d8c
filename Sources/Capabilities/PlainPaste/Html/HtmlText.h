// The text that a reader of an HTML document sees.
#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>

namespace orvane::HtmlText {

/// 32 MiB.
inline constexpr qsizetype maximumSize = qsizetype{32} * 1024 * 1024;

/// Returns nothing for a document that is larger than `maximumSize` or would cost too much to follow.
/// Anything else is HTML; line breaks at the end aren't part of the text. Any thread. Nothing that the
/// document refers to is looked up, style sheets included.
std::optional<QString> decode(QByteArrayView document);

} // namespace orvane::HtmlText
