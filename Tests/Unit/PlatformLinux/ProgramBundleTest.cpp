#include "PlatformLinux/Files/ProgramBundle.h"
#include "ChildProcess.h"
#include "PlatformLinux/Common/XdgDirectories.h"
#include "PlatformLinux/Files/XdgFileManager.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <csignal>

#include <sys/stat.h>

namespace orvane::tests {

namespace {

/// A program that runs from a file of the test until it is killed.
class RunningProgram {
public:
    explicit RunningProgram(const QString& path)
    {
        EXPECT_TRUE(QFile::copy(QStringLiteral("/bin/cat"), path));
        EXPECT_EQ(::chmod(QFile::encodeName(path).constData(), 0755), 0);
        m_process.start(path, QStringList()); // waits for its input
        EXPECT_TRUE(m_process.waitForStarted());
    }
    ~RunningProgram()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    [[nodiscard]] QString link() const { return QStringLiteral("/proc/%1/exe").arg(m_process.processId()); }

private:
    QProcess m_process;
};

} // namespace

TEST(ProgramBundle, KnowsItsIdentifierVersionAndExecutable)
{
    const ProgramBundle bundle;
    EXPECT_EQ(bundle.identifier(), QStringLiteral("net.lindenrow.orvane"));
    EXPECT_EQ(bundle.infoValue(QStringLiteral("CFBundleShortVersionString")),
              QVariant(QStringLiteral(ORVANE_VERSION)));
    EXPECT_FALSE(bundle.infoValue(QStringLiteral("NoSuchKey")).isValid());
    EXPECT_EQ(bundle.path(), QFileInfo(QCoreApplication::applicationFilePath()).canonicalFilePath());
}

TEST(ProgramBundle, AnExecutableThatAnUpdateReplacedIsNamedByItsPath)
{
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("my program"));
    const RunningProgram program(path);
    EXPECT_EQ(ProgramBundle::executablePath(program.link()), path);
    ASSERT_TRUE(QFile::remove(path));
    EXPECT_EQ(ProgramBundle::executablePath(program.link()), path);
    ASSERT_TRUE(QFile::copy(QStringLiteral("/bin/true"), path));
    EXPECT_EQ(ProgramBundle::executablePath(program.link()), path);
}

TEST(ProgramBundle, ANameThatEndsLikeTheKernelsMarkIsKept)
{
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("program (deleted)"));
    const RunningProgram program(path);
    EXPECT_EQ(ProgramBundle::executablePath(program.link()), path);
}

TEST(ProgramBundle, AnUnreadableLinkGivesNoPath)
{
    EXPECT_EQ(ProgramBundle::executablePath(QStringLiteral("/nonexistent/exe")), QString());
}

class XdgDirectoriesTest : public ::testing::Test {
protected:
    void setHome(const QString& value) { environment.insert(QStringLiteral("HOME"), value); }
    void setData(const QString& value) { environment.insert(QStringLiteral("XDG_DATA_HOME"), value); }
    [[nodiscard]] std::optional<QString> data(const QString& accountHome = {}) const
    {
        return XdgDirectories::from(environment, accountHome).data;
    }

    QProcessEnvironment environment;
};

TEST_F(XdgDirectoriesTest, TheVariableComesBeforeTheHome)
{
    setHome(QStringLiteral("/home/u"));
    EXPECT_EQ(data(), QStringLiteral("/home/u/.local/share"));
    EXPECT_EQ(XdgDirectories::from(environment, {}).config, QStringLiteral("/home/u/.config"));
    setData(QStringLiteral("/data/"));
    EXPECT_EQ(data(), QStringLiteral("/data"));
}

TEST_F(XdgDirectoriesTest, ARelativeOrEmptyVariableIsIgnored)
{
    setHome(QStringLiteral("/home/u"));
    for (const QString& value : {QStringLiteral("data"), QStringLiteral("./data"), QStringLiteral("~/data"),
                                 QString(), QStringLiteral(":/resource")}) {
        setData(value);
        EXPECT_EQ(data(), QStringLiteral("/home/u/.local/share")) << value.toStdString();
    }
}

TEST_F(XdgDirectoriesTest, TheAccountsHomeStandsInForAMissingOrRelativeOne)
{
    EXPECT_EQ(data(QStringLiteral("/home/account")), QStringLiteral("/home/account/.local/share"));
    setHome(QStringLiteral("relative"));
    EXPECT_EQ(data(QStringLiteral("/home/account")), QStringLiteral("/home/account/.local/share"));
}

TEST_F(XdgDirectoriesTest, WithoutAnyHomeThereIsNoFolderForApplicationSupport)
{
    EXPECT_EQ(data(), std::nullopt);
    EXPECT_TRUE(
        XdgFileManager(XdgDirectories::from(environment, {})).applicationSupportDirectories().isEmpty());
    setData(QStringLiteral("/data"));
    EXPECT_EQ(XdgFileManager(XdgDirectories::from(environment, {})).applicationSupportDirectories(),
              QStringList{QStringLiteral("/data")});
}

TEST_F(XdgDirectoriesTest, AProcessOfAnUnknownUserWithoutAnEnvironmentHasNone)
{
    const std::string complaint = inChild([]() -> std::string {
        if (::geteuid() != 0)
            return "SKIP";
        for (const char* variable : {"HOME", "XDG_DATA_HOME"})
            qunsetenv(variable);
        ORVANE_REQUIRE(::setresuid(3'999'999, 3'999'999, 3'999'999) == 0);
        ORVANE_REQUIRE(XdgFileManager().applicationSupportDirectories().isEmpty());
        return {};
    });
    if (complaint == "SKIP")
        GTEST_SKIP() << "Only root can become a user who isn't in the user database.";
    EXPECT_EQ(complaint, "");
}

} // namespace orvane::tests
