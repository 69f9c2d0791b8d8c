// Owners of the objects that libxcb allocates.
#pragma once

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

namespace orvane {

struct XcbFree {
    void operator()(void* reply) const { std::free(reply); }
};
/// A reply, an event or an error.
template <typename Reply>
using XcbReply = std::unique_ptr<Reply, XcbFree>;

struct XcbDisconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};
using XcbConnection = std::unique_ptr<xcb_connection_t, XcbDisconnect>;

} // namespace orvane
