// Another client of the X server that looks at its keyboards and takes them too.
#pragma once

#include <QList>

#include <memory>

namespace orvane::tests {

class OtherClient {
public:
    OtherClient();
    ~OtherClient();
    OtherClient(const OtherClient&) = delete;
    OtherClient& operator=(const OtherClient&) = delete;

    /// Returns the keys that the server takes for pressed.
    QList<int> keysDown();
    QList<int> keysDown(const char* device);
    unsigned lockedModifiers();
    void lockModifiers(unsigned modifiers);

    static constexpr unsigned superModifier = 1 << 6, thirdLevelModifier = 1 << 7, anyModifiers = 1 << 15;

    struct RepeatRate {
        unsigned delay, interval;
        bool operator==(const RepeatRate&) const = default;
    };
    RepeatRate repeatRate();
    void setRepeatRate(RepeatRate rate);

    enum AccessKey : unsigned {
        slowKeys = 1 << 1,
        bounceKeys = 1 << 2,
        stickyKeys = 1 << 3,
        mouseKeys = 1 << 4
    };
    /// Switches these on and all others off, for the keyboard as a whole, as a desktop's settings do.
    void setAccessKeys(unsigned keys);
    /// Returns those that are on for one device.
    unsigned accessKeys(const char* device);
    /// True if some client has all keys to itself, as an open menu does.
    bool isKeyboardGrabbed();
    /// Takes all keys for itself until its end, as an open menu does. False when another client has them.
    bool grabKeyboard();
    /// Presses a key as programs do that type for the user, and leaves it down.
    void pressOnXtestKeyboard(int key);
    void releaseOnXtestKeyboard(int key);
    /// Listens for a key as a window manager does, with these modifiers in the server's bits.
    void grabKey(int key, unsigned modifiers = anyModifiers);
    /// Returns the keys that came by grabKey(): positive for a press.
    QList<int> grabbedKeys();

    /// Returns a device's number in the server. Throws std::runtime_error when there is none of this name.
    int idOf(const char* device);
    /// Takes a device for itself until the object's end. False when it is taken already.
    bool grabDevice(const char* device);
    void setDeviceEnabled(const char* device, bool enabled);
    bool isFloating(const char* device);
    /// Asks the window manager to give the focus to a window with this title, as a panel does. False when
    /// there is none.
    bool activate(const char* title);
    /// Ends the client that owns a child of the root by this name. False when there is none.
    bool killOwnerOf(const char* windowName);

private:
    bool isNamed(unsigned long window, const char* name);

    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace orvane::tests
