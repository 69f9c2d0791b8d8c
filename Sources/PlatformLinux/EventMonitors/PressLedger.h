// Decides who gets the events of the mouse. While a button is held, all of them go to the owner of the first
// press, whatever window is under the pointer. Pure; one thread.
#pragma once

#include "PlatformLinux/EventMonitors/MouseButtons.h"

namespace orvane {

class PressLedger {
public:
    enum class Owner { ourselves, others };

    /// Takes over the buttons that are held already.
    void start(ButtonSet held, Owner owner)
    {
        m_held = held;
        m_owner = owner;
    }

    /// Each returns the type of the event, or null when it is one of ours or none. `ownerUnderPointer` is
    /// called only when no button is held.
    template <typename OwnerUnderPointer>
    EventType press(std::uint32_t button, OwnerUnderPointer ownerUnderPointer)
    {
        const Owner owner = m_held ? m_owner : ownerUnderPointer();
        if (!isWheel(button)) {
            m_owner = owner;
            m_held |= buttonBit(button);
        }
        return of(owner, typeOfButton(button, true));
    }

    EventType release(std::uint32_t button)
    {
        const ButtonSet bit = buttonBit(button);
        if (isWheel(button) || (m_held & bit) == 0)
            return EventType::null;
        m_held &= ~bit;
        return of(m_owner, typeOfButton(button, false));
    }

    template <typename OwnerUnderPointer>
    [[nodiscard]] EventType motion(OwnerUnderPointer ownerUnderPointer) const
    {
        return of(m_held ? m_owner : ownerUnderPointer(), typeOfMotion(m_held));
    }

    [[nodiscard]] ButtonSet held() const { return m_held; }
    /// True if the next press or motion belongs to the window under the pointer.
    [[nodiscard]] bool dependsOnPlace() const { return m_held == 0; }
    /// Returns the type that a motion would have; null in a drag of ours.
    [[nodiscard]] EventType motionToExpect() const
    {
        return m_held ? of(m_owner, typeOfMotion(m_held)) : EventType::mouseMoved;
    }

private:
    static EventType of(Owner owner, EventType type)
    {
        return owner == Owner::others ? type : EventType::null;
    }

    ButtonSet m_held = 0;
    /// The owner of the first button that is held.
    Owner m_owner = Owner::others;
};

} // namespace orvane
