// The Linux layer's hot keys on the private desktop, with its keyboard and a window that has the focus.
#pragma once

#include "Contract/EventTapSupport.h"
#include "Contract/HotKeysSupport.h"
#include "Desktop/Support/Hardware.h"
#include "Desktop/Support/KeyWindow.h"
#include "Desktop/Support/OtherClient.h"
#include "Fakes/FakeLogSink.h"
#include "PlatformLinux/HotKeys/X11HotKeys.h"
#include "PlatformLinux/Keys/ServerKeymap.h"
#include "PlatformLinux/Shortcuts/DesktopShortcuts.h"
#include "PlatformLinux/X11/XcbReply.h"
#include "Support/Eventually.h"

#include <gmock/gmock.h>

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/extensions/sync.h>

#include <xcb/res.h>

namespace orvane::tests {
inline constexpr std::uint8_t xKeyOfJ = 44, xKeyOfK = 45, xKeyOfAlt = 64;

/// A client for the grabs and questions that OtherClient doesn't have.
class Xlib {
public:
    Xlib() = default;
    ~Xlib() { XCloseDisplay(m_display); }
    Xlib(const Xlib&) = delete;
    Xlib& operator=(const Xlib&) = delete;

    void grab(int key, unsigned modifiers)
    {
        XGrabKey(m_display, key, modifiers, DefaultRootWindow(m_display), False, GrabModeAsync,
                 GrabModeAsync);
        XSync(m_display, False);
    }

    /// True if one more client could have the combination.
    bool couldGrab(int key, unsigned modifiers)
    {
        static bool isRefused;
        isRefused = false;
        const auto previous = XSetErrorHandler([](Display*, XErrorEvent*) {
            isRefused = true;
            return 0;
        });
        grab(key, modifiers);
        XUngrabKey(m_display, key, modifiers, DefaultRootWindow(m_display));
        XSync(m_display, False);
        XSetErrorHandler(previous);
        return !isRefused;
    }

    void lockModifiers(unsigned modifiers)
    {
        XkbLockModifiers(m_display, XkbUseCoreKbd, 0xFF, modifiers);
        XSync(m_display, False);
    }

    void lockGroup(unsigned group)
    {
        XkbLockGroup(m_display, XkbUseCoreKbd, group);
        XSync(m_display, False);
    }

    int clients()
    {
        const XcbConnection xcb(xcb_connect(nullptr, nullptr));
        const XcbReply<xcb_res_query_clients_reply_t> reply(
            xcb_res_query_clients_reply(xcb.get(), xcb_res_query_clients(xcb.get()), nullptr));
        return reply ? static_cast<int>(reply->num_clients) : -1;
    }

    /// Returns the time of the server's own clock.
    qint64 milliseconds()
    {
        int count = 0;
        int major = 0, minor = 0;
        XSyncInitialize(m_display, &major, &minor);
        XSyncSystemCounter* counters = XSyncListSystemCounters(m_display, &count);
        qint64 time = 0;
        for (int i = 0; i < count; ++i) {
            XSyncValue value;
            if (qstrcmp(counters[i].name, "SERVERTIME") == 0 &&
                XSyncQueryCounter(m_display, counters[i].counter, &value))
                time = qint64{XSyncValueHigh32(value)} << 32 | XSyncValueLow32(value);
        }
        XSyncFreeSystemCounterList(counters);
        return time;
    }

private:
    Display* m_display = XOpenDisplay(nullptr);
};

class QuickRepeat {
public:
    explicit QuickRepeat(OtherClient& client) : m_client(client) { m_client.setRepeatRate({60, 20}); }
    ~QuickRepeat() { m_client.setRepeatRate(m_before); }
    QuickRepeat(const QuickRepeat&) = delete;
    QuickRepeat& operator=(const QuickRepeat&) = delete;

private:
    OtherClient& m_client;
    OtherClient::RepeatRate m_before = m_client.repeatRate();
};

class HotKeysLiveTest : public ::testing::Test {
protected:
    ~HotKeysLiveTest() override
    {
        // Keys of one test must not be down in the next one.
        EXPECT_TRUE(eventually(10s, [this] { return other.keysDown().isEmpty(); }));
        EXPECT_EQ(other.lockedModifiers(), 0u);
    }

    HotKeys::Registration registerKey(std::uint32_t virtualKeyCode, std::uint32_t id,
                                      std::uint32_t modifiers = controlOption)
    {
        return hotKeys.registerEventHotKey(virtualKeyCode, modifiers, hotKeyId(id));
    }
    void pressModifiers()
    {
        hardware.press(key::controlL);
        hardware.press(xKeyOfAlt);
    }
    void releaseModifiers()
    {
        hardware.release(xKeyOfAlt);
        hardware.release(key::controlL);
    }
    void tap(std::uint8_t xKey)
    {
        pressModifiers();
        hardware.tap(xKey);
        releaseModifiers();
    }
    /// Waits until the server's clock would have repeated a held key a dozen times by QuickRepeat.
    void awaitRepeats()
    {
        const qint64 begin = xlib.milliseconds();
        EXPECT_TRUE(eventually(10s, [&] { return xlib.milliseconds() > begin + 300; }));
    }
    void hold(std::uint8_t xKey)
    {
        hardware.press(xKey);
        awaitRepeats();
        hardware.release(xKey);
    }
    bool hears(const char* events)
    {
        return eventually(10s, [&] { return log.text() == QLatin1String(events); });
    }
    [[nodiscard]] std::string heard() const { return log.text().toStdString(); }

    FakeLogSink logSink;
    OtherClient other;
    Xlib xlib;
    KeyWindow window;
    ServerKeymap keymap;
    DesktopShortcuts desktopShortcuts{keymap};
    X11HotKeys hotKeys{logSink, desktopShortcuts};
    HotKeyLog log{hotKeys};
    Hardware hardware;
};

} // namespace orvane::tests
