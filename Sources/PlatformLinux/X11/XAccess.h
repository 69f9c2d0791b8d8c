// What the X server lets this program do, found out by trying, on a connection of its own that is closed
// again. Any thread; a few milliseconds.
#pragma once

#include <QString>

namespace orvane {

struct XAccess {
    bool granted = false;
    /// Why not, as a sentence for a person.
    QString reason;
};

/// Whether the keys of other programs can be seen, held back and made.
XAccess tryInputAccess();
/// Whether the screen's content can be read.
XAccess tryScreenAccess();

} // namespace orvane
