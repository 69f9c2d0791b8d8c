#include "PlatformLinux/HotKeys/HotKeyGrabs.h"

#include "PlatformLinux/X11/InputConnection.h"
#include "PlatformLinux/X11/KeyboardMapping.h"
#include "PlatformLinux/X11/XkbProtocol.h"

#include <QSocketNotifier>

#include <chrono>
#include <string>
#include <vector>

#include <xcb/xinput.h>

namespace orvane {

namespace {

using namespace std::chrono_literals;

/// A change of the layout comes in several pieces.
constexpr auto keyboardSettlingTime = 50ms;
/// A posted key has been pressed long before this.
constexpr auto longestGivingWay = 1s;
/// The limit of a wait for the server, during which the run loop stands still.
constexpr auto longestWait = 500ms;
/// The pause between two attempts to reach a server that doesn't answer.
constexpr auto openingPause = 1s;

void warn(LogSink& log, const QString& message)
{
    log.write(LogLevel::error, QStringLiteral("net.lindenrow.orvane"), QStringLiteral("HotKeys"), message);
}

/// Makes the server announce changes of the keyboard, and the end of a held key once and not at each repeat.
void listenToKeyboard(xcb_connection_t* xcb)
{
    constexpr std::uint32_t detectableRepeat = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    const auto flags =
        xcb_xkb_per_client_flags(xcb, XCB_XKB_ID_USE_CORE_KBD, detectableRepeat, detectableRepeat, 0, 0, 0);
    xcb_discard_reply(xcb, flags.sequence);
    constexpr std::uint16_t changes = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
    constexpr std::uint16_t parts = XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_MODIFIER_MAP;
    xcb_xkb_select_events(xcb, XCB_XKB_ID_USE_CORE_KBD, changes, 0, changes, parts, parts, nullptr);
}

} // namespace

HotKeyGrabs::HotKeyGrabs(LogSink& log, Listener listener) : m_log(log), m_listener(std::move(listener))
{
    m_keyboardSettled.setSingleShot(true);
    m_keyboardSettled.setInterval(keyboardSettlingTime);
    QObject::connect(&m_keyboardSettled, &QTimer::timeout, &m_context, [this] { regrab(); });
    m_givingWayEnd.setSingleShot(true);
    m_givingWayEnd.setInterval(longestGivingWay);
    QObject::connect(&m_givingWayEnd, &QTimer::timeout, &m_context,
                     [this] { takeBack([](const KeyCombination&) { return true; }); });
    m_openingAgain.setSingleShot(true);
    QObject::connect(&m_openingAgain, &QTimer::timeout, &m_context, [this] { openAgain(); });
}

HotKeyGrabs::~HotKeyGrabs() = default;

HotKeyGrabs::Opening HotKeyGrabs::open()
{
    if (m_connection && m_connection->link().isLost())
        lose();
    if (m_connection)
        return Opening::open;
    auto opened = InputConnection::open(within(longestWait));
    if (opened.isLate)
        return Opening::late;
    if (!opened.connection) {
        warn(m_log, QStringLiteral("No shortcut works outside of Orvane's own windows: %1.")
                        .arg(QString::fromStdString(opened.problem)));
        return Opening::impossible;
    }
    m_connection = std::move(opened.connection);
    listenToKeyboard(m_connection->link().xcb());
    const auto masks = readMasks();
    m_masks = masks.value_or(ModifierMasks());
    if (!masks)
        m_keyboardSettled.start(); // without masks no modifier is told from another: they are read again
    m_notifier = std::make_unique<QSocketNotifier>(m_connection->link().descriptor(), QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, &m_context, [this] { readEvents(); });
    return Opening::open;
}

/// The server has ended the connection, and with it all grabs.
void HotKeyGrabs::lose()
{
    m_notifier->setEnabled(false);
    m_notifier.release()->deleteLater(); // the call may come from the notifier itself
    m_releases.reset();
    m_connection.reset();
    m_down.reset();
    m_givesWayTo.clear();
    for (auto& [combination, grabbed] : m_grabs)
        grabbed.onServer = OnServer::absent;
}

void HotKeyGrabs::openAgain()
{
    if (m_grabs.empty())
        return;
    switch (open()) {
    case Opening::open:
        grabWhatIsAbsent();
        break;
    case Opening::late:
        m_openingAgain.start(openingPause);
        break;
    case Opening::impossible:
        break;
    }
}

/// The connection isn't closed at once: a hot key is often removed only to be replaced, and the end of the
/// connection would let a key that is still held reach a window.
void HotKeyGrabs::closeWhenUnused()
{
    QMetaObject::invokeMethod(
        &m_context,
        [this] {
            if (!m_grabs.empty() || m_down.any())
                return;
            m_keyboardSettled.stop();
            m_givingWayEnd.stop();
            m_givesWayTo.clear();
            m_notifier.reset();
            m_releases.reset();
            m_connection.reset();
        },
        Qt::QueuedConnection);
}

OSStatus HotKeyGrabs::add(const KeyCombination& combination)
{
    const Opening opening = open();
    if (opening == Opening::impossible)
        return unimpErr;
    Grab& grabbed = m_grabs[combination];
    if (opening == Opening::late) {
        m_openingAgain.start(openingPause);
    } else if (grabbed.onServer == OnServer::absent) {
        const OSStatus status = grab(combination);
        if (status != noErr) {
            if (grabbed.users == 0)
                m_grabs.erase(combination);
            closeWhenUnused();
            return status;
        }
        grabbed.onServer = OnServer::present;
    }
    ++grabbed.users;
    return noErr;
}

void HotKeyGrabs::remove(const KeyCombination& combination)
{
    const auto grabbed = m_grabs.find(combination);
    if (grabbed == m_grabs.end() || --grabbed->second.users > 0)
        return;
    if (grabbed->second.onServer == OnServer::present)
        ungrab(combination);
    m_grabs.erase(grabbed);
    closeWhenUnused();
}

OSStatus HotKeyGrabs::grab(const KeyCombination& combination)
{
    const auto state = m_masks.stateOf(combination.modifiers);
    if (!state)
        return eventHotKeyInvalidErr;
    xcb_connection_t* xcb = m_connection->link().xcb();
    // A key that is already held repeats, which is no press of the hot key. Its release could come before the
    // answer does, so releases are watched from before the question on.
    watchReleases(true);
    XExchange answers = exchange();
    const auto keymap = xcb_query_keymap(xcb);
    const auto variants = m_masks.withLocks(*state);
    std::vector<xcb_void_cookie_t> requests;
    requests.reserve(variants.size());
    for (const std::uint16_t variant : variants) {
        requests.push_back(xcb_grab_key_checked(xcb, 0, m_connection->link().root(), variant,
                                                combination.xKey, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    }
    const bool isHeld = orvane::keysDown(answers, keymap).test(combination.xKey);
    OSStatus status = noErr;
    for (const xcb_void_cookie_t request : requests) {
        if (answers.check(request) == XOutcome::refused && status == noErr)
            status = answers.error() == XCB_ACCESS ? eventHotKeyExistsErr : eventHotKeyInvalidErr;
    }
    if (m_connection->link().isLost())
        status = unimpErr;
    if (status != noErr)
        ungrab(combination); // it isn't grabbed, so it reaches the program anyway
    else if (isHeld)
        m_down.set(combination.xKey);
    watchReleasesAsNeeded();
    return status;
}

void HotKeyGrabs::ungrab(const KeyCombination& combination)
{
    const auto state = m_masks.stateOf(combination.modifiers);
    if (!state)
        return;
    for (const std::uint16_t variant : m_masks.withLocks(*state))
        xcb_ungrab_key(m_connection->link().xcb(), combination.xKey, m_connection->link().root(), variant);
    m_connection->link().flush();
}

XExchange HotKeyGrabs::exchange() const
{
    return {m_connection->link(), within(longestWait)};
}

/// Absent when the server doesn't answer.
std::optional<ModifierMasks> HotKeyGrabs::readMasks()
{
    XExchange answers = exchange();
    const auto mapping = KeyboardMapping::read(answers);
    if (answers.isLate())
        return std::nullopt;
    return ModifierMasks::fromMappings(mapping.firstKey, mapping.symbolsPerKey, mapping.keysyms,
                                       mapping.keysPerModifier, mapping.modifierKeys);
}

void HotKeyGrabs::regrab()
{
    if (!m_connection || m_connection->link().isLost())
        return;
    const auto masks = readMasks();
    if (!masks) {
        m_keyboardSettled.start(); // it is looked at again
        return;
    }
    if (*masks == m_masks)
        return;
    for (auto& [combination, grabbed] : m_grabs) {
        if (grabbed.onServer == OnServer::present)
            ungrab(combination);
        grabbed.onServer = OnServer::absent;
    }
    m_masks = *masks;
    m_givesWayTo.clear();
    grabWhatIsAbsent();
}

void HotKeyGrabs::grabWhatIsAbsent()
{
    for (auto& [combination, grabbed] : m_grabs) {
        if (grabbed.onServer == OnServer::present)
            continue;
        grabbed.onServer = grab(combination) == noErr ? OnServer::present : OnServer::absent;
        if (grabbed.onServer == OnServer::absent)
            warn(m_log, QStringLiteral("With the present keyboard, a shortcut of the key %1 is another "
                                       "program's. Choose another one in Orvane's settings.")
                            .arg(combination.xKey));
    }
}

void HotKeyGrabs::readEvents()
{
    while (m_connection) {
        const auto event = m_connection->link().nextEvent();
        if (!event)
            break;
        handle(*event);
    }
    if (!m_connection || !m_connection->link().isLost())
        return;
    lose();
    m_openingAgain.start(0);
}

void HotKeyGrabs::handle(const xcb_generic_event_t& event)
{
    const std::uint8_t type = event.response_type & 0x7f;
    if (type == XCB_KEY_PRESS) {
        const auto& press = reinterpret_cast<const xcb_key_press_event_t&>(event);
        handlePress(press.detail, press.state);
    } else if (type == XCB_KEY_RELEASE) {
        handleRelease(reinterpret_cast<const xcb_key_release_event_t&>(event).detail);
    } else if (type == XCB_GE_GENERIC) {
        const auto& raw = reinterpret_cast<const xcb_input_raw_key_release_event_t&>(event);
        if (raw.extension == m_connection->xinputOpcode() && raw.event_type == XCB_INPUT_RAW_KEY_RELEASE)
            handleRawRelease(static_cast<std::uint8_t>(raw.detail), event.full_sequence);
    } else if (type == XCB_MAPPING_NOTIFY || type == m_connection->xkbFirstEvent()) {
        m_keyboardSettled.start();
    }
}

void HotKeyGrabs::handlePress(std::uint8_t key, std::uint16_t state)
{
    if (m_down.test(key))
        return;
    const std::uint16_t pressed = m_masks.withoutLocks(state);
    for (const auto& [combination, grabbed] : m_grabs) {
        if (combination.xKey != key || m_masks.stateOf(combination.modifiers) != pressed)
            continue;
        m_down.set(key);
        watchReleases(true);
        m_listener.pressed(KeyCombination(combination));
        return;
    }
}

/// A release from before it gave way belongs to the user's own key.
void HotKeyGrabs::handleRawRelease(std::uint8_t key, std::uint32_t sequence)
{
    if (static_cast<std::int32_t>(sequence - m_givesWaySince) >= 0)
        takeBack([key](const KeyCombination& combination) { return combination.xKey == key; });
    handleRelease(key);
}

void HotKeyGrabs::handleRelease(std::uint8_t key)
{
    if (!m_down.test(key))
        return;
    m_down.reset(key);
    watchReleasesAsNeeded();
    m_listener.released(key);
    releaseWhatIsUp();
    closeWhenUnused();
}

/// The server's grab ends with the release of the first of several keys, and the others may have been
/// released before the watch for releases began.
void HotKeyGrabs::releaseWhatIsUp()
{
    if (m_down.none())
        return;
    const KeySet present = keysDown();
    for (std::size_t key = 0; key < m_down.size(); ++key) {
        if (m_down.test(key) && !present.test(key))
            handleRelease(static_cast<std::uint8_t>(key));
    }
}

KeySet HotKeyGrabs::keysDown()
{
    XExchange answers = exchange();
    return orvane::keysDown(answers, xcb_query_keymap(m_connection->link().xcb()));
}

void HotKeyGrabs::giveWayTo(const KeyCombination& combination)
{
    const auto grabbed = m_grabs.find(combination);
    if (grabbed == m_grabs.end() || grabbed->second.onServer == OnServer::absent)
        return;
    m_givesWayTo.insert(combination);
    m_givingWayEnd.start();
    watchReleasesAsNeeded();
    ungrab(combination);
    grabbed->second.onServer = OnServer::absent;
    // The answer comes when all of that is done.
    const auto question = xcb_get_input_focus(m_connection->link().xcb());
    m_givesWaySince = question.sequence;
    (void)exchange().reply<xcb_get_input_focus_reply_t>(question);
}

void HotKeyGrabs::letGoOfKeyboard()
{
    if (m_connection && m_down.any()) // the releases come raw
        m_connection->letGoOfKeyboard();
}

void HotKeyGrabs::takeBack(const std::function<bool(const KeyCombination&)>& which)
{
    if (std::erase_if(m_givesWayTo, which) == 0)
        return;
    for (auto& [combination, grabbed] : m_grabs) {
        if (which(combination) && grabbed.onServer == OnServer::absent && grab(combination) == noErr)
            grabbed.onServer = OnServer::present;
    }
    watchReleasesAsNeeded();
}

void HotKeyGrabs::watchReleasesAsNeeded()
{
    watchReleases(m_down.any() || !m_givesWayTo.empty());
}

/// The server's grab reports a release only as long as it lasts, and it ends with the first of several keys
/// or with another client's grab of the device. Raw releases come in any case.
void HotKeyGrabs::watchReleases(bool watch)
{
    if (watch == static_cast<bool>(m_releases))
        return;
    m_releases =
        watch ? m_connection->link().selectInput(m_connection->link().root(), XCB_INPUT_DEVICE_ALL_MASTER,
                                                 XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE)
              : XSelection();
    m_connection->link().flush();
}

} // namespace orvane
