// The history's form on the disk: a compact JSON array, newest first. Pure.
#pragma once

#include "Capabilities/ClipboardHistory/Store/ClipItem.h"

#include <QByteArray>
#include <QList>

#include <optional>

namespace orvane::HistoryCodec {

/// Writes keys in the order of the fields and leaves absent ones out; ids are in upper case, slashes escaped.
QByteArray encode(const QList<ClipItem>& items);

/// Returns nothing when the bytes aren't such an array: one bad element is enough. Keys may be in any order,
/// unknown ones are ignored, and a null counts as absent.
std::optional<QList<ClipItem>> decode(const QByteArray& json);

} // namespace orvane::HistoryCodec
