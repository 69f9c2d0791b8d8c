// The actions of the injector in their order: a list in a buffer of its own, since it is made anew for each
// event.
#pragma once

#include <array>
#include <cassert>
#include <cstddef>
#include <cstdint>

namespace orvane {

enum class KeyMotion : std::uint8_t { press, repeat, release };

/// The keyboard that a key is pressed on: the server's XTEST keyboard, or the user's own.
enum class KeySeat : std::uint8_t { xtest, hardware };

struct KeyAction {
    KeyMotion motion = KeyMotion::press;
    std::uint8_t key = 0;
    KeySeat seat = KeySeat::xtest;

    friend bool operator==(const KeyAction&, const KeyAction&) = default;
};

class KeyActions {
public:
    void append(KeyAction action)
    {
        assert(m_size < m_actions.size());
        m_actions[m_size++] = action;
    }
    [[nodiscard]] const KeyAction* begin() const { return m_actions.data(); }
    [[nodiscard]] const KeyAction* end() const { return m_actions.data() + m_size; }
    [[nodiscard]] std::size_t size() const { return m_size; }
    [[nodiscard]] bool empty() const { return m_size == 0; }

private:
    // At worst every key of the keyboard is released, and every modifier is pressed and released besides.
    std::array<KeyAction, 512> m_actions;
    std::size_t m_size = 0;
};

} // namespace orvane
