#include "PlatformLinux/X11/SessionKind.h"
#include "Fakes/FakeClock.h"
#include "Fakes/FakeLogSink.h"
#include "Fakes/FakeRunLoop.h"
#include "PlatformLinux/Pasteboard/X11Pasteboard.h"

#include <gmock/gmock.h>

namespace orvane::tests {

TEST(SessionKind, AServerOfAWaylandSessionIsKnownByItsExtensionOrItsOutputs)
{
    EXPECT_EQ(sessionKind({.isThere = true, .hasXwaylandExtension = true, .outputs = {"DP-1"}}, "wayland-0"),
              SessionKind::xwayland);
    EXPECT_EQ(sessionKind({.isThere = true, .outputs = {"XWAYLAND0", "XWAYLAND1"}}, "wayland-0"),
              SessionKind::xwayland);
}

TEST(SessionKind, SuchAServerIsOneEvenWithoutTheVariable)
{
    EXPECT_EQ(sessionKind({.isThere = true, .outputs = {"XWAYLAND0"}}, ""), SessionKind::xwayland);
}

TEST(SessionKind, ARealServerBesideAWaylandSessionIsAnX11Session)
{
    EXPECT_EQ(sessionKind({.isThere = true, .outputs = {"DUMMY0"}}, "wayland-0"), SessionKind::x11);
    EXPECT_EQ(sessionKind({.isThere = true}, ""), SessionKind::x11);
}

TEST(SessionKind, WithoutAServerTheVariableTellsWhichSessionItIs)
{
    EXPECT_EQ(sessionKind({}, "wayland-0"), SessionKind::waylandAlone);
    EXPECT_EQ(sessionKind({}, ""), SessionKind::withoutServer);
}

TEST(SessionKind, EveryCopyIsSeenUnderX11AndWhereTheDesktopPassesThemOn)
{
    FakeLogSink log;
    FakeClock clock;
    FakeRunLoop runLoop(clock);
    const auto limitation = [&](SessionKind session, const QString& desktops) {
        return X11Pasteboard(log, runLoop, session, desktops).limitation();
    };
    EXPECT_EQ(limitation(SessionKind::x11, QStringLiteral("XFCE")), QString());
    EXPECT_EQ(limitation(SessionKind::xwayland, QStringLiteral("ubuntu:GNOME")), QString());
    EXPECT_TRUE(limitation(SessionKind::xwayland, QStringLiteral("sway")).contains(QStringLiteral("miss")));
    EXPECT_TRUE(limitation(SessionKind::xwayland, QStringLiteral("KDE")).contains(QStringLiteral("miss")));
}

} // namespace orvane::tests
