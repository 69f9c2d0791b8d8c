#include "PlatformLinux/Keys/KeymapReading.h"

#include "PlatformLinux/Common/SignalFreeThread.h"
#include "PlatformLinux/Keys/KeymapTables.h"

#include <algorithm>
#include <chrono>

#include <poll.h>
#include <sys/socket.h>

#include <xkbcommon/xkbcommon-x11.h>
#include <xkbcommon/xkbcommon.h>

namespace orvane {

namespace {

constexpr std::chrono::minutes longestOpening(1);

struct XkbUnref {
    void operator()(xkb_context* context) const { xkb_context_unref(context); }
    void operator()(xkb_keymap* keymap) const { xkb_keymap_unref(keymap); }
    void operator()(xkb_state* state) const { xkb_state_unref(state); }
};
template <typename Type>
using XkbOwner = std::unique_ptr<Type, XkbUnref>;

std::shared_ptr<const KeymapTables> readTables(xcb_connection_t* xcb)
{
    const bool speaksXkb = xkb_x11_setup_xkb_extension(
                               xcb, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                               XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, nullptr, nullptr) != 0;
    if (!speaksXkb)
        return nullptr;
    // The server's keymap is whole: none of the rules in the context's files are needed.
    const XkbOwner<xkb_context> context(xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES));
    const int device = xkb_x11_get_core_keyboard_device_id(xcb);
    if (!context || device < 0)
        return nullptr;
    const XkbOwner<xkb_keymap> keymap(
        xkb_x11_keymap_new_from_device(context.get(), xcb, device, XKB_KEYMAP_COMPILE_NO_FLAGS));
    if (!keymap)
        return nullptr;
    const XkbOwner<xkb_state> state(xkb_x11_state_new_from_device(keymap.get(), xcb, device));
    if (!state)
        return nullptr;
    const auto group = xkb_state_serialize_layout(state.get(), XKB_STATE_LAYOUT_EFFECTIVE);
    return std::make_shared<const KeymapTables>(KeymapTables::of(keymap.get(), group));
}

} // namespace

KeymapReading::KeymapReading()
{
    m_thread = startSignalFreeThread([this] { run(); });
}

KeymapReading::~KeymapReading()
{
    m_isStopping = true;
    m_stop.raise();
    if (m_socket >= 0)
        ::shutdown(m_socket, SHUT_RDWR); // makes waits for the server fail
    m_thread.join();
}

void KeymapReading::run()
{
    m_link =
        XLink::open({.extensions = {}, .cancellation = m_stop.descriptor()}, within(longestOpening)).link;
    if (m_link) {
        m_socket = xcb_get_file_descriptor(m_link->xcb());
        if (!m_isStopping)
            m_tables = readTables(m_link->xcb());
    }
    m_done.raise();
}

bool KeymapReading::wait(Deadline deadline) const
{
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Deadline::clock::now());
    pollfd done{m_done.descriptor(), POLLIN, 0};
    return ::poll(&done, 1, static_cast<int>(std::max<std::chrono::milliseconds::rep>(left.count(), 0))) == 1;
}

} // namespace orvane
