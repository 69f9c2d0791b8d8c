// A process that takes another's place: it waits for the other's end, and kills it after some time.
#include "PlatformLinux/Session/Succession.h"
#include "ChildProcess.h"
#include "Fakes/FakeLogSink.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <functional>
#include <optional>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace orvane::tests {

namespace {

using namespace std::chrono_literals;
using Succession::Outcome;

constexpr auto variable = "ORVANE_SUCCEEDS";
constexpr std::chrono::milliseconds longPatience = 30s;
constexpr std::chrono::milliseconds shortPatience = 50ms;

Outcome awaitAt(const QByteArray& descriptor, std::chrono::milliseconds patience)
{
    FakeLogSink log;
    ::setenv(variable, descriptor.constData(), 1);
    return Succession::awaitPredecessor(patience, log);
}

/// Acts as a process in its parent's place: writes "w", waits for the parent, and writes the outcome.
[[noreturn]] void succeed(std::optional<Succession::Bequest>& bequest, std::chrono::milliseconds patience,
                          int toTest)
{
    QProcessEnvironment environment;
    bequest->applyTo(environment);
    const int left = ::dup(environment.value(QLatin1String(variable)).toInt());
    bequest.reset(); // an exec would close the parent's end
    char letter = 'w';
    bool told = ::write(toTest, &letter, 1) == 1;
    letter = static_cast<char>('0' + static_cast<int>(awaitAt(QByteArray::number(left), patience)));
    told = ::write(toTest, &letter, 1) == 1 && told;
    ::_exit(told ? 0 : 1);
}

/// Runs a process that starts another in its place and then does what `afterwards` says.
int bequeath(std::chrono::milliseconds patience, int toTest, const std::function<int()>& afterwards)
{
    auto bequest = Succession::Bequest::make();
    if (!bequest)
        return 1;
    if (::fork() == 0)
        succeed(bequest, patience, toTest);
    std::move(*bequest).keep();
    bequest.reset();
    return afterwards();
}

} // namespace

TEST(SuccessionTest, AProcessThatTakesNobodysPlaceGoesOn)
{
    FakeLogSink log;
    ::unsetenv(variable);
    EXPECT_EQ(Succession::awaitPredecessor(longPatience, log), Outcome::none);
}

TEST(SuccessionTest, AVariableThatNamesNoSocketIsPassedOver)
{
    for (const char* nonsense : {"", "x", "-1", "0", "2", "999"})
        EXPECT_EQ(awaitAt(nonsense, longPatience), Outcome::none) << nonsense;
    const FileDescriptor file(::open("/dev/null", O_RDONLY | O_CLOEXEC));
    EXPECT_EQ(awaitAt(QByteArray::number(file.get()), longPatience), Outcome::none);
    EXPECT_GE(::fcntl(file.get(), F_GETFD), 0) << "somebody else's descriptor was closed";
}

TEST(SuccessionTest, TheVariableIsNotHandedOn)
{
    EXPECT_EQ(awaitAt("nonsense", longPatience), Outcome::none);
    EXPECT_EQ(::getenv(variable), nullptr);
}

TEST(SuccessionTest, WaitsUntilTheOldProcessHasEnded)
{
    int go[2];
    ASSERT_EQ(::pipe2(go, O_CLOEXEC), 0);
    const FileDescriptor reading(go[0]);
    const FileDescriptor writing(go[1]);
    ChildProcess old([&](int toTest) {
        return bequeath(longPatience, toTest, [&] {
            char letter = 0;
            const bool told = ::read(reading.get(), &letter, 1) == 1 && ::write(toTest, "E", 1) == 1;
            return told ? 0 : 1;
        });
    });
    ASSERT_TRUE(old.readByte()) << "the new process waits";
    ASSERT_EQ(::write(writing.get(), "g", 1), 1);
    EXPECT_EQ(old.readAll(), std::string("E") + static_cast<char>('0' + static_cast<int>(Outcome::ended)));
    const int status = old.wait();
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

TEST(SuccessionTest, AnOldProcessThatDoesNotEndIsMadeTo)
{
    ChildProcess old([](int toTest) {
        return bequeath(shortPatience, toTest, [toTest] {
            ::close(toTest);
            for (;;)
                ::pause();
            return 0;
        });
    });
    ASSERT_TRUE(old.readByte());
    EXPECT_EQ(old.readAll(), std::string(1, static_cast<char>('0' + static_cast<int>(Outcome::madeToEnd))));
    const int status = old.wait();
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), SIGKILL);
}

} // namespace orvane::tests
