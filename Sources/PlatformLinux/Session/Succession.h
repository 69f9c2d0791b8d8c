// Lets one process of the program take the place of another: what two processes can't have at once (grabs,
// the name on the bus) goes from the old one to the new one without a moment in which both want it. Main
// thread.
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
    /// Nothing when the system has no descriptors left; errno holds the error then.
    static std::optional<Bequest> make();

    /// Adds the variable that the new process needs. It inherits the other end while this object exists in
    /// the old one.
    void applyTo(QProcessEnvironment& environment) const;
    /// To be called once the new process has been started: keeps this end until the process ends.
    void keep() &&;

private:
    Bequest(FileDescriptor ours, FileDescriptor theirs);

    FileDescriptor m_ours;
    FileDescriptor m_theirs;
};

enum class Outcome {
    none,       // this process takes nobody's place
    ended,      // the old process is gone
    madeToEnd,  // it didn't end in time and was killed
    stillThere, // killing it didn't help either
};

/// The new process's side: waits for the old one's end for at most `patience`, and then kills it.
Outcome awaitPredecessor(std::chrono::milliseconds patience, LogSink& log);

} // namespace Succession
} // namespace orvane
