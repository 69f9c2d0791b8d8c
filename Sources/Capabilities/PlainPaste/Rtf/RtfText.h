// The text that a reader sees of an RTF document.
#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>

namespace orvane::RtfText {

/// 32 MiB.
inline constexpr qsizetype maximumSize = 32 * 1024 * 1024;
inline constexpr int maximumDepth = 4096;

/// Nothing for what isn't RTF, is larger than `maximumSize`, or has groups deeper than `maximumDepth`.
/// A document that breaks off gives what is there. The end of the last paragraph isn't part of the text.
/// Any thread; the time is proportional to the size.
std::optional<QString> decode(QByteArrayView document);

} // namespace orvane::RtfText
