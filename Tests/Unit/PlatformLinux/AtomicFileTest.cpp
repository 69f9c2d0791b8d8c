#include "PlatformLinux/Common/AtomicFile.h"
#include "ChildProcess.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <csignal>
#include <system_error>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace orvane::tests {

namespace {

using Readers = AtomicFile::Readers;

class AtomicFileTest : public ::testing::Test {
protected:
    [[nodiscard]] QByteArray content(const QString& name) const
    {
        QFile file(directory.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<none>");
    }
    [[nodiscard]] QStringList names() const
    {
        return QDir(directory.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }
    [[nodiscard]] mode_t mode(const QString& name) const
    {
        struct stat status = {};
        return ::stat(QFile::encodeName(directory.filePath(name)).constData(), &status) == 0
                   ? status.st_mode & 0777
                   : 0;
    }

    QTemporaryDir directory;
    QString path = directory.filePath(QStringLiteral("file"));
};

int errorOf(const std::function<void()>& action)
{
    try {
        action();
    } catch (const std::system_error& error) {
        return error.code().value();
    }
    return 0;
}

} // namespace

TEST_F(AtomicFileTest, ReplacesTheWholeContentAndLeavesNothingBeside)
{
    AtomicFile::replace(path, QByteArray(100'000, 'a'), Readers::owner);
    AtomicFile::replace(path, "b", Readers::owner);
    EXPECT_EQ(content(QStringLiteral("file")), QByteArray("b"));
    EXPECT_EQ(names(), QStringList{QStringLiteral("file")});
}

TEST_F(AtomicFileTest, TheModeIsWhatWasAskedForWhateverTheUmask)
{
    const mode_t before = ::umask(0077);
    AtomicFile::replace(path, "a", Readers::everyone);
    EXPECT_EQ(mode(QStringLiteral("file")), 0644u);
    ::umask(0);
    AtomicFile::replace(path, "a", Readers::owner);
    EXPECT_EQ(mode(QStringLiteral("file")), 0600u);
    ::umask(before);
}

TEST_F(AtomicFileTest, TheTemporaryFileIsPrivateFromTheFirstMoment)
{
    const mode_t before = ::umask(0);
    const AtomicFile file(path, Readers::owner);
    ::umask(before);
    ASSERT_EQ(names().size(), 1);
    EXPECT_EQ(mode(names().first()), 0600u);
}

TEST_F(AtomicFileTest, WithoutACommitTheOldFileStays)
{
    AtomicFile::replace(path, "old", Readers::owner);
    {
        AtomicFile file(path, Readers::owner);
        file.write("new");
        EXPECT_EQ(names().size(), 2);
    }
    EXPECT_EQ(content(QStringLiteral("file")), QByteArray("old"));
    EXPECT_EQ(names().size(), 1);
}

TEST_F(AtomicFileTest, WhoHasTheOldFileOpenKeepsTheOldContent)
{
    AtomicFile::replace(path, "old", Readers::owner);
    QFile reader(path);
    ASSERT_TRUE(reader.open(QIODevice::ReadOnly));
    AtomicFile::replace(path, "new", Readers::owner);
    EXPECT_EQ(reader.readAll(), QByteArray("old"));
}

TEST_F(AtomicFileTest, LinksAreFollowedThroughSeveralStepsAndRelativePlaces)
{
    ASSERT_TRUE(QDir(directory.path()).mkdir(QStringLiteral("sub")));
    ASSERT_TRUE(QFile::link(QStringLiteral("sub/second"), path));
    ASSERT_TRUE(QFile::link(QStringLiteral("../target"), directory.filePath(QStringLiteral("sub/second"))));
    AtomicFile::replace(path, "a", Readers::owner);
    EXPECT_EQ(content(QStringLiteral("target")), QByteArray("a"));
    EXPECT_TRUE(QFileInfo(path).isSymLink());
    EXPECT_TRUE(QFileInfo(directory.filePath(QStringLiteral("sub/second"))).isSymLink());
}

TEST_F(AtomicFileTest, ALoopOfLinksIsAnError)
{
    ASSERT_TRUE(QFile::link(path, path));
    EXPECT_EQ(errorOf([&] { AtomicFile::replace(path, "a", Readers::owner); }), ELOOP);
}

TEST_F(AtomicFileTest, ADirectoryInItsPlaceOrNoFolderIsAnErrorAndLeavesNothing)
{
    ASSERT_TRUE(QDir().mkpath(path));
    EXPECT_EQ(errorOf([&] { AtomicFile::replace(path, "a", Readers::owner); }), EISDIR);
    EXPECT_EQ(names().size(), 1);
    EXPECT_EQ(errorOf([&] {
                  AtomicFile::replace(directory.filePath(QStringLiteral("none/file")), "a", Readers::owner);
              }),
              ENOENT);
}

TEST_F(AtomicFileTest, AFailedWriteKeepsTheOldFileAndRemovesTheNew)
{
    AtomicFile::replace(path, "old", Readers::owner);
    const std::string complaint = inChild([&]() -> std::string {
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit = {1000, 1000};
        ORVANE_REQUIRE(::setrlimit(RLIMIT_FSIZE, &limit) == 0);
        ORVANE_REQUIRE(errorOf([&] { AtomicFile::replace(path, QByteArray(5000, 'x'), Readers::owner); }) ==
                       EFBIG);
        return {};
    });
    EXPECT_EQ(complaint, "");
    EXPECT_EQ(content(QStringLiteral("file")), QByteArray("old"));
    EXPECT_EQ(names().size(), 1);
}

TEST_F(AtomicFileTest, AFolderWithoutPermissionIsAnError)
{
    ASSERT_EQ(::chmod(QFile::encodeName(directory.path()).constData(), 0555), 0);
    const std::string complaint = inChild([&]() -> std::string {
        ORVANE_REQUIRE(becomeUnprivileged());
        ORVANE_REQUIRE(errorOf([&] { AtomicFile::replace(path, "a", Readers::owner); }) == EACCES);
        return {};
    });
    ASSERT_EQ(::chmod(QFile::encodeName(directory.path()).constData(), 0755), 0);
    EXPECT_EQ(complaint, "");
    EXPECT_TRUE(names().isEmpty());
}

TEST_F(AtomicFileTest, LeftoversOfAKilledWriterAreToldFromTheFileOfALivingOne)
{
    ChildProcess killed([&](int toParent) {
        AtomicFile file(path, Readers::owner);
        file.write("half");
        sendByte(toParent);
        ::raise(SIGKILL);
        return 0;
    });
    ASSERT_TRUE(killed.readByte());
    killed.wait();
    AtomicFile alive(path, Readers::owner);
    EXPECT_EQ(names().size(), 2);
    AtomicFile::removeLeftovers(path);
    EXPECT_EQ(names().size(), 1);
    alive.write("whole");
    alive.commit();
    EXPECT_EQ(content(QStringLiteral("file")), QByteArray("whole"));
}

TEST_F(AtomicFileTest, MakingAFolderMakesThoseAboveForTheUserAlone)
{
    makeDirectory(directory.filePath(QStringLiteral("a/b/c")));
    EXPECT_EQ(mode(QStringLiteral("a")), 0700u);
    EXPECT_EQ(mode(QStringLiteral("a/b/c")), 0700u);
    makeDirectory(directory.filePath(QStringLiteral("a/b/c")));
}

} // namespace orvane::tests
