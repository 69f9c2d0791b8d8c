#include "PlatformLinux/Files/AutostartLoginItem.h"
#include "ChildProcess.h"
#include "Platform/PlatformError.h"
#include "PlatformLinux/Files/DesktopEntry.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <csignal>

#include <sys/resource.h>
#include <sys/stat.h>

namespace orvane::tests {

using Status = LoginItem::Status;

class AutostartLoginItemTest : public ::testing::Test {
protected:
    AutostartLoginItem item(const QStringList& desktops = {})
    {
        return {XdgDirectories{directory.path(), directory.path()}, program, desktops};
    }
    [[nodiscard]] QString path() const
    {
        return directory.filePath(QStringLiteral("autostart/net.lindenrow.orvane.desktop"));
    }
    [[nodiscard]] QByteArray content() const
    {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void write(const QByteArray& text)
    {
        QDir().mkpath(QFileInfo(path()).path());
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        ASSERT_EQ(file.write(text), text.size());
    }
    /// Returns the status with the entry of a session that starts /bin/sh, with more lines.
    Status statusWith(const QByteArray& lines, const QStringList& desktops = {})
    {
        write("[Desktop Entry]\nType=Application\nName=Orvane\nExec=/bin/sh\n" + lines + "\n");
        return item(desktops).status();
    }

    QTemporaryDir directory;
    QString program = QStringLiteral("/bin/sh");
};

TEST_F(AutostartLoginItemTest, TheEntryIsValidForTheDesktopsOwnTools)
{
    const QString validator = QStandardPaths::findExecutable(QStringLiteral("desktop-file-validate"));
    if (validator.isEmpty())
        GTEST_SKIP() << "desktop-file-validate is not installed.";
    for (const QString& name :
         {QStringLiteral("/bin/sh"), QStringLiteral("/opt/my \"$progs\" `a`\\b%/x;y#(z)'")}) {
        program = name;
        item().registerItem();
        QProcess process;
        process.start(validator, {path()});
        ASSERT_TRUE(process.waitForFinished());
        EXPECT_EQ(process.exitCode(), 0)
            << process.readAllStandardOutput().toStdString() << content().toStdString();
    }
}

TEST_F(AutostartLoginItemTest, AnEntryOfAnEarlierVersionIsBroughtUpToDateAndNoOther)
{
    AutostartLoginItem entry = item();
    entry.renew();
    EXPECT_TRUE(content().isEmpty()) << "there was none";
    entry.registerItem();
    const QByteArray present = content();
    QByteArray earlier = present;
    earlier.replace(" --at-login", "");
    ASSERT_NE(earlier, present);
    write(earlier);
    entry.renew();
    EXPECT_EQ(content(), present);

    const QByteArray switchedOff = earlier + "Hidden=true\n";
    QByteArray ofAnother = earlier;
    ofAnother.replace("/bin/sh", "/bin/ls");
    for (const QByteArray& other : {switchedOff, ofAnother, QByteArray()}) {
        write(other);
        entry.renew();
        EXPECT_EQ(content(), other);
    }
}

TEST_F(AutostartLoginItemTest, AnyExecutablePathComesBackFromItsEntry)
{
    for (const QString& name :
         {QStringLiteral("dir with space"), QStringLiteral("100%f"), QStringLiteral("a\"b$c`d\\e"),
          QStringLiteral("\u00fc;#(x)'"), QStringLiteral("line\nbreak"), QStringLiteral("kept\u00a0together"),
          QStringLiteral("carriage\rreturn")}) {
        program = directory.filePath(name);
        ASSERT_TRUE(QFile::copy(QStringLiteral("/bin/true"), program));
        ASSERT_EQ(::chmod(QFile::encodeName(program).constData(), 0755), 0);
        item().registerItem();
        const auto exec = DesktopEntry::parse(content()).string(QStringLiteral("Exec"));
        ASSERT_TRUE(exec);
        EXPECT_EQ(DesktopEntry::programOf(*exec), program);
        EXPECT_EQ(item().status(), Status::enabled);
    }
}

TEST_F(AutostartLoginItemTest, ThePlainPathIsWrittenPlainly)
{
    item().registerItem();
    EXPECT_TRUE(content().contains("\nExec=/bin/sh --at-login\n"));
    EXPECT_TRUE(content().contains("\nType=Application\n"));
}

TEST_F(AutostartLoginItemTest, QuotesFollowTheRulesOfDesktopEntries)
{
    EXPECT_EQ(DesktopEntry::quotedWord(QStringLiteral("/a b/c")), QStringLiteral("\"/a b/c\""));
    EXPECT_EQ(DesktopEntry::quotedWord(QStringLiteral("/a$b")), QStringLiteral("\"/a\\$b\""));
    EXPECT_EQ(DesktopEntry::quotedWord(QStringLiteral("/100%")), QStringLiteral("/100%%"));
    EXPECT_EQ(DesktopEntry::escaped(QStringLiteral("\"/a\\$b\"")), QStringLiteral("\"/a\\\\$b\""));
}

TEST_F(AutostartLoginItemTest, WhatSessionSettingsSwitchOffNeedsApprovalAndRegisteringRepairsIt)
{
    item().registerItem();
    for (const QByteArray& line : {QByteArray("Hidden=true"), QByteArray("Hidden = true "),
                                   QByteArray("X-GNOME-Autostart-enabled=false")}) {
        EXPECT_EQ(statusWith(line), Status::requiresApproval) << line.toStdString();
        item().registerItem();
        EXPECT_EQ(item().status(), Status::enabled);
    }
}

TEST_F(AutostartLoginItemTest, AnEntryThatIsNotSwitchedOffIsEnabled)
{
    for (const QByteArray& lines :
         {QByteArray("Hidden=false"), QByteArray("#Hidden=true"), QByteArray("X-Hidden=true"),
          QByteArray("[Desktop Action x]\nHidden=true"), QByteArray("X-GNOME-Autostart-enabled=true"),
          QByteArray("TryExec=sh"), QByteArray("TryExec="), QByteArray("\r\n")})
        EXPECT_EQ(statusWith(lines), Status::enabled) << lines.toStdString();
}

TEST_F(AutostartLoginItemTest, DesktopsThatAreLeftOutDoNotStartIt)
{
    const QStringList xfce = {QStringLiteral("XFCE")};
    const QStringList ubuntu = {QStringLiteral("ubuntu"), QStringLiteral("GNOME")};
    EXPECT_EQ(statusWith("OnlyShowIn=GNOME;KDE;", xfce), Status::requiresApproval);
    EXPECT_EQ(statusWith("OnlyShowIn=GNOME;KDE;", ubuntu), Status::enabled);
    EXPECT_EQ(statusWith("OnlyShowIn=GNOME;", {}), Status::enabled); // no desktop is known, so the
                                                                     // restriction isn't judged
    EXPECT_EQ(statusWith("NotShowIn=XFCE;", xfce), Status::requiresApproval);
    EXPECT_EQ(statusWith("NotShowIn=XFCE;", ubuntu), Status::enabled);
}

TEST_F(AutostartLoginItemTest, AnEntryWhoseProgramIsGoneIsNotFound)
{
    EXPECT_EQ(statusWith("TryExec=/nonexistent/orvane"), Status::notFound);
    EXPECT_EQ(statusWith("TryExec=no-such-program-anywhere"), Status::notFound);
    write("[Desktop Entry]\nExec=\"/nonexistent/or vane\"\n");
    EXPECT_EQ(item().status(), Status::notFound);
    for (const QByteArray& text :
         {QByteArray(), QByteArray("Exec=/bin/sh"), QByteArray("[Desktop Entry]\nExec=\n"),
          QByteArray("[Desktop Entry]\nExec=\"/bin/sh\n"), QByteArray(2'000'000, '=')}) {
        write(text);
        EXPECT_EQ(item().status(), Status::notFound) << text.left(80).toStdString();
    }
    item().registerItem();
    EXPECT_EQ(item().status(), Status::enabled);
}

TEST_F(AutostartLoginItemTest, ALinkIsFollowedByRegisteringAndRemovedItselfByUnregistering)
{
    const QString target = directory.filePath(QStringLiteral("managed.desktop"));
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path()).path()));
    ASSERT_TRUE(QFile::link(target, path()));
    EXPECT_EQ(item().status(), Status::notFound);
    item().registerItem();
    EXPECT_TRUE(QFileInfo(path()).isSymLink());
    EXPECT_EQ(item().status(), Status::enabled);
    item().unregisterItem();
    EXPECT_TRUE(QFileInfo::exists(target));
    EXPECT_EQ(item().status(), Status::notRegistered);
}

TEST_F(AutostartLoginItemTest, WithoutAHomeItSaysUnsupported)
{
    AutostartLoginItem homeless({}, program, {});
    EXPECT_EQ(homeless.status(), Status::notRegistered);
    for (const auto& action : {&AutostartLoginItem::registerItem, &AutostartLoginItem::unregisterItem}) {
        try {
            (homeless.*action)();
            ADD_FAILURE() << "no error";
        } catch (const PlatformError& error) {
            EXPECT_EQ(error.kind(), PlatformError::Kind::unsupported);
        }
    }
}

TEST_F(AutostartLoginItemTest, AFailedWriteThrowsAndLeavesWhatWasThere)
{
    write("[Desktop Entry]\nExec=/bin/sh\nHidden=true\n");
    const QByteArray before = content();
    const std::string complaint = inChild([&]() -> std::string {
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit = {16, 16};
        ORVANE_REQUIRE(::setrlimit(RLIMIT_FSIZE, &limit) == 0);
        try {
            item().registerItem();
        } catch (const PlatformError& error) {
            return error.kind() == PlatformError::Kind::failed ? "" : "wrong kind";
        }
        return "no error";
    });
    EXPECT_EQ(complaint, "");
    EXPECT_EQ(content(), before);
    EXPECT_EQ(QDir(QFileInfo(path()).path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
    EXPECT_EQ(item().status(), Status::requiresApproval);
}

TEST_F(AutostartLoginItemTest, AFolderWithoutPermissionIsToldAsSuchForBothOperations)
{
    item().registerItem();
    const QByteArray before = content();
    const std::string complaint = inChild([&]() -> std::string {
        // The child can enter the folder, but not change it.
        for (const QString& folder : {directory.path(), QFileInfo(path()).path()})
            ORVANE_REQUIRE(::chmod(QFile::encodeName(folder).constData(), 0555) == 0);
        ORVANE_REQUIRE(becomeUnprivileged());
        for (const auto& action : {&AutostartLoginItem::registerItem, &AutostartLoginItem::unregisterItem}) {
            try {
                auto loginItem = item();
                (loginItem.*action)();
                return "no error";
            } catch (const PlatformError& error) {
                ORVANE_REQUIRE(error.kind() == PlatformError::Kind::notPermitted);
            }
            ORVANE_REQUIRE(item().status() == Status::enabled);
        }
        return {};
    });
    for (const QString& folder : {directory.path(), QFileInfo(path()).path()})
        EXPECT_EQ(::chmod(QFile::encodeName(folder).constData(), 0755), 0);
    EXPECT_EQ(complaint, "");
    EXPECT_EQ(content(), before);
}

TEST_F(AutostartLoginItemTest, ADirectoryInItsPlaceIsNotTouched)
{
    ASSERT_TRUE(QDir().mkpath(path()));
    EXPECT_EQ(item().status(), Status::notFound);
    auto loginItem = item();
    EXPECT_THROW(loginItem.registerItem(), PlatformError);
    EXPECT_THROW(loginItem.unregisterItem(), PlatformError);
    EXPECT_TRUE(QFileInfo(path()).isDir());
}

TEST_F(AutostartLoginItemTest, ItIsReadableForTheSession)
{
    item().registerItem();
    struct stat status = {};
    ASSERT_EQ(::stat(QFile::encodeName(path()).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0644u);
}

} // namespace orvane::tests
