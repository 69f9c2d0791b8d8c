// The start with no feature on, beside the least program with a status item: both are started the same way,
// and counts are compared that are the same on a fast and on a slow machine. Docs/Performance.md says how to
// read a failure.
#include "Desktop/StartBudget/StartFigures.h"
#include "Desktop/Support/Program.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <string>

namespace orvane::tests {
namespace {

// What the shell itself takes beyond the bare program, with little room. No number of features that are off
// may take more: raise one of these only for something that every user has from it.
constexpr int furtherFilesMapped = 8;  // the program's own libraries of the X protocol, and QCoro
constexpr int furtherFilesOpened = 16; // those, the settings and their folder, a bus
constexpr int furtherThreads = 1;      // one of the pool's
constexpr double relocationsOfBare = 1.2;
constexpr double writtenOfBare = 1.28;
constexpr long kilobytesOfOwnFile = 2000;

struct StartBudget : testing::Test {
    static void SetUpTestSuite()
    {
        bare = startFigures(QStringLiteral(ORVANE_BARE_TRAY_PROGRAM));
        ours = startFigures(Program::builtProgram());
    }

    static QStringList further(QStringList files, const QStringList& known)
    {
        for (const QString& each : known)
            files.removeOne(each);
        std::ranges::sort(files);
        return files;
    }

    static inline StartFigures bare;
    static inline StartFigures ours;
};

testing::AssertionResult holds(const char* what, double ours, double limit, double bare)
{
    testing::Test::RecordProperty(what, std::to_string(ours));
    std::printf("%-40s %10.0f of at most %.0f (bare %.0f)\n", what, ours, limit, bare);
    if (ours <= limit)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << what << ": " << ours << ", at most " << limit << "; bare " << bare;
}

TEST_F(StartBudget, MapsFewFilesThatTheBareProgramDoesNot)
{
    const QStringList files = further(ours.filesMapped, bare.filesMapped);
    EXPECT_TRUE(holds("files mapped beyond the bare program's", static_cast<double>(files.size()),
                      furtherFilesMapped, 0))
        << qPrintable(files.join(u'\n'))
        << "\nDon't link a library for one feature's sake, or load it when the feature is turned on.";
}

TEST_F(StartBudget, OpensFewFilesThatTheBareProgramDoesNot)
{
    const QStringList files = further(ours.filesOpened, bare.filesOpened);
    EXPECT_TRUE(holds("files opened beyond the bare program's", static_cast<double>(files.size()),
                      furtherFilesOpened, 0))
        << qPrintable(files.join(u'\n')) << "\nRead a file when the feature that wants it is on.";
}

TEST_F(StartBudget, HasFewThreads)
{
    EXPECT_TRUE(holds("threads", ours.threads, bare.threads + furtherThreads, bare.threads))
        << "A thread is started by the feature that needs it, when it is turned on.";
}

TEST_F(StartBudget, NeedsFewRelocations)
{
    ASSERT_GT(bare.relocations, 0);
    EXPECT_TRUE(holds("relocations before main()", static_cast<double>(ours.relocations),
                      relocationsOfBare * static_cast<double>(bare.relocations),
                      static_cast<double>(bare.relocations)))
        << "Each pointer in a constant table and each library costs some: keep text in tables in place.";
}

TEST_F(StartBudget, WritesToLittleMemory)
{
    ASSERT_GT(bare.written, 0);
    EXPECT_TRUE(holds("kilobytes written to", static_cast<double>(ours.written),
                      writtenOfBare * static_cast<double>(bare.written), static_cast<double>(bare.written)))
        << "Features that are off make nothing but what describes them; views are made when they are shown.";
}

TEST_F(StartBudget, KeepsLittleOfItsOwnFileInMemory)
{
#ifndef NDEBUG
    GTEST_SKIP() << "Only optimized builds put the functions of the start together";
#endif
    ASSERT_GT(ours.ownFile, 0);
    EXPECT_TRUE(holds("kilobytes of its own file in memory", static_cast<double>(ours.ownFile),
                      kilobytesOfOwnFile, static_cast<double>(bare.ownFile)))
        << "Functions of the start lie together in the file: run Tools/start-order after adding some.";
}

} // namespace
} // namespace orvane::tests
