#include "PlatformLinux/EventTap/KeyInjector.h"

#include "PlatformLinux/Common/Uptime.h"
#include "PlatformLinux/EventTap/AccessKeys.h"
#include "PlatformLinux/X11/XkbProtocol.h"

#include <utility>

namespace orvane {

namespace {

constexpr std::uint8_t allModifiers = 0xFF;

/// Returns the server's modifier that all layouts of PC keyboards give to a role.
std::uint8_t usualModifier(ModifierRole role)
{
    switch (role) {
    case ModifierRole::shift:
        return XCB_MOD_MASK_SHIFT;
    case ModifierRole::control:
        return XCB_MOD_MASK_CONTROL;
    case ModifierRole::option:
        return XCB_MOD_MASK_1;
    case ModifierRole::command:
        return XCB_MOD_MASK_4;
    default:
        return 0;
    }
}

} // namespace

KeyInjector::KeyInjector(const Parts& parts, InjectorModel::Devices devices)
    : m_connection(parts.connection),
      m_mailbox(parts.mailbox),
      m_mask(parts.mask),
      m_commandKeys(parts.commandKeys),
      m_devices(devices),
      m_model(devices),
      m_lifted(parts.connection, &parts.faked)
{
    followLayout();
}

void KeyInjector::begin(const KeySet& downAtFirst)
{
    m_model.setHeld(downAtFirst);
    followCapsLock();
}

void KeyInjector::take(HardwareKey key)
{
    awaitAnswer();
    m_passage.hardware = key;
    m_passage.observed = m_model.observe(key, uptimeNanoseconds());
    m_wentAhead = false;
    if (m_asksMain && isWanted(m_passage.observed)) {
        if (m_model.goesAhead(key))
            goAhead();
        m_isAwaited = true;
        m_mailbox.offer(m_passage.observed, patience);
        return;
    }
    if (!m_asksMain && isWanted(m_passage.observed))
        m_unseen.push_back(m_passage.observed);
    inject(m_passage.observed, EventTapDecision::pass);
    afterCapsLock();
}

void KeyInjector::awaitAnswer()
{
    if (!std::exchange(m_isAwaited, false))
        return;
    const auto outcome = m_mailbox.awaitAnswer();
    if (!m_mailbox.wasTaken())
        m_unseen.push_back(m_passage.observed);
    afterCapsLock();
    if (outcome == TapMailbox::Outcome::timedOut) {
        m_isLate = true;
        askNobody();
    }
}

void KeyInjector::goAhead()
{
    inject(m_passage.observed, EventTapDecision::pass);
    m_wentAhead = true;
}

void KeyInjector::inject(const Event& answer, EventTapDecision decision)
{
    m_passage.answer = answer;
    m_passage.decision = decision;
    KeyActions actions;
    if (m_wentAhead)
        m_model.correct(m_passage, m_commandKeys(), actions);
    else
        m_model.inject(m_passage, m_commandKeys(), actions);
    perform(actions);
}

/// Only the server knows the state of Caps Lock after an injection.
void KeyInjector::afterCapsLock()
{
    if (m_model.roles().roleOf(m_passage.hardware.key) == ModifierRole::capsLock)
        followCapsLock();
}

void KeyInjector::post(const Event& event)
{
    awaitAnswer();
    if (m_devices == InjectorModel::Devices::free && !m_model.hasPostedKeysDown()) {
        KeySet held;
        for (const KeyboardDevice& device : m_connection.keyboards().hardware)
            held |= m_connection.keysDown(device.id);
        m_model.setHeld(held);
    }
    KeyActions actions;
    m_model.post(event, m_commandKeys(), actions);
    perform(actions);
}

KeyInjector::Held KeyInjector::releaseAll()
{
    Held held;
    held.heldBack = m_model.heldBack();
    held.modifiers = m_model.held() & m_model.roles().chordKeys() & ~held.heldBack;
    KeyActions actions;
    m_model.releaseAll(actions);
    perform(actions);
    return held;
}

void KeyInjector::followLayout()
{
    m_model.setRoles(m_connection.modifierRoles());
    m_filtersPresses = AccessKeys::of(m_connection, XCB_XKB_ID_USE_CORE_KBD).filterPresses();
}

void KeyInjector::setLatched(std::uint8_t modifiers)
{
    EventFlags flags = 0;
    for (const ModifierRole role :
         {ModifierRole::shift, ModifierRole::control, ModifierRole::option, ModifierRole::command}) {
        if ((modifiers & usualModifier(role)) != 0)
            flags |= flagOf(role);
    }
    m_model.setLatched(flags);
}

void KeyInjector::perform(const KeyActions& actions)
{
    for (const KeyAction& action : actions)
        perform(action);
    if (!actions.empty())
        m_connection.link().flush();
}

/// Slow Keys drop a modifier that is pressed an instant before its key, and Bounce Keys one that was down
/// just before. What the user presses must pass these; what this program adds is locked instead of pressed.
/// Returns true if the action is done that way.
bool KeyInjector::isLocked(const KeyAction& action)
{
    const std::uint8_t modifier = usualModifier(m_model.roles().roleOf(action.key));
    if (modifier == 0)
        return false;
    const bool goesUp = action.motion == KeyMotion::release;
    const bool isOwn = action.key == m_passage.hardware.key;
    if (goesUp ? !m_locked.test(action.key) : !m_filtersPresses || isOwn)
        return false;
    m_locked.set(action.key, !goesUp);
    xcb_xkb_latch_lock_state(m_connection.link().xcb(), XCB_XKB_ID_USE_CORE_KBD, modifier,
                             goesUp ? std::uint8_t{0} : modifier, 0, 0, 0, 0, 0);
    return true;
}

void KeyInjector::perform(const KeyAction& action)
{
    if (action.seat == KeySeat::hardware && action.motion == KeyMotion::release)
        m_lifted.lift(action.key);
    else if (action.seat == KeySeat::hardware)
        m_lifted.putBack(action.key);
    else if (isLocked(action))
        return;
    else if (action.motion == KeyMotion::release)
        m_connection.release(action.key);
    else
        press(action.key);
}

void KeyInjector::press(std::uint8_t key)
{
    // Sticky Keys add a modifier that the user has let go of, or that the rewriting took away just now. A
    // rewritten key has the modifiers that it asks for.
    if (m_passage.isRewritten() && m_passage.hardware.key == key)
        xcb_xkb_latch_lock_state(m_connection.link().xcb(), XCB_XKB_ID_USE_CORE_KBD, 0, 0, 0, 0, allModifiers,
                                 0, 0);
    m_connection.press(key);
}

} // namespace orvane
