// No application object is made here: the tests make them.
#include "Support/PrivateHome.h"

#include <QByteArray>

#include <gmock/gmock.h>

int main(int argc, char** argv)
{
    const orvane::tests::PrivateHome home;
    home.applyToThisProcess();
    for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS"})
        qunsetenv(variable);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    ::testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
