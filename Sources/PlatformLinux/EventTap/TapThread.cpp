#include "PlatformLinux/EventTap/TapThread.h"

#include "PlatformLinux/X11/XkbProtocol.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <string>
#include <utility>

#include <poll.h>

namespace orvane {

namespace {

using namespace std::chrono_literals;

/// How long the main thread may let an event wait.
constexpr auto patience = 1s;
/// How long the X server may take to let the tap in.
constexpr auto longestOpening = 2s;

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
    sigset_t all = {};
    sigset_t before = {};
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
    auto opened = InputConnection::open(within(longestOpening));
    if (!opened.connection) {
        log(LogLevel::error, "Keyboard events can't be reached: " + opened.problem + ".");
        return false;
    }
    m_connection = std::move(opened.connection);
    m_lifted = std::make_unique<LiftedKeys>(*m_connection);
    m_model.setRoles(m_connection->modifierRoles());
    return m_purpose == Purpose::posting || grabKeyboards();
}

bool TapThread::grabKeyboards()
{
    m_guardian = std::make_unique<TapGuardian>(
        *m_connection, m_guardianProgram,
        [this](LogLevel level, const std::string& sentence) { log(level, sentence); });
    watchKeyboardSettings();
    watchButtons();
    m_keyboards = std::make_unique<GrabbedKeyboards>(*m_connection);
    for (const std::string& problem : m_keyboards->grab())
        log(LogLevel::notice, problem);
    if (m_keyboards->isEmpty()) {
        log(LogLevel::error, "Keyboard events can't be tapped: no keyboard could be grabbed.");
        return false;
    }
    m_guardian->noteKeyboards(*m_keyboards);
    m_model.setHeld(m_keyboards->downAtFirst());
    m_model.setCapsLocked(m_connection->capsIsLocked());
    m_guardian->start();
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
            noticeLoss();
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
    // An answer wakes nobody here, so this looks once whether there was one in time.
    const int limit = m_isUnsettled ? static_cast<int>(std::chrono::milliseconds(patience).count()) : -1;
    if (::poll(waits, std::size(waits), limit) == 0)
        settle();
    if (waits[1].revents != 0)
        m_wake.clear();
    if (m_guardian)
        m_guardian->watch(waits[2].revents);
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
    settle();
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
    if (m_connection->isLost() && m_reason == Ending::none)
        noticeLoss(); // a dying server closes one connection after the other, and the main thread knew first
    m_guardian.reset();
    m_keyboards.reset();
    m_lifted.reset();
    m_connection.reset();
}

/// False when there was none.
bool TapThread::handleNextEvent()
{
    const auto event = m_connection->nextEvent();
    if (!event)
        return false;
    const std::uint8_t type = event->response_type & 0x7F;
    const bool isInput = type == XCB_GE_GENERIC &&
                         as<xcb_ge_generic_event_t>(*event).extension == m_connection->xinputOpcode();
    // Before anything is waited for.
    if (isInput && m_guardian)
        m_guardian->noteTaken(as<xcb_ge_generic_event_t>(*event));
    settle();
    if (isInput) {
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
        case XCB_INPUT_RAW_KEY_PRESS:
        case XCB_INPUT_RAW_KEY_RELEASE:
            m_lifted->take(*event);
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
    settle();
    m_passing = {key, m_model.observe(key, uptimeNanoseconds())};
    if (m_asksMain && (m_mask.load() & eventMaskBit(m_passing.event.type)) != 0) {
        m_isUnsettled = true;
        m_mailbox.offer(m_passing.event, patience);
        return;
    }
    deliver(m_passing.event);
    followCapsLock();
}

void TapThread::settle()
{
    if (!std::exchange(m_isUnsettled, false))
        return;
    if (m_mailbox.settle() == TapMailbox::Outcome::timedOut)
        timeOut();
    followCapsLock();
}

/// On either thread; the other one waits.
void TapThread::deliver(const std::optional<Event>& answer)
{
    KeyActions actions;
    m_model.deliver(m_passing.key, m_passing.event, answer, m_commandKeys(), actions);
    perform(actions);
}

/// After a key was delivered: what Caps Lock has become, only the server knows.
void TapThread::followCapsLock()
{
    if (m_model.roles().roleOf(m_passing.key.key) == ModifierRole::capsLock)
        m_model.setCapsLocked(m_connection->capsIsLocked());
}

void TapThread::handleHierarchy(const xcb_input_hierarchy_event_t& event)
{
    if (!m_keyboards)
        return;
    const auto changed = m_keyboards->hierarchyChanged(event);
    m_guardian->noteKeyboards(*m_keyboards);
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
    if (!m_postsAtHand.empty())
        settle();
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

void TapThread::perform(const KeyActions& actions)
{
    for (const KeyAction& action : actions) {
        if (action.seat == KeySeat::hardware && action.motion == KeyMotion::release)
            m_lifted->lift(action.key);
        else if (action.seat == KeySeat::hardware)
            m_lifted->putBack(action.key);
        else if (action.motion == KeyMotion::release)
            m_connection->release(action.key);
        else
            m_connection->press(action.key);
    }
    if (!actions.empty())
        m_connection->flush();
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

void TapThread::noticeLoss()
{
    if (m_guardian && m_guardian->hasFreed()) {
        timeOut();
        return;
    }
    log(LogLevel::error, "The X server is gone; keyboard events can't be tapped any more.");
    giveUp(Ending::serverLost);
}

void TapThread::timeOut()
{
    if (m_guardian && m_guardian->hasFreed())
        log(LogLevel::notice,
            "The program stood still while keys were typed, so its guardian has disabled the "
            "event tap and freed the keyboards.");
    else
        log(LogLevel::notice, "A key event waited for more than a second for the main thread, so the event "
                              "tap was disabled and the keyboards are free.");
    giveUp(Ending::timedOut);
    m_asksMain = false; // nor does any other event wait any more
}

} // namespace orvane
