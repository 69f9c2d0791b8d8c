// Automation of the file manager, on session buses that are made for each case.
#include "PlatformLinux/Session/FileManagerAutomation.h"
#include "Contract/Support/ForeignProgram.h"
#include "Support/Eventually.h"

#include <QDBusConnectionInterface>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace orvane::tests {

namespace {

constexpr auto deadline = 10s;
const QString fileManager = QStringLiteral("org.freedesktop.FileManager1");

/// A separate bus with connections to it; all are closed at the end.
class PrivateBus {
public:
    explicit PrivateBus(const QString& policy = {}, const QString& startableProgram = {})
    {
        QDir().mkpath(m_directory.filePath(u"services"_qs));
        write(u"bus.conf"_qs,
              QStringLiteral("<busconfig><type>session</type><listen>%1</listen><servicedir>%2</servicedir>"
                             "<policy context='default'><allow send_destination='*'/>"
                             "<allow receive_sender='*'/><allow own='*'/>%3</policy>"
                             "</busconfig>")
                  .arg(address(), m_directory.filePath(u"services"_qs), policy));
        if (!startableProgram.isEmpty()) {
            write(u"services/fm.service"_qs,
                  QStringLiteral("[D-BUS Service]\nName=%1\nExec=%2\n").arg(fileManager, startableProgram));
        }
        m_daemon.emplace(u"dbus-daemon"_qs, QStringList{u"--nofork"_qs, u"--config-file"_qs,
                                                        m_directory.filePath(u"bus.conf"_qs)});
        EXPECT_TRUE(
            eventually(deadline, [this] { return QFile::exists(m_directory.filePath(u"socket"_qs)); }));
    }

    ~PrivateBus()
    {
        for (const QString& name : m_connections)
            QDBusConnection::disconnectFromBus(name);
    }

    QDBusConnection connection()
    {
        static int number = 0;
        m_connections.append(QStringLiteral("private-%1").arg(++number));
        return QDBusConnection::connectToBus(address(), m_connections.last());
    }

private:
    [[nodiscard]] QString address() const
    {
        return QStringLiteral("unix:path=") + m_directory.filePath(u"socket"_qs);
    }

    void write(const QString& name, const QString& text)
    {
        QFile file(m_directory.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text.toUtf8());
    }

    QTemporaryDir m_directory;
    std::optional<ForeignProgram> m_daemon;
    QStringList m_connections;
};

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
    PrivateBus bus({}, QStringLiteral("/usr/bin/touch ") + witness);
    FileManagerAutomation automation(bus.connection());
    EXPECT_EQ(automation.status(), Permissions::noErr);
    EXPECT_FALSE(QFile::exists(witness));
}

TEST(FileManagerAutomation, APromptStartsIt)
{
    PrivateBus bus(
        {}, QStringLiteral("/usr/bin/python3 -m dbusmock --session %1 /org/freedesktop/FileManager1 %1")
                .arg(fileManager));
    FileManagerAutomation automation(bus.connection());
    EXPECT_EQ(automation.askAndStart(), Permissions::noErr);
    EXPECT_TRUE(bus.connection().interface()->isServiceRegistered(fileManager));
}

TEST(FileManagerAutomation, OneThatFailsToStartIsNotThere)
{
    PrivateBus bus({}, QStringLiteral("/bin/false"));
    FileManagerAutomation automation(bus.connection());
    ASSERT_EQ(automation.status(), Permissions::noErr);
    EXPECT_EQ(automation.askAndStart(), Permissions::procNotFound);
    EXPECT_EQ(automation.status(), Permissions::procNotFound);
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
