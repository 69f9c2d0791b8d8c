#include "PlatformLinux/EventTap/KeyListener.h"

#include "PlatformLinux/Common/Uptime.h"
#include "PlatformLinux/EventTap/KeyboardChanges.h"
#include "PlatformLinux/X11/XkbProtocol.h"

#include <chrono>
#include <utility>

namespace orvane {

namespace {

using namespace std::chrono_literals;

/// The time that the X server may take to open the connection; the main thread waits for it.
constexpr auto longestOpening = 500ms;
constexpr std::uint8_t lockModifier = 1 << 1;

void write(LogSink& log, const QString& sentence)
{
    log.write(LogLevel::error, QStringLiteral("net.lindenrow.orvane"), QStringLiteral("EventTap"), sentence);
}

} // namespace

KeyListener::Begun KeyListener::begin(LogSink& log, FakedMotions& faked, Handlers handlers)
{
    auto opened = InputConnection::open(within(longestOpening));
    if (!opened.connection) {
        write(log, QStringLiteral("Keyboard events can't be heard: %1.")
                       .arg(QString::fromStdString(opened.problem)));
        return {nullptr, opened.isLate};
    }
    std::shared_ptr<KeyListener> listener(
        new KeyListener(std::move(opened.connection), log, faked, std::move(handlers)));
    return {std::move(listener)};
}

KeyListener::KeyListener(std::unique_ptr<InputConnection> connection, LogSink& log, FakedMotions& faked,
                         Handlers handlers)
    : m_connection(std::move(connection)),
      m_log(log),
      m_faked(faked),
      m_handlers(std::move(handlers)),
      m_notifier(m_connection->link().descriptor(), QSocketNotifier::Read)
{
    QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier, [this] { read(); });
    m_faked.setHeard(true);
    // This comes before any question: changes from now on come as events.
    XLink& link = m_connection->link();
    m_keys =
        link.selectInput(m_connection->link().root(), XCB_INPUT_DEVICE_ALL_MASTER,
                         XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE);
    m_hierarchy = link.selectInput(m_connection->link().root(), XCB_INPUT_DEVICE_ALL,
                                   XCB_INPUT_XI_EVENT_MASK_HIERARCHY);
    selectKeyboardSettings(*m_connection);
    readState();
    m_held.set(m_keyboards.down());
}

KeyListener::~KeyListener()
{
    m_faked.setHeard(false);
}

void KeyListener::readState()
{
    m_held.setRoles(m_connection->modifierRoles());
    m_held.setCapsLocked(m_connection->capsIsLocked());
    findKeyboards();
}

void KeyListener::findKeyboards()
{
    const Keyboards present = m_connection->keyboards();
    m_master = present.master;
    m_xtest = present.xtest;
    for (const KeyboardDevice& device : present.hardware) {
        if (!m_keyboards.has(device.id))
            m_keyboards.add(device.id, m_connection->keysDown(device.id));
    }
}

void KeyListener::stopHearing()
{
    m_keys.reset();
    m_connection->link().flush();
}

void KeyListener::finish()
{
    m_connection->synchronize();
    read();
}

void KeyListener::read()
{
    const auto self = shared_from_this(); // a handler may end it
    while (const auto event = m_connection->link().nextEvent())
        readEvent(*event);
    if (m_connection->link().takeRecovery())
        readState(); // whatever was asked meanwhile isn't known
    if (!m_connection->link().isLost() || std::exchange(m_isLost, true))
        return;
    m_notifier.setEnabled(false);
    write(m_log, QStringLiteral("The X server is gone; keyboard events can't be heard any more."));
    m_handlers.lost();
}

void KeyListener::readEvent(const xcb_generic_event_t& event)
{
    const std::uint8_t type = event.response_type & 0x7F;
    if (type == m_connection->xkbFirstEvent()) {
        if (event.pad0 == XCB_XKB_STATE_NOTIFY) {
            const auto& state = reinterpret_cast<const xcb_xkb_state_notify_event_t&>(event);
            m_held.setCapsLocked((state.lockedMods & lockModifier) != 0);
        } else {
            m_held.setRoles(m_connection->modifierRoles());
        }
        return;
    }
    const auto& input = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
    if (type != XCB_GE_GENERIC || input.extension != m_connection->xinputOpcode())
        return;
    switch (input.event_type) {
    case XCB_INPUT_RAW_KEY_PRESS:
    case XCB_INPUT_RAW_KEY_RELEASE:
        readKey(reinterpret_cast<const xcb_input_raw_key_press_event_t&>(event));
        break;
    case XCB_INPUT_HIERARCHY:
        readHierarchy(reinterpret_cast<const xcb_input_hierarchy_event_t&>(event));
        break;
    default:
        break;
    }
}

void KeyListener::readKey(const xcb_input_raw_key_press_event_t& event)
{
    const KeyMotion motion =
        event.event_type == XCB_INPUT_RAW_KEY_PRESS ? KeyMotion::press : KeyMotion::release;
    if (event.deviceid != m_master || event.sourceid == m_xtest)
        return;
    if (m_faked.take(event.sourceid, static_cast<std::uint8_t>(event.detail), motion))
        return;
    if (!m_keyboards.has(event.sourceid)) // the announcement of the keyboard is still on its way
        m_keyboards.add(event.sourceid, {});
    if (const auto key = m_keyboards.motion(event.sourceid, event.detail, motion))
        hear(*key);
}

void KeyListener::readHierarchy(const xcb_input_hierarchy_event_t& event)
{
    KeySet released;
    for (const DeviceId device : devicesGone(event))
        released |= m_keyboards.remove(device);
    findKeyboards();
    forEachKey(released, [this](std::uint8_t key) { hear({key, KeyMotion::release}); });
}

void KeyListener::hear(HardwareKey key)
{
    const Event event = m_held.observe(key, uptimeNanoseconds());
    if (key.motion == KeyMotion::release)
        m_held.forget(key.key);
    m_handlers.hear(event);
}

} // namespace orvane
