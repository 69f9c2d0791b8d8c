// A program that does one thing and ends. Blocks for some seconds at most; any thread but the main one.
#pragma once

#include <QStringList>

#include <optional>

namespace orvane {

/// Returns the output; nothing when the program can't be started, fails, or doesn't end in time. It is killed
/// then.
std::optional<QString> runShortly(const QString& program, const QStringList& arguments);

} // namespace orvane
