#include "Contract/Support/PluggedMonitor.h"

#include <QProcess>

#include <gtest/gtest.h>

namespace orvane::tests {

namespace {

const QString output = QStringLiteral("DUMMY1");
const QString mode = QStringLiteral("1280x1000");
const QString timing = QStringLiteral("105 1280 1368 1496 1712 1000 1003 1010 1040");

QString option(PluggedMonitor::Place place)
{
    switch (place) {
    case PluggedMonitor::Place::right:
        return QStringLiteral("--right-of");
    case PluggedMonitor::Place::left:
        return QStringLiteral("--left-of");
    case PluggedMonitor::Place::above:
        return QStringLiteral("--above");
    case PluggedMonitor::Place::below:
        return QStringLiteral("--below");
    }
    return {};
}

} // namespace

PluggedMonitor::PluggedMonitor(Place place)
{
    // The server keeps the mode once it has it.
    xrandr(QStringList{QStringLiteral("--newmode"), mode} + timing.split(u' '));
    xrandr({QStringLiteral("--addmode"), output, mode});
    // The primary one is set by name first: otherwise it would be the leftmost one.
    EXPECT_TRUE(xrandr({QStringLiteral("--output"), QStringLiteral("DUMMY0"), QStringLiteral("--primary"),
                        QStringLiteral("--output"), output, QStringLiteral("--mode"), mode, option(place),
                        QStringLiteral("DUMMY0")}));
    EXPECT_TRUE(xrandr({})); // clients ignore a new output until xrandr probes
}

PluggedMonitor::~PluggedMonitor()
{
    EXPECT_TRUE(
        xrandr({QStringLiteral("--output"), output, QStringLiteral("--off"), QStringLiteral("--output"),
                QStringLiteral("DUMMY0"), QStringLiteral("--pos"), QStringLiteral("0x0")}));
    EXPECT_TRUE(xrandr({}));
}

bool PluggedMonitor::xrandr(const QStringList& arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QStringLiteral("xrandr"), arguments);
    return process.waitForFinished(10000) && process.exitStatus() == QProcess::NormalExit &&
           process.exitCode() == 0;
}

} // namespace orvane::tests
