// What the lists of the kit have in common. Main thread.
#pragma once

#include "OrvaneKit/Theme/OrvaTheme.h"

class QListView;

namespace orvane {

/// One row can be chosen, none is edited, the pointer is followed, and the slim scroll bar stands on
/// `ground`.
void setUpOrvaList(QListView& list, OrvaColor ground);

} // namespace orvane
