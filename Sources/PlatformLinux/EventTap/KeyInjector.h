// Leads each key from the user's keyboards to the XTEST keyboard: observes which event it is, offers it to
// the main thread, awaits the answer, and injects the result. Used by the tap's thread; the injection itself
// happens on the thread that has the answer. Docs/Architecture.md names the steps.
#pragma once

#include "PlatformLinux/EventTap/FakedMotions.h"
#include "PlatformLinux/EventTap/InjectorModel.h"
#include "PlatformLinux/EventTap/LiftedKeys.h"
#include "PlatformLinux/EventTap/TapMailbox.h"
#include "PlatformLinux/X11/InputConnection.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <vector>

namespace orvane {

class KeyInjector {
public:
    /// The time that the main thread may take for an event.
    static constexpr std::chrono::seconds patience{1};

    struct Parts {
        InputConnection& connection;
        TapMailbox& mailbox;
        FakedMotions& faked;
        /// Events of other types pass without being offered.
        const std::atomic<EventMask>& mask;
        const std::function<CommandKeys()>& commandKeys;
    };
    KeyInjector(const Parts& parts, InjectorModel::Devices devices);

    /// Sets the keys that the applications see as down at first. Round trips.
    void begin(const KeySet& downAtFirst);
    /// Adds keys that were pressed on a keyboard before it was grabbed.
    void addHeld(const KeySet& keys) { m_model.addHeld(keys); }
    /// Observes a motion and offers it, or injects it at once when the main thread isn't asked. A modifier's
    /// motion that is expected to pass is injected and offered: a click doesn't wait for the main thread.
    void take(HardwareKey key);
    /// Returns when the offered key has been injected: to be called before anything else uses this object's
    /// state.
    void awaitAnswer();
    [[nodiscard]] bool isAwaited() const { return m_isAwaited; }
    /// True if the main thread has let a key wait for too long. It isn't asked any more then.
    [[nodiscard]] bool isLate() const { return m_isLate; }
    /// From now on keys are injected as they are, without asking.
    void askNobody() { m_asksMain = false; }
    /// Called by the mailbox, on the thread that has the answer.
    void inject(const Event& answer, EventTapDecision decision);

    /// Presses a posted event, after the key before it.
    void post(const Event& event);
    /// To be called when the layout or the controls have changed. Round trips.
    void followLayout();
    /// Sets the server's modifiers that Sticky Keys add to the next key.
    void setLatched(std::uint8_t modifiers);
    /// To be called when Caps Lock has changed. Round trip.
    void followCapsLock() { m_model.setCapsLocked(m_connection.capsIsLocked()); }
    /// Takes an event of the connection that concerns a lifted key.
    void noteRaw(const xcb_generic_event_t& event) { (void)m_lifted.take(event); }

    /// The keys that the user holds, whose state for the applications is that of the XTEST keyboard.
    struct Held {
        KeySet modifiers;
        KeySet heldBack; // no application has seen these
    };
    /// Releases everything that was pressed; returns what the user still holds.
    Held releaseAll();
    /// Returns in order the events of the mask that were not offered, or offered and not taken.
    std::vector<Event> takeUnseen() { return std::move(m_unseen); }

private:
    [[nodiscard]] bool isWanted(const Event& event) const
    {
        return (m_mask.load() & eventMaskBit(event.type)) != 0;
    }
    void goAhead();
    void afterCapsLock();
    void perform(const KeyActions& actions);
    void perform(const KeyAction& action);
    void press(std::uint8_t key);
    [[nodiscard]] bool isLocked(const KeyAction& action);

    InputConnection& m_connection;
    TapMailbox& m_mailbox;
    const std::atomic<EventMask>& m_mask;
    const std::function<CommandKeys()>& m_commandKeys;
    const InjectorModel::Devices m_devices;
    InjectorModel m_model;
    LiftedKeys m_lifted;
    /// True if the server drops keys that are pressed for an instant.
    bool m_filtersPresses = false;
    /// The modifiers that are on without a key, because such a key would be dropped.
    KeySet m_locked;
    /// The key that is on its way.
    InjectorModel::Passage m_passage;
    /// True if it was injected before the taps were asked.
    bool m_wentAhead = false;
    bool m_isAwaited = false;
    bool m_asksMain = true;
    bool m_isLate = false;
    std::vector<Event> m_unseen;
};

} // namespace orvane
