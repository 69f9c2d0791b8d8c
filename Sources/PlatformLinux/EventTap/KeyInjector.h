// Leads each key from the user's keyboards to the XTEST keyboard: observes what event it is, offers it to the
// main thread, awaits the answer, and injects what comes out. Used by the tap's thread; the injection itself
// happens on whichever thread has the answer. Docs/Architecture.md names the steps.
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
    /// How long the main thread may let an event wait.
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

    /// What the applications are to believe at first: round trips.
    void begin(const KeySet& downAtFirst);
    /// Observes a motion and offers it, or injects it at once when nobody is to be asked.
    void take(HardwareKey key);
    /// Returns when the key that was offered has been injected: before whatever else uses what is here.
    void awaitAnswer();
    [[nodiscard]] bool isAwaited() const { return m_isAwaited; }
    /// Whether the main thread has let a key wait for too long. From then on it is asked no more.
    [[nodiscard]] bool isLate() const { return m_isLate; }
    /// From now on keys are injected as they are, and nobody is asked.
    void askNobody() { m_asksMain = false; }
    /// On the thread that has the answer, called by the mailbox.
    void inject(const Event& answer, EventTapDecision decision);

    /// Presses what was posted, after the key before it.
    void post(const Event& event);
    void pointerPressed() { m_model.pointerPressed(); }
    /// The layout has changed: round trip.
    void followLayout() { m_model.setRoles(m_connection.modifierRoles()); }
    /// Caps Lock has changed: round trip.
    void followCapsLock() { m_model.setCapsLocked(m_connection.capsIsLocked()); }
    /// An event of the connection that tells what became of a lifted key.
    void noteRaw(const xcb_generic_event_t& event) { (void)m_lifted.take(event); }

    /// The keys that the user holds and for which the applications count on the XTEST keyboard.
    struct Held {
        KeySet modifiers;
        KeySet heldBack; // no application has seen these
    };
    /// Lets go of all that was pressed; gives what the user still holds.
    Held releaseAll();
    /// The events that were offered to nobody, or taken by nobody, though they are of the mask; in order.
    std::vector<Event> takeUnseen() { return std::move(m_unseen); }

private:
    [[nodiscard]] bool isWanted(const Event& event) const
    {
        return (m_mask.load() & eventMaskBit(event.type)) != 0;
    }
    void afterCapsLock();
    void perform(const KeyActions& actions);

    InputConnection& m_connection;
    TapMailbox& m_mailbox;
    const std::atomic<EventMask>& m_mask;
    const std::function<CommandKeys()>& m_commandKeys;
    const InjectorModel::Devices m_devices;
    InjectorModel m_model;
    LiftedKeys m_lifted;
    /// The key that is on its way.
    InjectorModel::Passage m_passage;
    bool m_isAwaited = false;
    bool m_asksMain = true;
    bool m_isLate = false;
    std::vector<Event> m_unseen;
};

} // namespace orvane
