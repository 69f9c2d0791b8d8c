// Keys, buttons and motion from the private desktop's hardware: its two slave devices, not the XTEST ones, so
// a program sees what a person's keyboard and mouse would send. When an operation returns it has reached the
// server; keys that are still held at the object's end are released.
#pragma once

#include <QPoint>
#include <QString>

#include <cstdint>
#include <memory>

namespace orvane::tests {

enum class Button { left = 1, middle = 2, right = 3, wheelUp = 4, wheelDown = 5 };

class Hardware {
public:
    /// An X key code, which is evdev's code plus 8.
    using KeyCode = std::uint8_t;

    /// Opens the devices by their names. Throws std::runtime_error when there is no display or no such
    /// device.
    explicit Hardware(const char* keyboard = "testkbd", const char* pointer = "testptr");
    ~Hardware();
    Hardware(const Hardware&) = delete;
    Hardware& operator=(const Hardware&) = delete;

    /// Returns the key that carries a keysym by its name ("a", "Escape", "Super_L") on the present layout.
    /// Throws std::runtime_error when no key does.
    [[nodiscard]] KeyCode key(const char* keysymName) const;

    void press(KeyCode key);
    void release(KeyCode key);
    void tap(KeyCode key);
    void press(const char* keysymName) { press(key(keysymName)); }
    void release(const char* keysymName) { release(key(keysymName)); }
    void tap(const char* keysymName) { tap(key(keysymName)); }

    /// Moves to a place in the root window.
    void movePointer(QPoint place);
    void press(Button button);
    void release(Button button);
    void click(Button button);
    void click(QPoint place, Button button = Button::left);

private:
    struct Devices;
    std::unique_ptr<Devices> m_devices;
};

} // namespace orvane::tests
