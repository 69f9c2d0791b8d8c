// What the start of a program with a status item takes, in counts that don't depend on the machine's speed.
#pragma once

#include <QString>
#include <QStringList>

namespace orvane::tests {

struct StartFigures {
    QStringList filesMapped;
    QStringList filesOpened;
    int threads = 0;
    long relocations = 0;
    /// Kilobytes that belong to this process alone because it has written to them.
    long written = 0;
    /// Kilobytes of the program's own file that are in memory: its code and tables, libraries aside.
    long ownFile = 0;
};

/// Starts the program twice, once under strace, and counts when its status item is there and it does nothing
/// any more. Throws std::runtime_error when that doesn't happen.
[[nodiscard]] StartFigures startFigures(const QString& executable);

} // namespace orvane::tests
