// Unit tests see no display, no bus and no home of the user, and have the same locale and time zone
// everywhere.
#include "Support/PrivateHome.h"

#include <QApplication>

#include <gmock/gmock.h>

int main(int argc, char** argv)
{
    const orvane::tests::PrivateHome home;
    home.applyToThisProcess();
    for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "LANGUAGE"})
        qunsetenv(variable);
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent");
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("TZ", "UTC");

    QApplication application(argc, argv);
    ::testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
