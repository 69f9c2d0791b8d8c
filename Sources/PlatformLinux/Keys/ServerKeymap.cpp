#include "PlatformLinux/Keys/ServerKeymap.h"

#include "PlatformLinux/Keys/KeymapReading.h"
#include "PlatformLinux/Keys/KeymapTables.h"
#include "PlatformLinux/X11/XkbProtocol.h"

#include <QSocketNotifier>

#include <chrono>

namespace orvane {

namespace {

using namespace std::chrono_literals;

/// A change of the layout comes in several pieces.
constexpr auto settlingTime = 50ms;

/// Makes the server announce another keymap or another group.
void selectKeyboard(ApplicationLink& x)
{
    constexpr std::uint16_t wanted = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY |
                                     XCB_XKB_EVENT_TYPE_STATE_NOTIFY;
    constexpr std::uint16_t allMapParts = 0xFF;
    xcb_xkb_select_events_details_t details{};
    details.affectNewKeyboard = details.newKeyboardDetails =
        XCB_XKB_NKN_DETAIL_KEYCODES | XCB_XKB_NKN_DETAIL_GEOMETRY | XCB_XKB_NKN_DETAIL_DEVICE_ID;
    details.affectState = details.stateDetails = XCB_XKB_STATE_PART_GROUP_STATE;
    xcb_xkb_select_events_aux(x.xcb(), XCB_XKB_ID_USE_CORE_KBD, wanted, 0, 0, allMapParts, allMapParts,
                              &details);
    x.link().flush();
}

} // namespace

ServerKeymap::ServerKeymap() : m_x(ApplicationLink::get())
{
    const auto* xkb = m_x ? m_x->link().extension(xcb_xkb_id) : nullptr;
    if (!xkb)
        m_x.reset();
    if (!m_x)
        return;
    m_xkbEvent = xkb->first_event;
    m_settled.setSingleShot(true);
    m_settled.setInterval(settlingTime);
    connect(&m_settled, &QTimer::timeout, this, [this] {
        forget(); // the keymap may have been read between two of the pieces
        Q_EMIT changed();
    });
    selectKeyboard(*m_x);
    m_listener = m_x->listen([this](const xcb_generic_event_t& event) { handle(event); });
}

ServerKeymap::~ServerKeymap() = default;

std::shared_ptr<const KeymapTables> ServerKeymap::tables()
{
    if (m_tables || !m_x || m_lateReading)
        return m_tables;
    auto reading = std::make_unique<KeymapReading>();
    if (reading->wait(within(ApplicationLink::patience))) {
        m_tables = reading->tables();
        return m_tables;
    }
    m_lateReading = std::move(reading);
    m_lateNotifier = std::make_unique<QSocketNotifier>(m_lateReading->descriptor(), QSocketNotifier::Read);
    connect(m_lateNotifier.get(), &QSocketNotifier::activated, this, [this] {
        m_lateNotifier->setEnabled(false);
        m_lateNotifier.release()->deleteLater();
        m_tables = m_lateReading->tables();
        m_lateReading.reset();
        Q_EMIT changed();
    });
    return nullptr;
}

void ServerKeymap::forget()
{
    m_tables.reset();
    m_lateNotifier.reset();
    m_lateReading.reset();
}

void ServerKeymap::handle(const xcb_generic_event_t& event)
{
    if ((event.response_type & 0x7F) != m_xkbEvent)
        return;
    // All events of the extension have one type, and their kind at one place.
    const auto& state = reinterpret_cast<const xcb_xkb_state_notify_event_t&>(event);
    const bool isOfKeymap =
        state.xkbType == XCB_XKB_NEW_KEYBOARD_NOTIFY || state.xkbType == XCB_XKB_MAP_NOTIFY;
    const bool isOfGroup =
        state.xkbType == XCB_XKB_STATE_NOTIFY && (state.changed & XCB_XKB_STATE_PART_GROUP_STATE) != 0;
    if (isOfKeymap || isOfGroup) {
        forget();
        m_settled.start();
    }
}

} // namespace orvane
