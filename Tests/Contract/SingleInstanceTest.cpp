// One running program in a session, seen from two processes: the second is this test program once more.
#include "PlatformLinux/Session/SingleInstance.h"
#include "Fakes/FakeLogSink.h"
#include "Support/Eventually.h"

#include <QCoreApplication>
#include <QProcess>

#include <gmock/gmock.h>

#include <cstdio>

namespace orvane::tests {

namespace {

constexpr auto deadline = 15s;
constexpr auto person = Application::StartedBy::person;

/// A further start of the program, up to its claim.
class FurtherStart {
public:
    explicit FurtherStart(Application::StartedBy starter = person)
    {
        m_process.setStandardErrorFile(QProcess::nullDevice());
        m_process.start(QCoreApplication::applicationFilePath(),
                        {QStringLiteral("--gtest_also_run_disabled_tests"),
                         starter == person
                             ? QStringLiteral("--gtest_filter=SingleInstancePeer.DISABLED_Claims")
                             : QStringLiteral("--gtest_filter=SingleInstancePeer.DISABLED_ClaimsAtLogin")});
        EXPECT_TRUE(m_process.waitForStarted());
    }

    ~FurtherStart()
    {
        m_process.closeWriteChannel();
        if (!m_process.waitForFinished(5000))
            m_process.kill();
    }

    /// Returns the claim's result; this process goes on meanwhile.
    QByteArray result()
    {
        EXPECT_TRUE(eventually(deadline, [this] {
            m_output += m_process.readAllStandardOutput();
            return m_output.contains("claim: ") && m_output.indexOf('\n', m_output.indexOf("claim: ")) >= 0;
        })) << m_output.constData();
        const QByteArray line = m_output.mid(m_output.indexOf("claim: ") + 7);
        return line.left(line.indexOf('\n'));
    }

private:
    QProcess m_process;
    QByteArray m_output;
};

const char* textOf(SingleInstance::Claim claim)
{
    switch (claim) {
    case SingleInstance::Claim::claimed:
        return "claimed";
    case SingleInstance::Claim::handedOver:
        return "handed over";
    case SingleInstance::Claim::leftAlone:
        return "left alone";
    case SingleInstance::Claim::unanswered:
        return "unanswered";
    case SingleInstance::Claim::unavailable:
        return "unavailable";
    }
    return "";
}

/// Claims, prints the result, and holds the claim until its standard input is closed.
void claimAndHold(Application::StartedBy starter)
{
    FakeLogSink log;
    SingleInstance instance(log);
    std::printf("claim: %s\n", textOf(instance.claim(starter, [] {})));
    std::fflush(stdout);
    while (std::getchar() != EOF)
        continue;
}

} // namespace

TEST(SingleInstancePeer, DISABLED_Claims)
{
    claimAndHold(person);
}

TEST(SingleInstancePeer, DISABLED_ClaimsAtLogin)
{
    claimAndHold(Application::StartedBy::session);
}

TEST(SingleInstanceContract, TheFirstClaimIsGranted)
{
    FakeLogSink log;
    SingleInstance instance(log);
    EXPECT_EQ(instance.claim(person, [] {}), SingleInstance::Claim::claimed);
    EXPECT_TRUE(log.entries().empty());
}

TEST(SingleInstanceContract, ASecondClaimIsHandedOverToTheFirst)
{
    FakeLogSink log;
    SingleInstance instance(log);
    int activations = 0;
    ASSERT_EQ(instance.claim(person, [&] { ++activations; }), SingleInstance::Claim::claimed);
    FurtherStart second;
    EXPECT_EQ(second.result(), "handed over");
    EXPECT_EQ(activations, 1);
    FurtherStart third;
    EXPECT_EQ(third.result(), "handed over");
    EXPECT_EQ(activations, 2);
}

TEST(SingleInstanceContract, AStartByTheSessionLeavesTheFirstAlone)
{
    FakeLogSink log;
    SingleInstance instance(log);
    int activations = 0;
    ASSERT_EQ(instance.claim(Application::StartedBy::session, [&] { ++activations; }),
              SingleInstance::Claim::claimed);
    FurtherStart second(Application::StartedBy::session);
    EXPECT_EQ(second.result(), "left alone");
    EXPECT_EQ(activations, 0);
    FurtherStart third;
    EXPECT_EQ(third.result(), "handed over");
    EXPECT_EQ(activations, 1);
}

TEST(SingleInstanceContract, AfterAReleaseANewOneIsGranted)
{
    FakeLogSink log;
    SingleInstance instance(log);
    int activations = 0;
    ASSERT_EQ(instance.claim(person, [&] { ++activations; }), SingleInstance::Claim::claimed);
    instance.release();
    FurtherStart second;
    EXPECT_EQ(second.result(), "claimed");
    EXPECT_EQ(activations, 0);
}

TEST(SingleInstanceContract, TheEndOfTheObjectReleases)
{
    FakeLogSink log;
    {
        SingleInstance instance(log);
        ASSERT_EQ(instance.claim(person, [] {}), SingleInstance::Claim::claimed);
    }
    FurtherStart second;
    EXPECT_EQ(second.result(), "claimed");
}

TEST(SingleInstanceContract, AClaimOfAProcessThatHasEndedDoesNotStandInTheWay)
{
    {
        FurtherStart gone;
        ASSERT_EQ(gone.result(), "claimed");
    }
    FakeLogSink log;
    SingleInstance instance(log);
    EXPECT_EQ(instance.claim(person, [] {}), SingleInstance::Claim::claimed);
}

} // namespace orvane::tests
