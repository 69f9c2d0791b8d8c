// A program that is killed or frozen together with its whole control group, as desktops do with those that
// they have started. A stand-in for the user's systemd moves the guardian out of that group.
#include "Contract/EventTapFixture.h"
#include "Contract/GuardianSearch.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QProcess>

#include <csignal>

namespace orvane::tests {
namespace {

constexpr const char* keyboard = "testkbd";
constexpr const char* xtestKeyboard = "Virtual core XTEST keyboard";

/// A control group of its own, which is removed when the object ends.
class ControlGroup {
public:
    explicit ControlGroup(const QString& name)
        : m_path(QStringLiteral("/sys/fs/cgroup/unified/orvane-%1-%2").arg(name).arg(::getpid()))
    {
        if (!QDir(QStringLiteral("/sys/fs/cgroup/unified")).exists())
            m_path.remove(QStringLiteral("/unified"));
        m_isThere = QDir().mkdir(m_path) && QFile::exists(m_path + QStringLiteral("/cgroup.kill"));
    }
    ~ControlGroup()
    {
        set("cgroup.freeze", "0");
        set("cgroup.kill", "1");
        EXPECT_TRUE(!m_isThere || eventually(10s, [&] { return QDir().rmdir(m_path); }));
    }
    ControlGroup(const ControlGroup&) = delete;
    ControlGroup& operator=(const ControlGroup&) = delete;

    /// False on systems that don't let the test make one.
    [[nodiscard]] bool isThere() const { return m_isThere; }
    bool take(qint64 process) { return set("cgroup.procs", QByteArray::number(process)); }
    bool freeze() { return set("cgroup.freeze", "1"); }
    bool killAll() { return set("cgroup.kill", "1"); }
    [[nodiscard]] bool has(qint64 process) const
    {
        QFile file(m_path + QStringLiteral("/cgroup.procs"));
        return file.open(QIODevice::ReadOnly) &&
               file.readAll().split('\n').contains(QByteArray::number(process));
    }

private:
    bool set(const char* attribute, const QByteArray& value)
    {
        QFile file(m_path + QLatin1Char('/') + QLatin1String(attribute));
        return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write(value) == value.size();
    }

    QString m_path;
    bool m_isThere = false;
};

/// Takes the processes of each new unit into the group of the units.
class StandInForSystemd : public QDBusVirtualObject {
public:
    explicit StandInForSystemd(ControlGroup& units) : m_units(units)
    {
        EXPECT_TRUE(m_bus.registerVirtualObject(QStringLiteral("/org/freedesktop/systemd1"), this));
        EXPECT_TRUE(m_bus.registerService(QStringLiteral("org.freedesktop.systemd1")));
    }
    ~StandInForSystemd() override { QDBusConnection::disconnectFromBus(m_bus.name()); }

    [[nodiscard]] const QStringList& started() const { return m_started; }

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override
    {
        if (message.member() != QStringLiteral("StartTransientUnit") ||
            message.signature() != QStringLiteral("ssa(sv)a(sa(sv))"))
            return false;
        m_started.append(message.arguments().first().toString());
        const auto properties = message.arguments().at(2).value<QDBusArgument>();
        properties.beginArray();
        while (!properties.atEnd()) {
            QString name;
            QDBusVariant value;
            properties.beginStructure();
            properties >> name >> value;
            properties.endStructure();
            if (name == QStringLiteral("PIDs")) {
                for (const uint process : qdbus_cast<QList<uint>>(value.variant()))
                    m_units.take(process);
            }
        }
        properties.endArray();
        return bus.send(message.createReply(QVariant::fromValue(QDBusObjectPath(QStringLiteral("/job/1")))));
    }

private:
    ControlGroup& m_units;
    QStringList m_started;
    QDBusConnection m_bus =
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("stand-in-for-systemd"));
};

class EventTapControlGroupTest : public EventTapFixture, protected GuardianSearch {
protected:
    void SetUp() override
    {
        if (!desktopsGroup.isThere() || !units.isThere())
            GTEST_SKIP() << "no control group can be made here";
    }
    /// Starts a program with a tap in the desktop's group.
    void startProgram()
    {
        program.start(
            QStringLiteral("sh"),
            {QStringLiteral("-c"), QStringLiteral("read go; exec ") + QStringLiteral(ORVANE_EVENT_TAP_PEER)});
        ASSERT_TRUE(program.waitForStarted());
        ASSERT_TRUE(desktopsGroup.take(program.processId()));
        program.write("go\n");
        ASSERT_TRUE(eventually(20s, [&] { return program.readAllStandardOutput().contains("ready"); }))
            << program.readAllStandardError().toStdString();
        guardian = guardianOf(program.processId());
        ASSERT_NE(guardian, 0);
    }
    /// True once the program is gone.
    bool programEnds()
    {
        return eventually(10s, [&] { return program.state() == QProcess::NotRunning; });
    }

    ControlGroup desktopsGroup{QStringLiteral("app")};
    ControlGroup units{QStringLiteral("units")};
    QProcess program;
    qint64 guardian = 0;
};

TEST_F(EventTapControlGroupTest, AKillOfTheGroupLeavesTheGuardianToReleaseTheKeys)
{
    StandInForSystemd systemd(units);
    startProgram();
    ASSERT_TRUE(eventually(10s, [&] { return units.has(guardian); }));
    // On a busy machine there may have been a guardian of an attempt that came to nothing.
    EXPECT_EQ(systemd.started().last(), QStringLiteral("orvane-guardian-%1.scope").arg(guardian));
    EXPECT_FALSE(desktopsGroup.has(guardian));
    hardware.press(key::shiftL);
    hardware.press(key::a);
    keysOnce(2);
    ASSERT_TRUE(desktopsGroup.killAll());
    EXPECT_TRUE(eventually(10s, [&] { return other.keysDown(xtestKeyboard).isEmpty(); }));
    hardware.release(key::a);
    hardware.release(key::shiftL);
    EXPECT_TRUE(programEnds());
    EXPECT_TRUE(eventually(10s, [&] { return !isAlive(guardian); }));
}

TEST_F(EventTapControlGroupTest, AFrozenGroupIsFreedOfTheKeyboard)
{
    StandInForSystemd systemd(units);
    startProgram();
    ASSERT_TRUE(eventually(10s, [&] { return units.has(guardian); }));
    hardware.press(key::shiftL);
    keysOnce(1);
    ASSERT_TRUE(desktopsGroup.freeze());
    EXPECT_TRUE(eventually(10s, [&] {
        hardware.tap(key::b); // one that comes soon after another isn't looked at
        return !other.isFloating(keyboard);
    }));
    EXPECT_TRUE(eventually(10s, [&] { return other.keysDown(xtestKeyboard).isEmpty(); }));
    EXPECT_TRUE(eventually(10s, [&] { return other.keysDown() == QList<int>{key::shiftL}; }));
    hardware.tap(key::a);
    EXPECT_TRUE(eventually(10s, [&] { return window.typed().endsWith("A"); })) << window.typed().data();
    hardware.release(key::shiftL);
    ASSERT_TRUE(desktopsGroup.killAll());
    EXPECT_TRUE(programEnds());
}

TEST_F(EventTapControlGroupTest, WithoutSystemdWhatBothLeftIsReleasedByTheNextStart)
{
    startProgram();
    ASSERT_TRUE(desktopsGroup.has(guardian));
    hardware.press(key::shiftL);
    keysOnce(1);
    ASSERT_TRUE(desktopsGroup.killAll());
    ASSERT_TRUE(programEnds());
    hardware.release(key::shiftL);
    EXPECT_EQ(other.keysDown(xtestKeyboard), QList<int>{key::shiftL}) << "nobody is there to release it";
    LambdaTap tap(taps);
    EXPECT_TRUE(eventually(10s, [&] { return other.keysDown(xtestKeyboard).isEmpty(); }));
    hardware.tap(key::a);
    EXPECT_TRUE(eventually(10s, [&] { return window.typed() == "a"; })) << window.typed().data();
}

} // namespace
} // namespace orvane::tests
