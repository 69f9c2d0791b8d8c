#include "PlatformLinux/Keys/ServerKeymap.h"

#include "PlatformLinux/Keys/KeymapTables.h"
#include "PlatformLinux/X11/XkbProtocol.h"

#include <QCoreApplication>

#include <chrono>

#include <xkbcommon/xkbcommon-x11.h>
#include <xkbcommon/xkbcommon.h>

namespace orvane {

namespace {

using namespace std::chrono_literals;

/// A change of the layout comes in several pieces.
constexpr auto settlingTime = 50ms;

struct XkbUnref {
    void operator()(xkb_context* context) const { xkb_context_unref(context); }
    void operator()(xkb_keymap* keymap) const { xkb_keymap_unref(keymap); }
    void operator()(xkb_state* state) const { xkb_state_unref(state); }
};
template <typename Type>
using XkbOwner = std::unique_ptr<Type, XkbUnref>;

std::shared_ptr<const KeymapTables> readTables(xcb_connection_t* xcb)
{
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

bool findExtension(const X11Connection& x, std::uint8_t& firstEvent)
{
    return xkb_x11_setup_xkb_extension(x.xcb(), XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                                       XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, &firstEvent,
                                       nullptr) != 0;
}

} // namespace

ServerKeymap::ServerKeymap() : m_x(X11Connection::ofApplication())
{
    if (m_x && !findExtension(*m_x, m_xkbFirstEvent))
        m_x.reset();
    if (!m_x)
        return;
    m_settled.setSingleShot(true);
    m_settled.setInterval(settlingTime);
    connect(&m_settled, &QTimer::timeout, this, [this] {
        m_tables.reset(); // the keymap may have been read between two of the pieces
        Q_EMIT changed();
    });
    qApp->installNativeEventFilter(this);
}

ServerKeymap::~ServerKeymap()
{
    if (m_x && qApp)
        qApp->removeNativeEventFilter(this);
}

std::shared_ptr<const KeymapTables> ServerKeymap::tables()
{
    if (!m_tables && m_x)
        m_tables = readTables(m_x->xcb());
    return m_tables;
}

bool ServerKeymap::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    if ((event->response_type & 0x7f) != m_xkbFirstEvent)
        return false;
    // The toolkit follows the keymap too, and has asked for all of these. All have their kind at the same
    // place.
    const auto& state = *reinterpret_cast<const xcb_xkb_state_notify_event_t*>(event);
    const bool isOfKeymap =
        state.xkbType == XCB_XKB_NEW_KEYBOARD_NOTIFY || state.xkbType == XCB_XKB_MAP_NOTIFY;
    const bool isOfGroup =
        state.xkbType == XCB_XKB_STATE_NOTIFY && (state.changed & XCB_XKB_STATE_PART_GROUP_STATE) != 0;
    if (isOfKeymap || isOfGroup) {
        m_tables.reset();
        m_settled.start();
    }
    return false;
}

} // namespace orvane
