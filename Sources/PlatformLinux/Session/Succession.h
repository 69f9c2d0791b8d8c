// One process of the program taking the place of another: what two can't have at a time (grabs, the name on
// the bus) goes from the old one to the new one without a moment in which both want it. Main thread.
#pragma once

#include "PlatformLinux/Common/FileDescriptor.h"

#include <QProcessEnvironment>

#include <chrono>
#include <optional>

namespace orvane {

class LogSink;

namespace Succession {

/// The old process's side: a socket that is open for as long as the process lives.
class Bequest {
public:
    /// Nothing when the system has no descriptors left; errno says so.
    static std::optional<Bequest> make();

    /// What the new process's environment has to hold. It inherits the other end as long as this object is
    /// there in the old one.
    void applyTo(QProcessEnvironment& environment) const;
    /// Once the new process has been started: keeps this end until the process ends.
    void keep() &&;

private:
    Bequest(FileDescriptor ours, FileDescriptor theirs);

    FileDescriptor m_ours;
    FileDescriptor m_theirs;
};

enum class Outcome {
    none,       // this process takes nobody's place
    ended,      // the old one is gone
    madeToEnd,  // it didn't go in time and was killed
    stillThere, // nor did that help
};

/// The new process's side: waits for the old one's end, for `patience` at most, and then sees to it.
Outcome awaitPredecessor(std::chrono::milliseconds patience, LogSink& log);

} // namespace Succession
} // namespace orvane
