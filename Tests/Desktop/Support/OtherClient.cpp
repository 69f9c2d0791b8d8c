#include "Desktop/Support/OtherClient.h"

#include <QByteArray>

#include <stdexcept>
#include <string>

#include <X11/XKBlib.h>
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/extensions/XInput.h>
#include <X11/extensions/XInput2.h>

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

void OtherClient::grabKey(int key)
{
    XGrabKey(m_state->display, key, AnyModifier, DefaultRootWindow(m_state->display), False, GrabModeAsync,
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

bool OtherClient::killOwnerOf(const char* windowName)
{
    Window root = 0, parent = 0, *children = nullptr, found = 0;
    unsigned count = 0;
    XQueryTree(m_state->display, DefaultRootWindow(m_state->display), &root, &parent, &children, &count);
    for (unsigned i = 0; i < count && !found; ++i) {
        char* name = nullptr;
        if (XFetchName(m_state->display, children[i], &name) && qstrcmp(name, windowName) == 0)
            found = children[i];
        XFree(name);
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
