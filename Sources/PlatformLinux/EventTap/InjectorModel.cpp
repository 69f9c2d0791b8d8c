#include "PlatformLinux/EventTap/InjectorModel.h"

#include "PlatformLinux/Keys/EventKeyCodes.h"

namespace orvane {

void InjectorModel::setHeld(const KeySet& keys)
{
    m_held.set(keys);
    m_delivered = {};
    m_down = keys;
    m_injected.fill(0);
    forEachKey(keys, [this](std::uint8_t key) { m_injected[key] = key; });
}

void InjectorModel::addHeld(const KeySet& keys)
{
    const KeySet added = keys & ~held();
    m_held.set(held() | added);
    m_down |= added;
    forEachKey(added, [this](std::uint8_t key) { m_injected[key] = key; });
}

void InjectorModel::inject(const Passage& passage, CommandKeys command, KeyActions& actions)
{
    switch (passage.hardware.motion) {
    case KeyMotion::press:
        pressed(passage, command, actions);
        break;
    case KeyMotion::release:
        released(passage, actions);
        break;
    case KeyMotion::repeat:
        // A passed key repeats by itself on the XTEST keyboard.
        if (passage.isConsumed())
            stopRepeating(passage.hardware.key, actions);
        break;
    }
}

bool InjectorModel::goesAhead(HardwareKey hardware) const
{
    const std::uint8_t key = hardware.key;
    if (hardware.motion == KeyMotion::repeat || !roles().chordKeys().test(key) || m_delivered.acting())
        return false;
    return m_known.test(key) ? !m_changed.test(key) : roles().roleOf(key) != ModifierRole::command;
}

void InjectorModel::correct(const Passage& passage, CommandKeys command, KeyActions& actions)
{
    if (passage.isUnchanged())
        return;
    const std::uint8_t key = passage.hardware.key;
    if (passage.hardware.motion == KeyMotion::release) {
        if (!passage.isConsumed())
            m_delivered.noteModifier(passage.flags());
        bring(actingChord(), {}, actions);
        return;
    }
    if (passage.isConsumed() && m_lone == key)
        tapNeutralKey(actions); // its press is taken back, and that must not open a menu
    pressed(passage, command, actions);
    if (passage.isConsumed())
        bring(actingChord(), {}, actions);
}

void InjectorModel::pressed(const Passage& passage, CommandKeys command, KeyActions& actions)
{
    const std::uint8_t key = passage.hardware.key;
    m_known.set(key);
    m_changed.set(key, !passage.isUnchanged());
    if (passage.isConsumed()) {
        m_injected[key] = 0;
        if (roles().roleOf(key) == ModifierRole::capsLock)
            m_held.undoCapsLock();
        return;
    }
    std::uint8_t target = key;
    if (passage.answer.keycode != passage.observed.keycode)
        target = xKeyOfEvent(passage.answer.keycode).value_or(key);
    m_injected[key] = target;
    KeySet ownKeys;
    ownKeys.set(target);
    if (!roles().chordKeys().test(target)) {
        bring(chordAfter(passage, command), ownKeys, actions);
        press(target, actions);
        return;
    }
    m_delivered.noteModifier(passage.flags());
    const KeySet chord = chordAfter(passage, command);
    bring(chord, ownKeys | (chord & ~physicalChord()), actions);
}

void InjectorModel::released(const Passage& passage, KeyActions& actions)
{
    const std::uint8_t key = passage.hardware.key;
    const bool wasKnown = held().test(key);
    const std::uint8_t target = wasKnown ? m_injected[key] : key;
    m_held.forget(key);
    m_injected[key] = 0;
    if (target == 0)
        return;
    if (!wasKnown)
        m_down.set(key); // pressed before the devices were grabbed: the application that saw the press waits
                         // for the release
    if (roles().chordKeys().test(target)) {
        const bool isConsumed = passage.isConsumed();
        m_delivered.noteModifier(isConsumed ? DeliveredModifiers::Rewriting{} : passage.flags());
        bring(actingChord(), {}, actions);
        return;
    }
    // This holds even when a tap consumed the release: the press went through, and nothing may stay down.
    if (m_down.test(target) && !standsForAHeldKey(target))
        release(target, actions);
    endBorrowing(actions);
}

void InjectorModel::stopRepeating(std::uint8_t key, KeyActions& actions)
{
    const std::uint8_t target = m_injected[key];
    if (target == 0 || roles().chordKeys().test(target))
        return;
    m_injected[key] = 0;
    if (m_down.test(target) && !standsForAHeldKey(target))
        release(target, actions);
    endBorrowing(actions);
}

void InjectorModel::post(const Event& event, CommandKeys command, KeyActions& actions)
{
    const auto key = xKeyOfEvent(event.keycode);
    const EventFlags delivered = DeliveredModifiers::ofPosted(event.flags, command);
    if (event.type == EventType::flagsChanged) {
        bring(delivered == 0 ? actingChord() : chordFor(delivered, Borrowing::posted), {}, actions);
        return;
    }
    if (!key)
        return;
    if (event.type == EventType::keyDown) {
        bring(chordFor(delivered, Borrowing::posted), {}, actions);
        // The user may hold that very key: then its own release must do nothing any more.
        if (m_down.test(*key))
            release(*key, actions);
        forEachKey(held(), [&](std::uint8_t other) {
            if (m_injected[other] == *key)
                m_injected[other] = 0;
        });
        m_posted.set(*key);
        press(*key, actions);
    } else if (event.type == EventType::keyUp) {
        m_posted.reset(*key);
        if (m_down.test(*key))
            release(*key, actions);
        if (m_posted.none())
            bring(actingChord(), {}, actions);
    }
}

void InjectorModel::releaseAll(KeyActions& actions)
{
    if (m_devices == Devices::free) {
        forEachKey(m_posted, [&](std::uint8_t key) { release(key, actions); });
        m_posted.reset();
        bring(actingChord(), {}, actions);
    } else {
        forEachKey(m_down & ~roles().chordKeys(), [&](std::uint8_t key) { release(key, actions); });
        m_posted.reset();
        bring({}, {}, actions);
    }
    m_held.set({});
    m_delivered = {};
    m_down.reset();
    m_injected.fill(0);
}

KeySet InjectorModel::heldBack() const
{
    KeySet keys;
    forEachKey(held(), [&](std::uint8_t key) { keys.set(key, m_injected[key] == 0); });
    return keys;
}

/// Returns the modifiers that the user holds, without those that a tap kept back.
KeySet InjectorModel::physicalChord() const
{
    KeySet chord;
    forEachKey(held(), [&](std::uint8_t key) { chord.set(m_injected[key]); });
    return (chord | m_posted) & roles().chordKeys();
}

/// Returns the modifiers for which the held ones act: mostly themselves.
KeySet InjectorModel::actingChord() const
{
    const KeySet physical = physicalChord();
    const auto acting = m_delivered.acting();
    return acting && physical.any() ? chordFor(*acting, Borrowing::rewritten) : physical;
}

/// Returns the modifiers that the delivered flags of a rewritten or posted event ask for: for each role the
/// keys that are held anyway, or its representative.
KeySet InjectorModel::chordFor(EventFlags delivered, Borrowing borrowing) const
{
    const KeySet physical = physicalChord();
    constexpr ModifierRole chordRoles[] = {ModifierRole::shift, ModifierRole::control, ModifierRole::option,
                                           ModifierRole::command};

    KeySet chord = m_posted & roles().chordKeys();
    for (const ModifierRole role : chordRoles) {
        if ((delivered & flagOf(role)) == 0)
            continue;
        bool isHeld = false;
        forEachKey(physical, [&](std::uint8_t key) {
            if (roles().roleOf(key) == role)
                chord.set(key), isHeld = true;
        });
        if (const std::uint8_t key = roles().representative(role); !isHeld && key != 0)
            chord.set(key);
    }
    // The third level chooses a character: the user's own chord keeps it, a posted one must not have it.
    if (borrowing == Borrowing::rewritten) {
        forEachKey(physical, [&](std::uint8_t key) {
            if (roles().roleOf(key) == ModifierRole::levelThree)
                chord.set(key);
        });
    }
    return chord;
}

KeySet InjectorModel::chordAfter(const Passage& passage, CommandKeys command) const
{
    return passage.isRewritten() ? chordFor(m_delivered.of(passage.flags(), command), Borrowing::rewritten)
                                 : physicalChord();
}

/// Presses first and releases afterwards, so that a Super or an Alt that is released isn't a lone one, which
/// would open a menu. `ownKeys` are those that the user presses at this moment.
void InjectorModel::bring(const KeySet& chord, const KeySet& ownKeys, KeyActions& actions)
{
    const KeySet present = m_down & roles().chordKeys();
    const KeySet missing = chord & ~present;
    const KeySet surplus = present & ~chord;
    forEachKey(missing, [&](std::uint8_t key) { press(key, actions); });
    const KeySet users = physicalChord() | actingChord();
    if (m_lone != 0 && surplus.test(m_lone) && users.test(m_lone))
        tapNeutralKey(actions);
    forEachKey(surplus, [&](std::uint8_t key) { release(key, actions); });
    const bool putsBack = m_lone != 0 && missing.test(m_lone) && users.test(m_lone);
    if (putsBack && !ownKeys.test(m_lone) && surplus.none())
        tapNeutralKey(actions);
}

/// Modifiers without a modifier of the user's behind them end with the key that they were pressed for.
void InjectorModel::endBorrowing(KeyActions& actions)
{
    if (m_posted.none() && physicalChord().none())
        bring({}, {}, actions);
}

void InjectorModel::tapNeutralKey(KeyActions& actions)
{
    for (const ModifierRole role : {ModifierRole::control, ModifierRole::shift}) {
        const std::uint8_t key = roles().representative(role);
        if (key == 0 || m_down.test(key))
            continue;
        press(key, actions);
        release(key, actions);
        return;
    }
}

void InjectorModel::press(std::uint8_t key, KeyActions& actions)
{
    const ModifierRole role = roles().roleOf(key);
    m_lone = role == ModifierRole::command || role == ModifierRole::option ? key : std::uint8_t{0};
    if (m_down.test(key))
        release(key, actions);
    m_down.set(key);
    actions.append({KeyMotion::press, key, seatOf(key)});
}

void InjectorModel::release(std::uint8_t key, KeyActions& actions)
{
    m_down.reset(key);
    actions.append({KeyMotion::release, key, seatOf(key)});
}

KeySeat InjectorModel::seatOf(std::uint8_t key) const
{
    const bool isOnHardware = m_devices == Devices::free && held().test(key) && m_injected[key] == key;
    return isOnHardware ? KeySeat::hardware : KeySeat::xtest;
}

bool InjectorModel::standsForAHeldKey(std::uint8_t key) const
{
    bool stands = false;
    forEachKey(held(), [&](std::uint8_t other) { stands = stands || m_injected[other] == key; });
    return stands;
}

} // namespace orvane
