// The Linux layer while another client holds the X server: it answers nothing, and the run loop goes on.
#include "Contract/HotKeysSupport.h"
#include "Contract/Support/ServerHolder.h"
#include "Contract/Support/ToolkitServer.h"
#include "Contract/Support/UnmanagedWindow.h"
#include "Desktop/Support/Hardware.h"
#include "Desktop/Support/WindowManager.h"
#include "Fakes/FakeLogSink.h"
#include "Fakes/FakePermissions.h"
#include "Platform/NotificationCenter.h"
#include "PlatformLinux/Accessibility/X11Accessibility.h"
#include "PlatformLinux/Applications/DesktopEntries.h"
#include "PlatformLinux/Applications/FrontmostApplication.h"
#include "PlatformLinux/EventMonitors/X11EventMonitors.h"
#include "PlatformLinux/EventTap/XInputEventTaps.h"
#include "PlatformLinux/HotKeys/X11HotKeys.h"
#include "PlatformLinux/Keys/KeymapTables.h"
#include "PlatformLinux/Keys/ServerKeymap.h"
#include "PlatformLinux/Menus/MenuTracking.h"
#include "PlatformLinux/Panels/X11Panels.h"
#include "PlatformLinux/Pasteboard/X11Pasteboard.h"
#include "PlatformLinux/Screens/ScreenWatch.h"
#include "PlatformLinux/Screens/X11Screens.h"
#include "PlatformLinux/Session/QtRunLoop.h"
#include "PlatformLinux/Shortcuts/DesktopShortcuts.h"
#include "PlatformLinux/Tray/XEmbedTrayWatch.h"
#include "PlatformLinux/X11/ApplicationLink.h"
#include "PlatformLinux/X11/WindowManagerWatch.h"
#include "PlatformLinux/X11/XAccess.h"
#include "Support/Eventually.h"

#include <QCoreApplication>
#include <QTimer>

#include <gmock/gmock.h>

#include <functional>
#include <optional>

#include <unistd.h>

namespace orvane::tests {
namespace {

constexpr auto deadline = 30s;

class HeldServerLiveTest : public ::testing::Test {
protected:
    HeldServerLiveTest()
    {
        frontmost.start();
        (void)screens.mainScreen();
    }

    /// Does something while the server is held. The server is let go after the run loop was seen to go on.
    void whileHeld(const std::function<void()>& use)
    {
        // The toolkit asks the server about some events and waits: nothing of what came before is left
        // unread.
        EXPECT_TRUE(settleWindowManager());
        letToolkitReadDevices();
        holder.hold();
        bool isDone = false;
        int ticks = 0;
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, [&] { ticks += isDone ? 1 : 0; });
        timer.start(1);
        QTimer::singleShot(0, &timer, [&] {
            use();
            isDone = true;
        });
        EXPECT_TRUE(eventually(deadline, [&] { return ticks >= 3; }));
        EXPECT_TRUE(holder.letGo()) << "it waited for the server";
    }

    /// When another mouse is used than before, the toolkit itself asks the server about it, and waits.
    static void letToolkitReadDevices()
    {
        (void)ToolkitServer::ofApplication()->atom(
            "WM_NAME"); // what came before it is in the toolkit's queue
        QCoreApplication::processEvents();
    }

    std::shared_ptr<ApplicationLink> link = ApplicationLink::get();
    FakeLogSink log;
    NotificationCenter center;
    MenuTracking menus{center};
    XInputEventTaps taps{log, [] { return CommandKeys::control; }};
    X11Screens screens{center};
    X11EventMonitors monitors{taps, menus, screens};
    DesktopEntries entries;
    FrontmostApplication frontmost{entries};
    ServerHolder holder;
};

} // namespace

TEST_F(HeldServerLiveTest, AMousePressIsToldWhenTheServerIsBack)
{
    const UnmanagedWindow theirs(QRect(900, 500, 300, 200));
    std::vector<EventMonitors::MonitoredEvent> seen;
    const auto monitor = monitors.addGlobalMonitor(
        eventMaskBit(EventType::leftMouseDown) | eventMaskBit(EventType::leftMouseUp) |
            eventMaskBit(EventType::leftMouseDragged),
        [&](const EventMonitors::MonitoredEvent& event) { seen.push_back(event); });
    holder.movePointer(theirs.middle());
    letToolkitReadDevices();
    const auto before = monitors.pointerEventsRead();
    whileHeld([&] {
        holder.fakeButton(1, true);
        EXPECT_TRUE(eventually(deadline, [&] { return monitors.pointerEventsRead() > before; }));
        (void)monitors.mouseLocation();
        (void)monitors.modifierFlags();
    });
    holder.fakeButton(1, false);
    ASSERT_TRUE(eventually(deadline, [&] { return seen.size() >= 2; }));
    EXPECT_EQ(seen.front().event.type, EventType::leftMouseDown);
    EXPECT_EQ(seen.front().location.toPoint(), theirs.middle());
    EXPECT_EQ(seen.back().event.type, EventType::leftMouseUp);
}

TEST_F(HeldServerLiveTest, TheKeysOfAMenuThatOpensMeanwhileAreHeardWhenTheServerIsBack)
{
    Hardware hardware;
    int heard = 0;
    const auto monitor = monitors.addMenuTrackingMonitor(eventMaskBit(EventType::keyDown),
                                                         [&](const EventMonitors::MonitoredEvent&) {
                                                             ++heard;
                                                             return EventMonitors::Disposition::swallow;
                                                         });
    std::unique_ptr<MenuTracking::DesktopMenu> menu;
    whileHeld([&] { menu = menus.beginOnDesktop(); });
    EXPECT_TRUE(eventually(deadline, [&] {
        hardware.tap("F9");
        return eventually(1s, [&] { return heard > 0; });
    }));
}

TEST_F(HeldServerLiveTest, AHotKeyIsGrabbedWhenTheServerIsBack)
{
    ServerKeymap keymap;
    DesktopShortcuts shortcuts(keymap, {});
    X11HotKeys hotKeys(log, shortcuts);
    std::optional<HotKeys::Registration> registration;
    whileHeld([&] { registration = hotKeys.registerEventHotKey(virtualKey::j, controlOption, hotKeyId(1)); });
    ASSERT_EQ(registration->status, noErr);
    // Another one can't have it any more.
    X11HotKeys others(log, shortcuts);
    EXPECT_TRUE(eventually(deadline, [&] {
        return others.registerEventHotKey(virtualKey::j, controlOption, hotKeyId(2)).status ==
               eventHotKeyExistsErr;
    }));
}

TEST_F(HeldServerLiveTest, ThePasteboardIsReadAndEnded)
{
    QtRunLoop runLoop;
    whileHeld([&] {
        const X11Pasteboard pasteboard(log, runLoop);
        (void)pasteboard.changeCount();
    });
}

TEST_F(HeldServerLiveTest, WindowsAreAskedFor)
{
    FakePermissions permissions;
    permissions.accessibility = true;
    X11Accessibility accessibility(screens, permissions);
    const auto attribute = QStringLiteral("AXFocusedApplication");
    (void)accessibility.copyAttributeValue(accessibility.createSystemWide(), attribute);
    whileHeld([&] {
        EXPECT_EQ(accessibility.copyAttributeValue(accessibility.createSystemWide(), attribute).error,
                  AXError::cannotComplete);
    });
}

TEST_F(HeldServerLiveTest, TheScreensAreReadAgainWhenTheServerIsBack)
{
    const auto before = screens.screens();
    ASSERT_FALSE(before.isEmpty());
    std::optional<ScreenWatch> watch;
    whileHeld([&] {
        watch.emplace();
        (void)watch->activeIndex();
        (void)screens.mainScreen();
    });
    EXPECT_TRUE(eventually(deadline, [&] { return watch->screens() == before; }));
}

TEST_F(HeldServerLiveTest, TheProgramInFrontIsLookedFor)
{
    whileHeld([&] {
        FrontmostApplication another(entries);
        another.start();
        (void)another.activate(::getpid());
        (void)frontmost.activate(::getpid());
    });
}

TEST_F(HeldServerLiveTest, WatchesThatBeginFindWhatTheyWatchWhenTheServerIsBack)
{
    ASSERT_TRUE(WindowManagerWatch().isPresent());
    std::optional<WindowManagerWatch> windowManager;
    std::optional<X11Panels> panels;
    std::optional<XEmbedTrayWatch> tray;
    whileHeld([&] {
        windowManager.emplace();
        panels.emplace(center);
        tray.emplace();
    });
    EXPECT_TRUE(eventually(deadline, [&] { return windowManager->isPresent(); }));
}

TEST_F(HeldServerLiveTest, TheKeymapComesWhenTheServerIsBack)
{
    ServerKeymap keymap;
    whileHeld([&] { EXPECT_EQ(keymap.tables(), nullptr); });
    EXPECT_TRUE(eventually(deadline, [&] { return keymap.tables() != nullptr; }));
}

TEST_F(HeldServerLiveTest, WhatTheProgramMayDoIsTried)
{
    whileHeld([&] {
        EXPECT_FALSE(tryInputAccess().granted);
        EXPECT_FALSE(tryScreenAccess().granted);
    });
    EXPECT_TRUE(tryInputAccess().granted);
}

} // namespace orvane::tests
