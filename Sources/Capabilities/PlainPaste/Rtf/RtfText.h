// The text that a reader of an RTF document sees.
#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>

namespace orvane::RtfText {

/// 32 MiB.
inline constexpr qsizetype maximumSize = qsizetype{32} * 1024 * 1024;
inline constexpr int maximumDepth = 4096;

/// Returns nothing for bytes that aren't RTF, are more than `maximumSize`, or have groups deeper than
/// `maximumDepth`. A document that ends early gives the text up to there. The end of the last paragraph isn't
/// part of the text. Any thread; the time is proportional to the size.
std::optional<QString> decode(QByteArrayView document);

} // namespace orvane::RtfText
