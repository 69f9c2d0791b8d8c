// The history's form on the disk: a compact JSON array, newest first. Pure.
#pragma once

#include "Capabilities/ClipboardHistory/Store/ClipItem.h"

#include <QByteArray>
#include <QList>

#include <optional>

namespace orvane::HistoryCodec {

/// Keys in the order of the fields, absent ones left out; ids in upper case, slashes escaped.
QByteArray encode(const QList<ClipItem>& items);

/// Nothing when the bytes aren't such an array: one bad element is enough. Keys may stand in any order,
/// unknown ones are passed over, and a null counts as absent.
std::optional<QList<ClipItem>> decode(const QByteArray& json);

} // namespace orvane::HistoryCodec
