// Contract tests drive the Linux layer against the servers of the private desktop on which they are started.
#include "Support/WithoutNetwork.h"

#include <QApplication>

#include <gmock/gmock.h>

#include <cstdio>

int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("ORVANE_DESKTOP")) {
        std::fputs("Contract tests need a private desktop: Tools/desktop/session -- PROGRAM\n", stderr);
        return 2;
    }
    orvane::tests::goWithoutNetwork();
    qputenv("QT_QPA_PLATFORM", "xcb");
    QApplication application(argc, argv);
    // Popups come and go in these tests; the closing of the last one must not end the process.
    QApplication::setQuitOnLastWindowClosed(false);
    ::testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
