// A program whose session bus doesn't answer, on a desktop that has everything else.
#include "Desktop/Support/Logind.h"
#include "Desktop/Support/Program.h"
#include "Desktop/Support/Screen.h"
#include "Support/Eventually.h"

#include <algorithm>

#include <gmock/gmock.h>

namespace orvane::tests {

TEST(WithoutSessionBus, AwakeHoldsTheMachineAndTheProgramIsSeenAndEndsInOrder)
{
    Program program(
        {.defaults = QByteArray(R"({"hasOnboarded": true,)"
                                R"( "Orvane.enabledCapabilities": {"net.lindenrow.orvane.awake": true},)"
                                R"( "net.lindenrow.orvane.awake.awakeOnLaunch": true})")});
    ASSERT_TRUE(program.waitForLog(QRegularExpression(QStringLiteral("There is no session bus"))));
    ASSERT_TRUE(program.waitForLog(QRegularExpression(QStringLiteral("Awake on"))));
    EXPECT_TRUE(eventually(10s, [] {
        const auto all = inhibitors().value_or(QList<Inhibitor>());
        return std::ranges::any_of(
            all, [](const Inhibitor& each) { return each.why == QStringLiteral("Orvane Awake"); });
    }));
    // Its item stands in the tray of the other kind, or its window is there.
    const Screen screen;
    EXPECT_TRUE(eventually(10s, [&] { return !screen.windowsOf(program.pid()).isEmpty(); }));
    program.signal(SIGTERM);
    const auto exit = program.wait();
    ASSERT_TRUE(exit);
    EXPECT_EQ(exit->code, 0);
}

} // namespace orvane::tests
