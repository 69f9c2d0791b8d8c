#include "Desktop/Support/OtherClient.h"

#include <QByteArray>

#include <stdexcept>
#include <string>

#include <X11/XKBlib.h>
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XInput.h>
#include <X11/extensions/XInput2.h>
#include <X11/extensions/XTest.h>

namespace orvane::tests {

struct OtherClient::State {
    Display* display = XOpenDisplay(nullptr);
    QList<int> grabbedKeys;
};

namespace {

QList<int> keysIn(const char (&map)[32])
{
    QList<int> keys;
    for (int key = 0; key < 256; ++key) {
        if (map[key / 8] >> (key % 8) & 1)
            keys.append(key);
    }
    return keys;
}

} // namespace

OtherClient::OtherClient() : m_state(std::make_unique<State>())
{
    if (!m_state->display)
        throw std::runtime_error("There is no X display to open");
    int major = 2, minor = 2;
    XIQueryVersion(m_state->display, &major, &minor);
}

OtherClient::~OtherClient()
{
    XCloseDisplay(m_state->display);
}

QList<int> OtherClient::keysDown()
{
    char map[32];
    XQueryKeymap(m_state->display, map);
    return keysIn(map);
}

QList<int> OtherClient::keysDown(const char* device)
{
    QList<int> keys;
    XDevice* opened = XOpenDevice(m_state->display, static_cast<XID>(idOf(device)));
    XDeviceState* state = XQueryDeviceState(m_state->display, opened);
    XInputClass* each = state->data;
    for (int i = 0; i < state->num_classes; ++i) {
        if (each->c_class == KeyClass)
            keys = keysIn(reinterpret_cast<XKeyState*>(each)->keys);
        each = reinterpret_cast<XInputClass*>(reinterpret_cast<char*>(each) + each->length);
    }
    XFreeDeviceState(state);
    XCloseDevice(m_state->display, opened);
    return keys;
}

unsigned OtherClient::lockedModifiers()
{
    XkbStateRec state = {};
    XkbGetState(m_state->display, XkbUseCoreKbd, &state);
    return state.locked_mods;
}

OtherClient::RepeatRate OtherClient::repeatRate()
{
    RepeatRate rate = {};
    XkbGetAutoRepeatRate(m_state->display, XkbUseCoreKbd, &rate.delay, &rate.interval);
    return rate;
}

void OtherClient::setRepeatRate(RepeatRate rate)
{
    XkbSetAutoRepeatRate(m_state->display, XkbUseCoreKbd, rate.delay, rate.interval);
    XSync(m_state->display, False);
}

namespace {

constexpr unsigned allAccessKeys = XkbSlowKeysMask | XkbBounceKeysMask | XkbStickyKeysMask | XkbMouseKeysMask;

} // namespace

void OtherClient::setAccessKeys(unsigned keys)
{
    XkbDescPtr keyboard = XkbAllocKeyboard();
    keyboard->device_spec = XkbUseCoreKbd;
    XkbGetControls(m_state->display, XkbAllControlsMask, keyboard);
    keyboard->ctrls->enabled_ctrls = (keyboard->ctrls->enabled_ctrls & ~allAccessKeys) | keys;
    keyboard->ctrls->slow_keys_delay = keyboard->ctrls->debounce_delay = 100;
    XkbSetControls(m_state->display, XkbControlsEnabledMask | XkbSlowKeysMask | XkbBounceKeysMask, keyboard);
    XkbFreeKeyboard(keyboard, 0, True);
    XSync(m_state->display, False);
}

unsigned OtherClient::accessKeys(const char* device)
{
    XkbDescPtr keyboard = XkbAllocKeyboard();
    keyboard->device_spec = static_cast<unsigned short>(idOf(device));
    XkbGetControls(m_state->display, XkbAllControlsMask, keyboard);
    const unsigned keys = keyboard->ctrls->enabled_ctrls & allAccessKeys;
    XkbFreeKeyboard(keyboard, 0, True);
    return keys;
}

bool OtherClient::isKeyboardGrabbed()
{
    // A window that isn't shown can't have the keyboard, and the server reports that only after it has looked
    // who has it.
    const Window window =
        XCreateSimpleWindow(m_state->display, DefaultRootWindow(m_state->display), 0, 0, 1, 1, 0, 0, 0);
    const int status =
        XGrabKeyboard(m_state->display, window, False, GrabModeAsync, GrabModeAsync, CurrentTime);
    XDestroyWindow(m_state->display, window);
    return status == AlreadyGrabbed;
}

void OtherClient::pressOnXtestKeyboard(int key)
{
    XTestFakeKeyEvent(m_state->display, static_cast<unsigned>(key), True, CurrentTime);
    XSync(m_state->display, False);
}

void OtherClient::releaseOnXtestKeyboard(int key)
{
    XTestFakeKeyEvent(m_state->display, static_cast<unsigned>(key), False, CurrentTime);
    XSync(m_state->display, False);
}

void OtherClient::lockModifiers(unsigned modifiers)
{
    XkbLockModifiers(m_state->display, XkbUseCoreKbd, 0xFF, modifiers);
    XSync(m_state->display, False);
}

bool OtherClient::grabKeyboard()
{
    return XGrabKeyboard(m_state->display, DefaultRootWindow(m_state->display), False, GrabModeAsync,
                         GrabModeAsync, CurrentTime) == GrabSuccess;
}

void OtherClient::grabKey(int key, unsigned modifiers)
{
    XGrabKey(m_state->display, key, modifiers, DefaultRootWindow(m_state->display), False, GrabModeAsync,
             GrabModeAsync);
    XSync(m_state->display, False);
}

QList<int> OtherClient::grabbedKeys()
{
    while (XPending(m_state->display)) {
        XEvent event;
        XNextEvent(m_state->display, &event);
        if (event.type == KeyPress || event.type == KeyRelease)
            m_state->grabbedKeys.append(event.type == KeyPress ? static_cast<int>(event.xkey.keycode)
                                                               : -static_cast<int>(event.xkey.keycode));
    }
    return m_state->grabbedKeys;
}

bool OtherClient::grabDevice(const char* device)
{
    unsigned char bits[4] = {};
    XIEventMask mask{idOf(device), sizeof bits, bits};
    const int status = XIGrabDevice(m_state->display, mask.deviceid, DefaultRootWindow(m_state->display),
                                    CurrentTime, None, GrabModeAsync, GrabModeAsync, False, &mask);
    return status == GrabSuccess;
}

void OtherClient::setDeviceEnabled(const char* device, bool enabled)
{
    unsigned char value = enabled ? 1 : 0;
    XIChangeProperty(m_state->display, idOf(device), XInternAtom(m_state->display, "Device Enabled", False),
                     XA_INTEGER, 8, PropModeReplace, &value, 1);
    XSync(m_state->display, False);
}

bool OtherClient::isFloating(const char* device)
{
    int count = 0;
    XIDeviceInfo* info = XIQueryDevice(m_state->display, idOf(device), &count);
    const bool floats = info && info->use == XIFloatingSlave;
    XIFreeDeviceInfo(info);
    return floats;
}

bool OtherClient::isNamed(unsigned long window, const char* name)
{
    char* found = nullptr;
    XFetchName(m_state->display, window, &found);
    const bool isSame = found && qstrcmp(found, name) == 0;
    XFree(found);
    return isSame;
}

bool OtherClient::activate(const char* title)
{
    Display* display = m_state->display;
    const Window root = DefaultRootWindow(display);
    Atom type = 0;
    int format = 0;
    unsigned long count = 0, left = 0;
    unsigned char* list = nullptr;
    constexpr long limit = 1024;
    XGetWindowProperty(display, root, XInternAtom(display, "_NET_CLIENT_LIST", False), 0, limit, False,
                       XA_WINDOW, &type, &format, &count, &left, &list);
    Window found = 0;
    for (unsigned long i = 0; i < count && !found; ++i) {
        const Window window = reinterpret_cast<const unsigned long*>(list)[i];
        if (isNamed(window, title))
            found = window;
    }
    XFree(list);
    if (!found)
        return false;
    constexpr long sourceIsAPanel = 2;
    XEvent event = {};
    event.xclient.type = ClientMessage;
    event.xclient.window = found;
    event.xclient.message_type = XInternAtom(display, "_NET_ACTIVE_WINDOW", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = sourceIsAPanel;
    XSendEvent(display, root, False, SubstructureNotifyMask | SubstructureRedirectMask, &event);
    XSync(display, False);
    return true;
}

bool OtherClient::killOwnerOf(const char* windowName)
{
    Window root = 0, parent = 0, *children = nullptr, found = 0;
    unsigned count = 0;
    XQueryTree(m_state->display, DefaultRootWindow(m_state->display), &root, &parent, &children, &count);
    for (unsigned i = 0; i < count && !found; ++i) {
        if (isNamed(children[i], windowName))
            found = children[i];
    }
    XFree(children);
    if (found)
        XKillClient(m_state->display, found);
    XSync(m_state->display, False);
    return found != 0;
}

int OtherClient::idOf(const char* device)
{
    int count = 0, id = 0;
    XIDeviceInfo* all = XIQueryDevice(m_state->display, XIAllDevices, &count);
    for (int i = 0; i < count; ++i) {
        if (qstrcmp(all[i].name, device) == 0)
            id = all[i].deviceid;
    }
    XIFreeDeviceInfo(all);
    if (id == 0)
        throw std::runtime_error(std::string("There is no device ") + device);
    return id;
}

} // namespace orvane::tests
