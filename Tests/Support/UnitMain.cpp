// Unit tests see no display, no bus and no home of the user, and have the same screen, locale and time zone
// everywhere.
#include "Support/PrivateHome.h"

#include <QApplication>
#include <QDir>
#include <QFile>

#include <gmock/gmock.h>

namespace {

/// The toolkit's own screen without a display is smaller than the windows of the program.
QString configurationOfScreens()
{
    const QString path = QDir::homePath() + QLatin1StringView("/screens.json");
    QFile file(path);
    const QByteArray configuration = R"({"screens": [{"name": "main", "x": 0, "y": 0, "width": 1440,
        "height": 900, "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})";
    if (!file.open(QIODevice::WriteOnly) || file.write(configuration) != configuration.size())
        qFatal("%s can't be written", qPrintable(path));
    return path;
}

} // namespace

int main(int argc, char** argv)
{
    const orvane::tests::PrivateHome home;
    home.applyToThisProcess();
    for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "LANGUAGE"})
        qunsetenv(variable);
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent");
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + QFile::encodeName(configurationOfScreens()));
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("TZ", "UTC");

    QApplication application(argc, argv);
    ::testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
