// Whose the events of the mouse are. While a button is held, all of them go to where the first press went,
// whatever window is under the pointer. Pure; one thread.
#pragma once

#include "PlatformLinux/EventMonitors/MouseButtons.h"

namespace orvane {

class PressLedger {
public:
    enum class Owner { ourselves, others };

    /// Takes over what is held already.
    void start(ButtonSet held, Owner owner)
    {
        m_held = held;
        m_owner = owner;
    }

    /// Each gives the type of the event, or null when it is one of ours or none. `ownerUnderPointer` is asked
    /// only when no button is held.
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
    /// Whether the next press or motion belongs to whatever is under the pointer.
    [[nodiscard]] bool dependsOnPlace() const { return m_held == 0; }
    /// What a motion would be told as; null in a drag of ours.
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
    /// Of the first of those held.
    Owner m_owner = Owner::others;
};

} // namespace orvane
