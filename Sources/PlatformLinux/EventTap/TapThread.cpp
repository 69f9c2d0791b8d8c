#include "PlatformLinux/EventTap/TapThread.h"

#include "PlatformLinux/EventTap/XkbProtocol.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <string>
#include <string_view>

#include <poll.h>

namespace orvane {

namespace {

using namespace std::chrono_literals;

/// How long the main thread may let an event wait.
constexpr auto patience = 1s;

std::uint64_t uptimeNanoseconds()
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint64_t>(std::chrono::nanoseconds(now).count());
}

template <typename Wire>
const Wire& as(const xcb_generic_event_t& event)
{
    return reinterpret_cast<const Wire&>(event);
}

} // namespace

TapThread::TapThread(Purpose purpose, LogSink& log, std::function<CommandKeys()> commandKeys)
    : m_purpose(purpose),
      m_log(log),
      m_commandKeys(std::move(commandKeys)),
      m_guardianProgram(GuardianLink::program()),
      m_model(purpose == Purpose::tap ? InjectorModel::Devices::grabbed : InjectorModel::Devices::free)
{
    constexpr std::size_t usualPosts = 64;
    m_posts.reserve(usualPosts);
    m_postsAtHand.reserve(usualPosts);
    std::promise<void> begun;
    auto answer = begun.get_future();
    // Signals are the main thread's business.
    sigset_t all, before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    m_thread = std::thread([this, promise = std::move(begun)]() mutable { run(std::move(promise)); });
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    answer.wait();
}

TapThread::~TapThread()
{
    m_mailbox.close();
    m_isStopping = true;
    m_wake.raise();
    m_thread.join();
}

bool TapThread::post(const Event& event)
{
    {
        const std::scoped_lock lock(m_postsMutex);
        if (!m_takesPosts)
            return false;
        m_posts.push_back(event);
    }
    m_wake.raise();
    return true;
}

void TapThread::run(std::promise<void> begun)
{
    const bool hasBegun = begin();
    if (hasBegun) {
        begun.set_value();
        work();
    } else {
        giveUp(Ending::failed);
    }
    end();
    m_ending = m_reason;
    if (hasBegun)
        m_mailbox.ring();
    else
        begun.set_value();
}

bool TapThread::begin()
{
    auto opened = InputConnection::open();
    if (!opened.connection) {
        log(LogLevel::error, "Keyboard events can't be reached: " + opened.problem + ".");
        return false;
    }
    m_connection = std::move(opened.connection);
    m_model.setRoles(m_connection->modifierRoles());
    return m_purpose == Purpose::posting || grabKeyboards();
}

bool TapThread::grabKeyboards()
{
    // Its end tells the guardian that our last key has gone through.
    m_window = xcb_generate_id(m_connection->xcb());
    xcb_create_window(m_connection->xcb(), 0, m_window, m_connection->root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    constexpr std::string_view name = "Orvane event tap";
    xcb_change_property(m_connection->xcb(), XCB_PROP_MODE_REPLACE, m_window, XCB_ATOM_WM_NAME,
                        XCB_ATOM_STRING, 8, name.size(), name.data());
    watchKeyboardSettings();
    watchButtons();
    m_keyboards = std::make_unique<GrabbedKeyboards>(*m_connection);
    for (const std::string& problem : m_keyboards->grab())
        log(LogLevel::notice, problem);
    if (m_keyboards->isEmpty()) {
        log(LogLevel::error, "Keyboard events can't be tapped: no keyboard could be grabbed.");
        return false;
    }
    m_model.setHeld(m_keyboards->downAtFirst());
    m_model.setCapsLocked(m_connection->capsIsLocked());
    startGuardian();
    return true;
}

void TapThread::watchKeyboardSettings()
{
    constexpr std::uint16_t wanted = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY |
                                     XCB_XKB_EVENT_TYPE_STATE_NOTIFY | XCB_XKB_EVENT_TYPE_CONTROLS_NOTIFY;
    xcb_xkb_select_events_details_t details{};
    details.affectNewKeyboard = details.newKeyboardDetails =
        XCB_XKB_NKN_DETAIL_KEYCODES | XCB_XKB_NKN_DETAIL_GEOMETRY | XCB_XKB_NKN_DETAIL_DEVICE_ID;
    details.affectState = details.stateDetails =
        XCB_XKB_STATE_PART_MODIFIER_LOCK | XCB_XKB_STATE_PART_GROUP_LOCK;
    details.affectCtrls = details.ctrlDetails = std::uint32_t{XCB_XKB_BOOL_CTRL_REPEAT_KEYS} |
                                                XCB_XKB_CONTROL_PER_KEY_REPEAT |
                                                XCB_XKB_CONTROL_CONTROLS_ENABLED;
    constexpr std::uint16_t mapParts = 0xFF;
    xcb_xkb_select_events_aux(m_connection->xcb(), XCB_XKB_ID_USE_CORE_KBD, wanted, 0, 0, mapParts, mapParts,
                              &details);
}

/// A click ends a modifier's being alone.
void TapThread::watchButtons()
{
    const struct {
        xcb_input_event_mask_t header;
        std::uint32_t bits;
    } buttons{{XCB_INPUT_DEVICE_ALL_MASTER, 1}, XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS};
    xcb_input_xi_select_events(m_connection->xcb(), m_connection->root(), 1, &buttons.header);
}

void TapThread::work()
{
    while (m_reason == Ending::none) {
        const bool handledOne = handleNextEvent();
        handlePosts();
        if (handledOne)
            continue;
        if (m_connection->isLost()) {
            log(LogLevel::error, "The X server is gone; keyboard events can't be tapped any more.");
            giveUp(Ending::serverLost);
            return;
        }
        if (m_isStopping)
            return;
        wait();
    }
}

void TapThread::wait()
{
    m_connection->flush();
    pollfd waits[] = {{m_connection->descriptor(), POLLIN, 0},
                      {m_wake.descriptor(), POLLIN, 0},
                      {m_guardian ? m_guardian->descriptor() : -1, 0, 0}};
    if (handleNextEvent()) // a flush may have read it in, and the descriptor is silent about it
        return;
    ::poll(waits, std::size(waits), -1);
    if (waits[1].revents != 0)
        m_wake.clear();
    watchGuardian(waits[2].revents);
}

/// What was taken so far goes on unchanged, then the keyboards are free.
void TapThread::end()
{
    {
        const std::scoped_lock lock(m_postsMutex);
        m_takesPosts = false;
    }
    if (!m_connection)
        return;
    m_asksMain = false;
    if (m_keyboards)
        m_keyboards->letGo();
    while (handleNextEvent()) // what came before they were free
        ;
    handlePosts();
    const KeySet modifiers = m_model.held() & m_model.roles().chordKeys();
    const KeySet heldBack = m_model.heldBack();
    KeyActions actions;
    m_model.releaseAll(actions);
    perform(actions);
    if (m_keyboards)
        m_keyboards->settle(modifiers & ~heldBack, heldBack);
    m_connection->synchronize();
    m_guardian.reset();
    m_keyboards.reset();
    m_connection.reset();
}

/// False when there was none.
bool TapThread::handleNextEvent()
{
    const XcbReply<xcb_generic_event_t> event(xcb_poll_for_event(m_connection->xcb()));
    if (!event)
        return false;
    const std::uint8_t type = event->response_type & 0x7F;
    if (type == XCB_GE_GENERIC &&
        as<xcb_ge_generic_event_t>(*event).extension == m_connection->xinputOpcode()) {
        switch (as<xcb_ge_generic_event_t>(*event).event_type) {
        case XCB_INPUT_KEY_PRESS:
        case XCB_INPUT_KEY_RELEASE:
            handleKey(as<xcb_input_key_press_event_t>(*event));
            break;
        case XCB_INPUT_RAW_BUTTON_PRESS:
            m_model.pointerPressed();
            break;
        case XCB_INPUT_HIERARCHY:
            handleHierarchy(as<xcb_input_hierarchy_event_t>(*event));
            break;
        default:
            break;
        }
    } else if (type == m_connection->xkbFirstEvent()) {
        handleKeyboardSettings(
            event->pad0); // all events of that extension have one type, and their kind here
    }
    return true;
}

void TapThread::handleKey(const xcb_input_key_press_event_t& event)
{
    KeyMotion motion = KeyMotion::release;
    if (event.event_type == XCB_INPUT_KEY_PRESS)
        motion = (event.flags & XCB_INPUT_KEY_EVENT_FLAGS_KEY_REPEAT) ? KeyMotion::repeat : KeyMotion::press;
    if (m_keyboards) {
        if (const auto key = m_keyboards->motion(event, motion))
            handleKey(*key);
    }
}

void TapThread::handleKey(HardwareKey key)
{
    const Event event = m_model.observe(key, uptimeNanoseconds());
    std::optional<Event> answer = event;
    if (m_asksMain && (m_mask.load() & eventMaskBit(event.type)) != 0) {
        const auto exchanged = m_mailbox.exchange(event, patience);
        if (exchanged.outcome == TapMailbox::Outcome::timedOut) {
            log(LogLevel::notice, "A key event waited for more than a second for the main thread, so the "
                                  "event tap was disabled and the keyboards are free.");
            giveUp(Ending::timedOut);
            m_asksMain = false; // nor does any other event wait any more
        }
        answer = exchanged.event;
    }
    KeyActions actions;
    m_model.deliver(key, event, answer, m_commandKeys(), actions);
    perform(actions);
    if (m_model.roles().roleOf(key.key) == ModifierRole::capsLock)
        m_model.setCapsLocked(m_connection->capsIsLocked());
}

void TapThread::handleHierarchy(const xcb_input_hierarchy_event_t& event)
{
    if (!m_keyboards)
        return;
    const auto changed = m_keyboards->hierarchyChanged(event);
    for (unsigned key = 0; key < changed.released.size(); ++key) {
        if (changed.released.test(key))
            handleKey(HardwareKey{static_cast<std::uint8_t>(key), KeyMotion::release});
    }
    for (const std::string& problem : changed.problems)
        log(LogLevel::notice, problem);
}

void TapThread::handleKeyboardSettings(std::uint8_t kind)
{
    if (kind == XCB_XKB_STATE_NOTIFY) {
        m_model.setCapsLocked(m_connection->capsIsLocked());
        if (m_keyboards)
            m_keyboards->followLocks();
        return;
    }
    m_model.setRoles(m_connection->modifierRoles());
    // At once, and not only when they are let go: after a crash nobody would do it.
    if (m_keyboards)
        m_keyboards->followKeymap();
}

void TapThread::handlePosts()
{
    {
        const std::scoped_lock lock(m_postsMutex);
        m_postsAtHand.swap(m_posts);
    }
    for (const Event& event : m_postsAtHand)
        postNow(event);
    m_postsAtHand.clear();
}

void TapThread::postNow(const Event& event)
{
    if (m_purpose == Purpose::posting && !m_model.hasPostedKeysDown()) {
        KeySet held;
        for (const KeyboardDevice& device : m_connection->keyboards().hardware)
            held |= m_connection->keysDown(device.id);
        m_model.setHeld(held);
    }
    KeyActions actions;
    m_model.post(event, m_commandKeys(), actions);
    perform(actions);
}

void TapThread::startGuardian()
{
    std::string problem;
    m_guardian = std::make_unique<GuardianLink>(m_guardianProgram, m_window, problem);
    if (!problem.empty())
        log(LogLevel::error, problem);
}

void TapThread::watchGuardian(short happened)
{
    if (happened == 0)
        return;
    m_connection->synchronize();
    if (m_connection->isLost())
        return; // it went with the server, as it should
    m_guardian.reset();
    if (m_guardianWasReplaced) {
        log(LogLevel::error, "The guardian of the keyboard died again; a crash can leave a key pressed.");
        return;
    }
    m_guardianWasReplaced = true;
    log(LogLevel::notice, "The guardian of the keyboard died; another one takes its place.");
    startGuardian();
}

void TapThread::perform(const KeyActions& actions)
{
    for (const KeyAction& action : actions) {
        if (action.seat == KeySeat::hardware)
            performOnHardware(action);
        else if (action.motion == KeyMotion::release)
            m_connection->release(action.key);
        else
            m_connection->press(action.key);
    }
    if (!actions.empty())
        m_connection->flush();
}

/// Lifts a key that the user holds from the keyboards that it is down on, or puts it back there.
void TapThread::performOnHardware(const KeyAction& action)
{
    if (action.motion == KeyMotion::release) {
        for (const KeyboardDevice& device : m_connection->keyboards().hardware) {
            if (!m_connection->keysDown(device.id).test(action.key))
                continue;
            m_connection->releaseOn(device.id, action.key);
            m_lifted.push_back({device.id, action.key});
        }
        return;
    }
    std::erase_if(m_lifted, [&](const Lifted& lifted) {
        if (lifted.key != action.key)
            return false;
        m_connection->pressOn(lifted.device, lifted.key);
        return true;
    });
}

void TapThread::log(LogLevel level, const std::string& sentence)
{
    m_log.write(level, QStringLiteral("net.lindenrow.orvane"), QStringLiteral("EventTap"),
                QString::fromStdString(sentence));
}

void TapThread::giveUp(Ending ending)
{
    m_reason = ending;
}

} // namespace orvane
