#include "Desktop/Support/Monitors.h"

#include <QProcess>
#include <QStringList>

#include <gtest/gtest.h>

namespace orvane::tests {

namespace {

void xrandr(const QStringList& arguments)
{
    EXPECT_EQ(QProcess::execute(QStringLiteral("xrandr"), arguments), 0);
    // Clients ignore a new output until xrandr probes once more. Its output is long and not read.
    QProcess probe;
    probe.start(QStringLiteral("xrandr"), QStringList());
    EXPECT_TRUE(probe.waitForFinished());
}

const QString output = QStringLiteral("DUMMY1");

} // namespace

SecondMonitor::~SecondMonitor()
{
    plug(Side::right);
}

void SecondMonitor::plug(Side side, const char* mode)
{
    const QString place = side == Side::right ? QStringLiteral("--right-of") : QStringLiteral("--above");
    xrandr({QStringLiteral("--output"), output, QStringLiteral("--mode"), QLatin1String(mode), place,
            QStringLiteral("DUMMY0")});
}

void SecondMonitor::unplug()
{
    xrandr({QStringLiteral("--output"), output, QStringLiteral("--off")});
}

} // namespace orvane::tests
