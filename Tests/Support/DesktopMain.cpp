// Desktop tests watch the built program from outside, so they are no graphical application themselves.
#include "Support/WithoutNetwork.h"

#include <QCoreApplication>

#include <gmock/gmock.h>

#include <cstdio>

int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("ORVANE_DESKTOP")) {
        std::fputs("Desktop tests need a private desktop: Tools/desktop/session -- PROGRAM\n", stderr);
        return 2;
    }
    orvane::tests::goWithoutNetwork();
    QCoreApplication application(argc, argv);
    ::testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
