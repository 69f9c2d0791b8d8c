// The X server's clock, by which requests of users are put in order.
#pragma once

#include <xcb/xcb.h>

namespace orvane {

/// Main thread; two round trips. XCB_CURRENT_TIME where the server doesn't tell.
xcb_timestamp_t serverTime();

} // namespace orvane
