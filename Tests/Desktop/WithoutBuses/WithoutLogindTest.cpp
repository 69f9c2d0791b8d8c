// A desktop on which nothing answers for logind.
#include "Desktop/Support/Program.h"
#include "Desktop/Support/ScreenSaver.h"
#include "Support/Eventually.h"

#include <gmock/gmock.h>

namespace orvane::tests {

TEST(WithoutLogind, AwakeHoldsTheDisplayAndTheScreenDoesNotBlank)
{
    ScreenSaver saver;
    Program program(
        {.defaults = QByteArray(R"({"hasOnboarded": true,)"
                                R"( "Orvane.enabledCapabilities": {"net.lindenrow.orvane.awake": true},)"
                                R"( "net.lindenrow.orvane.awake.awakeOnLaunch": true})")});
    ASSERT_TRUE(program.waitUntilReady());
    ASSERT_TRUE(program.waitForLog(QRegularExpression(QStringLiteral("so only the display is held"))));
    ASSERT_TRUE(program.waitForLog(QRegularExpression(QStringLiteral("Awake on"))));
    saver.reset();
    saver.setTimeout(std::chrono::seconds(1));
    EXPECT_TRUE(eventually(20s, [&] { return saver.idle() > std::chrono::seconds(3); }));
    EXPECT_NE(saver.state(), ScreenSaver::State::on) << "it is held back";

    // The proof that the screen would have blanked: it does as soon as nothing holds it.
    program.signal(SIGTERM);
    ASSERT_TRUE(program.wait());
    saver.reset();
    EXPECT_TRUE(eventually(20s, [&] { return saver.state() == ScreenSaver::State::on; }));
}

} // namespace orvane::tests
