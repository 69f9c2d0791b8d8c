// Finds out by trying what the X server lets this program do, on a separate connection that is closed again.
// Any thread; a few milliseconds.
#pragma once

#include <QString>

namespace orvane {

struct XAccess {
    bool granted = false;
    /// The reason of a denial, as a sentence for a person.
    QString reason = {};
    /// True if the server didn't answer in time, so that the next attempt may end otherwise.
    bool isLate = false;
};

/// Tries if the keys of other programs can be seen, held back and made.
XAccess tryInputAccess();
/// Tries if the screen's content can be read.
XAccess tryScreenAccess();

} // namespace orvane
