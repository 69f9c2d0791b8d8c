#include "PlatformLinux/EventTap/KeyInjector.h"

#include "PlatformLinux/Common/Uptime.h"

#include <utility>

namespace orvane {

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

void KeyInjector::perform(const KeyActions& actions)
{
    for (const KeyAction& action : actions) {
        if (action.seat == KeySeat::hardware && action.motion == KeyMotion::release)
            m_lifted.lift(action.key);
        else if (action.seat == KeySeat::hardware)
            m_lifted.putBack(action.key);
        else if (action.motion == KeyMotion::release)
            m_connection.release(action.key);
        else
            m_connection.press(action.key);
    }
    if (!actions.empty())
        m_connection.link().flush();
}

} // namespace orvane
