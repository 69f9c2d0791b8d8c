// Automation of the file manager, on session buses that are made for each case.
#include "PlatformLinux/Session/FileManagerAutomation.h"
#include "Contract/Support/PrivateBus.h"
#include "Support/Eventually.h"

#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <QFile>
#include <QTemporaryDir>

#include <atomic>
#include <csignal>
#include <thread>

#include <gmock/gmock.h>

namespace orvane::tests {

namespace {

constexpr auto deadline = 10s;
const QString fileManager = QStringLiteral("org.freedesktop.FileManager1");

} // namespace

TEST(FileManagerAutomation, WithoutAFileManagerItIsNotThere)
{
    PrivateBus bus;
    FileManagerAutomation automation(bus.connection());
    EXPECT_EQ(automation.status(), Permissions::procNotFound);
    EXPECT_EQ(automation.askAndStart(), Permissions::procNotFound);
}

TEST(FileManagerAutomation, OneThatComesAndGoesIsFollowed)
{
    PrivateBus bus;
    FileManagerAutomation automation(bus.connection());
    ASSERT_EQ(automation.status(), Permissions::procNotFound);
    QDBusConnection manager = bus.connection();
    ASSERT_TRUE(manager.registerService(fileManager));
    EXPECT_TRUE(eventually(deadline, [&] { return automation.status() == Permissions::noErr; }));
    manager.unregisterService(fileManager);
    EXPECT_TRUE(eventually(deadline, [&] { return automation.status() == Permissions::procNotFound; }));
}

TEST(FileManagerAutomation, ABusThatRefusesIsADenial)
{
    PrivateBus bus(QStringLiteral("<deny send_destination='org.freedesktop.FileManager1'/>"));
    ASSERT_TRUE(bus.connection().registerService(fileManager));
    FileManagerAutomation automation(bus.connection());
    EXPECT_EQ(automation.status(), Permissions::errAEEventNotPermitted);
    EXPECT_EQ(automation.askAndStart(), Permissions::errAEEventNotPermitted);
    EXPECT_EQ(automation.status(), Permissions::errAEEventNotPermitted);
}

TEST(FileManagerAutomation, OneThatCouldBeStartedCountsAndIsNotStartedByReading)
{
    QTemporaryDir directory;
    const QString witness = directory.filePath(u"started"_qs);
    PrivateBus bus({}, {{fileManager, QStringLiteral("/usr/bin/touch ") + witness}});
    FileManagerAutomation automation(bus.connection());
    EXPECT_EQ(automation.status(), Permissions::noErr);
    EXPECT_FALSE(QFile::exists(witness));
}

TEST(FileManagerAutomation, APromptStartsIt)
{
    PrivateBus bus(
        {}, {{fileManager,
              QStringLiteral("/usr/bin/python3 -m dbusmock --session %1 /org/freedesktop/FileManager1 %1")
                  .arg(fileManager)}});
    FileManagerAutomation automation(bus.connection());
    EXPECT_EQ(automation.askAndStart(), Permissions::noErr);
    EXPECT_TRUE(bus.connection().interface()->isServiceRegistered(fileManager));
}

TEST(FileManagerAutomation, OneThatFailsToStartIsNotThere)
{
    PrivateBus bus({}, {{fileManager, QStringLiteral("/bin/false")}});
    FileManagerAutomation automation(bus.connection());
    ASSERT_EQ(automation.status(), Permissions::noErr);
    EXPECT_EQ(automation.askAndStart(), Permissions::procNotFound);
    EXPECT_EQ(automation.status(), Permissions::procNotFound);
}

TEST(FileManagerAutomation, AQuestionToOneThatHangsIsGivenUpAtOnce)
{
    PrivateBus bus(
        {}, {{fileManager,
              QStringLiteral("/usr/bin/python3 -m dbusmock --session %1 /org/freedesktop/FileManager1 %1")
                  .arg(fileManager)}});
    FileManagerAutomation automation(bus.connection());
    ASSERT_EQ(automation.askAndStart(), Permissions::noErr);
    const QDBusReply<uint> process = bus.connection().interface()->servicePid(fileManager);
    ASSERT_TRUE(process.isValid());
    const auto hung = static_cast<pid_t>(process.value());
    ASSERT_EQ(::kill(hung, SIGSTOP), 0);

    std::atomic<Permissions::OSStatus> answer = Permissions::noErr;
    std::atomic_bool hasEnded = false;
    std::thread asking([&] {
        answer = automation.askAndStart();
        hasEnded = true;
    });
    automation.giveUp();
    EXPECT_TRUE(eventually(5s, [&] { return hasEnded.load(); }));
    asking.join();
    EXPECT_EQ(answer, FileManagerAutomation::errAETimeout);
    EXPECT_EQ(automation.askAndStart(), FileManagerAutomation::errAETimeout) << "nobody waits from then on";
    ::kill(hung, SIGKILL);
}

TEST(FileManagerAutomation, WithoutASessionBusItIsNotThere)
{
    FileManagerAutomation automation(
        QDBusConnection::connectToBus(QStringLiteral("unix:path=/nonexistent"), QStringLiteral("none")));
    EXPECT_EQ(automation.status(), Permissions::procNotFound);
    EXPECT_EQ(automation.askAndStart(), Permissions::procNotFound);
    QDBusConnection::disconnectFromBus(QStringLiteral("none"));
}

} // namespace orvane::tests
