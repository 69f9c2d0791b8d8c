#include "Desktop/Support/Hardware.h"

#include <QList>

#include <stdexcept>
#include <string>
#include <string_view>

#include <X11/Xlib.h>
#include <X11/extensions/XInput.h>
#include <X11/extensions/XTest.h>

namespace orvane::tests {

namespace {

XDevice* openDevice(Display* display, std::string_view name)
{
    int count = 0;
    XDeviceInfo* devices = XListInputDevices(display, &count);
    XDevice* opened = nullptr;
    for (int i = 0; i < count && !opened; ++i) {
        if (devices[i].name == name)
            opened = XOpenDevice(display, devices[i].id);
    }
    XFreeDeviceList(devices);
    if (!opened)
        throw std::runtime_error("This display has no device \"" + std::string(name) +
                                 "\"; start a desktop with Tools/desktop/session");
    return opened;
}

} // namespace

struct Hardware::Devices {
    struct Closer {
        void operator()(Display* display) const { XCloseDisplay(display); }
    };
    std::unique_ptr<Display, Closer> display{XOpenDisplay(nullptr)};
    XDevice* keyboard = nullptr;
    XDevice* pointer = nullptr;
    QList<KeyCode> heldKeys;
    QList<Button> heldButtons;

    Devices() = default;
    Devices(const Devices&) = delete;
    Devices& operator=(const Devices&) = delete;
    ~Devices()
    {
        if (keyboard)
            XCloseDevice(display.get(), keyboard);
        if (pointer)
            XCloseDevice(display.get(), pointer);
    }

    void sendKey(KeyCode key, Bool down)
    {
        XTestFakeDeviceKeyEvent(display.get(), keyboard, key, down, nullptr, 0, CurrentTime);
        XSync(display.get(), False);
    }

    void sendButton(Button button, Bool down)
    {
        XTestFakeDeviceButtonEvent(display.get(), pointer, static_cast<unsigned>(button), down, nullptr, 0,
                                   CurrentTime);
        XSync(display.get(), False);
    }
};

Hardware::Hardware(const char* keyboard, const char* pointer) : m_devices(std::make_unique<Devices>())
{
    Display* display = m_devices->display.get();
    if (!display)
        throw std::runtime_error("There is no X display to open");
    m_devices->keyboard = openDevice(display, keyboard);
    m_devices->pointer = openDevice(display, pointer);
}

Hardware::~Hardware()
{
    while (!m_devices->heldKeys.isEmpty())
        release(m_devices->heldKeys.last());
    while (!m_devices->heldButtons.isEmpty())
        release(m_devices->heldButtons.last());
}

Hardware::KeyCode Hardware::key(const char* keysymName) const
{
    const KeySym keysym = XStringToKeysym(keysymName);
    const KeyCode code = keysym == NoSymbol ? 0 : XKeysymToKeycode(m_devices->display.get(), keysym);
    if (code == 0)
        throw std::runtime_error("No key carries \"" + std::string(keysymName) + "\"");
    return code;
}

void Hardware::press(KeyCode key)
{
    m_devices->sendKey(key, True);
    m_devices->heldKeys.append(key);
}

void Hardware::release(KeyCode key)
{
    m_devices->sendKey(key, False);
    m_devices->heldKeys.removeAll(key);
}

void Hardware::tap(KeyCode key)
{
    press(key);
    release(key);
}

void Hardware::movePointer(QPoint place)
{
    int axes[] = {place.x(), place.y()};
    XTestFakeDeviceMotionEvent(m_devices->display.get(), m_devices->pointer, False, 0, axes, 2, CurrentTime);
    XSync(m_devices->display.get(), False);
}

void Hardware::press(Button button)
{
    m_devices->sendButton(button, True);
    m_devices->heldButtons.append(button);
}

void Hardware::release(Button button)
{
    m_devices->sendButton(button, False);
    m_devices->heldButtons.removeAll(button);
}

void Hardware::click(Button button)
{
    press(button);
    release(button);
}

void Hardware::click(QPoint place, Button button)
{
    movePointer(place);
    click(button);
}

} // namespace orvane::tests
