// A desktop without a status area, until one appears.
#include "Desktop/Support/Bus.h"
#include "Desktop/Support/Program.h"
#include "Desktop/Support/Tray.h"
#include "Support/Eventually.h"

#include <QProcess>

#include <gmock/gmock.h>

namespace orvane::tests {

TEST(TrayAppearsLater, ItsAbsenceIsSaidAndItGetsTheItemsWhenItComes)
{
    Program program(
        {.defaults = QByteArray(R"({"hasOnboarded": true,)"
                                R"( "Orvane.enabledCapabilities": {"net.lindenrow.orvane.awake": true}})")});
    ASSERT_TRUE(program.waitUntilReady());
    EXPECT_TRUE(program.waitForLog(QRegularExpression(QStringLiteral("notice \\[StatusBar\\]"))));

    QProcess panel;
    panel.start(QStringLiteral("xfce4-panel"), {});
    ASSERT_TRUE(panel.waitForStarted());
    const Tray tray;
    EXPECT_TRUE(eventually(20s, [&] { return tray.itemsOf(program.pid()).size() == 2; }));

    // A panel that dies takes the items with it; the next one gets them again.
    panel.kill();
    panel.waitForFinished();
    EXPECT_TRUE(eventually(20s, [&] { return tray.items().isEmpty(); }));
    panel.start(QStringLiteral("xfce4-panel"), {});
    ASSERT_TRUE(panel.waitForStarted());
    EXPECT_TRUE(eventually(20s, [&] { return tray.itemsOf(program.pid()).size() == 2; }));
    panel.terminate();
    panel.waitForFinished();
}

} // namespace orvane::tests
