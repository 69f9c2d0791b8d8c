// The common set-up of the kit's lists. Main thread.
#pragma once

#include "OrvaneKit/Theme/OrvaTheme.h"

class QListView;

namespace orvane {

/// One row can be chosen, none is edited, the pointer is followed, and the slim scroll bar has the colour
/// `ground` behind it.
void setUpOrvaList(QListView& list, OrvaColor ground);

} // namespace orvane
