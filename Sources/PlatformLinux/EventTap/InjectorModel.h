// Decides what is pressed on the XTEST keyboard: the keys of events that may go on, with the modifiers that
// the event asks for. Knows what the user holds and what the applications see as held, and makes sure that a
// key that went down for them comes up. Pure; one thread at a time. Docs/decisions/0004-event-tap.md explains
// its choices.
#pragma once

#include "Platform/EventTaps.h"
#include "PlatformLinux/Applications/CommandConvention.h"
#include "PlatformLinux/EventTap/HeldKeys.h"
#include "PlatformLinux/Keys/DeliveredModifiers.h"
#include "PlatformLinux/X11/KeyActions.h"

#include <array>

namespace orvane {

class InjectorModel {
public:
    enum class Devices { grabbed, free };

    /// For grabbed devices it is told of every motion. For free ones it only knows what setHeld() said, and
    /// keys that it lifts there it lifts on the hardware's own seat.
    explicit InjectorModel(Devices devices) : m_devices(devices) {}

    void setRoles(const ModifierRoles& roles) { m_held.setRoles(roles); }
    [[nodiscard]] const ModifierRoles& roles() const { return m_held.roles(); }
    /// Sets the server's state of Caps Lock, which overrides the model's.
    void setCapsLocked(bool locked) { m_held.setCapsLocked(locked); }
    /// Sets the flags of the modifiers that Sticky Keys add to the next key.
    void setLatched(EventFlags flags) { m_held.setLatched(flags); }
    /// Sets the keys that the user holds and the applications know of, at the beginning or between posted
    /// chords.
    void setHeld(const KeySet& keys);
    /// Adds such keys, for a keyboard that joins later.
    void addHeld(const KeySet& keys);

    /// An event on its way through the taps: as it was observed, as it came out, and what they decided.
    struct Passage {
        HardwareKey hardware;
        Event observed;
        Event answer;
        EventTapDecision decision = EventTapDecision::pass;

        [[nodiscard]] bool isUnchanged() const
        {
            return !isConsumed() && !isRewritten() && observed.keycode == answer.keycode;
        }
        [[nodiscard]] bool isConsumed() const { return decision == EventTapDecision::consume; }
        [[nodiscard]] bool isRewritten() const { return !isConsumed() && flags().changesChord(); }
        [[nodiscard]] DeliveredModifiers::Rewriting flags() const { return {observed.flags, answer.flags}; }
    };

    /// Takes a motion in and returns it as an event.
    Event observe(HardwareKey hardware, std::uint64_t timestamp)
    {
        return m_held.observe(hardware, timestamp);
    }
    /// Adds what has to be pressed when an event has passed the taps.
    void inject(const Passage& passage, CommandKeys command, KeyActions& actions);
    /// True if a motion may be injected as it is before the taps are asked: that of a modifier whose last
    /// press they left as it was, or whose first one it is. Super waits for its first answer, for window
    /// managers act on it alone.
    [[nodiscard]] bool goesAhead(HardwareKey hardware) const;
    /// To be called in the place of inject() with the answer for a motion that went ahead.
    void correct(const Passage& passage, CommandKeys command, KeyActions& actions);
    void post(const Event& event, CommandKeys command, KeyActions& actions);
    /// Releases everything that was pressed; afterwards nothing is held.
    void releaseAll(KeyActions& actions);

    /// Returns the modifiers that the user holds, and the state of Caps Lock.
    [[nodiscard]] EventFlags flags() const { return m_held.flags(); }
    [[nodiscard]] bool hasPostedKeysDown() const { return m_posted.any(); }
    /// The keys that the user holds, and those of them that no application has seen.
    [[nodiscard]] const KeySet& held() const { return m_held.keys(); }
    [[nodiscard]] KeySet heldBack() const;

private:
    enum class Borrowing { rewritten, posted };

    void pressed(const Passage& passage, CommandKeys command, KeyActions& actions);
    void released(const Passage& passage, KeyActions& actions);
    void stopRepeating(std::uint8_t key, KeyActions& actions);

    [[nodiscard]] KeySet physicalChord() const;
    [[nodiscard]] KeySet actingChord() const;
    [[nodiscard]] KeySet chordFor(EventFlags delivered, Borrowing borrowing) const;
    [[nodiscard]] KeySet chordAfter(const Passage& passage, CommandKeys command) const;
    void bring(const KeySet& chord, const KeySet& ownKeys, KeyActions& actions);
    void endBorrowing(KeyActions& actions);
    void tapNeutralKey(KeyActions& actions);

    void press(std::uint8_t key, KeyActions& actions);
    void release(std::uint8_t key, KeyActions& actions);
    [[nodiscard]] KeySeat seatOf(std::uint8_t key) const;
    [[nodiscard]] bool standsForAHeldKey(std::uint8_t key) const;

    Devices m_devices;
    HeldKeys m_held;
    DeliveredModifiers m_delivered;
    /// For a held key the key that went to the applications in its place, mostly itself; 0 for none.
    std::array<std::uint8_t, 256> m_injected{};
    /// The keys whose last press the taps have seen, and those among them that they changed or removed.
    KeySet m_known;
    KeySet m_changed;
    KeySet m_posted;
    /// The keys that the applications see as down.
    KeySet m_down;
    /// The Super or Alt key after whose press no other has been pressed; its release would open a menu.
    std::uint8_t m_lone = 0;
};

} // namespace orvane
