#include "Desktop/Support/Logind.h"
#include "Desktop/Support/ScreenSaver.h"
#include "Fakes/FakeLogSink.h"
#include "Fakes/FakePowerAssertions.h"
#include "PlatformLinux/Session/LogindPowerAssertions.h"
#include "Support/Eventually.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QMap>
#include <QSet>

#include <gmock/gmock.h>

#include <memory>
#include <stdexcept>

#include <unistd.h>

namespace orvane::tests {

namespace {

constexpr auto deadline = 10s;
constexpr auto systemSleep = PowerAssertionType::preventUserIdleSystemSleep;
constexpr auto displaySleep = PowerAssertionType::preventUserIdleDisplaySleep;
constexpr auto on = PowerAssertions::levelOn;

/// Power assertions, and the system's view of them.
class Subject {
public:
    virtual ~Subject() = default;
    virtual PowerAssertions& assertions() = 0;
    /// Returns the sorted names of those that are held.
    virtual QStringList held() = 0;
};

class FakeSubject : public Subject {
public:
    PowerAssertions& assertions() override { return m_assertions; }

    QStringList held() override
    {
        QStringList names;
        for (const auto& [id, assertion] : m_assertions.held)
            names.append(assertion.name);
        names.sort();
        return names;
    }

private:
    FakePowerAssertions m_assertions;
};

QList<Inhibitor> inhibitorsOfThisProcess()
{
    QList<Inhibitor> ours;
    for (const Inhibitor& inhibitor : inhibitors().value_or(QList<Inhibitor>())) {
        if (inhibitor.pid == static_cast<quint32>(::getpid()))
            ours.append(inhibitor);
    }
    return ours;
}

class LinuxSubject : public Subject {
public:
    PowerAssertions& assertions() override { return m_assertions; }

    QStringList held() override
    {
        QStringList names;
        for (const Inhibitor& inhibitor : inhibitorsOfThisProcess())
            names.append(inhibitor.why);
        names.sort();
        return names;
    }

private:
    FakeLogSink m_log;
    LogindPowerAssertions m_assertions{m_log};
};

struct Implementation {
    const char* name;
    std::unique_ptr<Subject> (*make)();
};

} // namespace

class PowerAssertionsContract : public ::testing::TestWithParam<Implementation> {
protected:
    PowerAssertions& assertions() { return m_subject->assertions(); }
    bool holds(const QStringList& names)
    {
        return eventually(deadline, [&] { return m_subject->held() == names; });
    }

    std::unique_ptr<Subject> m_subject = GetParam().make();
};

INSTANTIATE_TEST_SUITE_P(Platforms, PowerAssertionsContract,
                         ::testing::Values(Implementation{"Fake",
                                                          []() -> std::unique_ptr<Subject> {
                                                              return std::make_unique<FakeSubject>();
                                                          }},
                                           Implementation{"Linux",
                                                          []() -> std::unique_ptr<Subject> {
                                                              return std::make_unique<LinuxSubject>();
                                                          }}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_P(PowerAssertionsContract, ACreatedAssertionIsHeldUnderItsName)
{
    for (const auto type : {systemSleep, displaySleep}) {
        const auto result = assertions().createWithName(type, on, u"Reading"_qs);
        EXPECT_EQ(result.status, PowerAssertions::Status::success);
        EXPECT_NE(result.id, 0u);
        EXPECT_TRUE(holds({u"Reading"_qs}));
        assertions().release(result.id);
        EXPECT_TRUE(holds({}));
    }
}

TEST_P(PowerAssertionsContract, AssertionsAreHeldIndependently)
{
    const auto first = assertions().createWithName(systemSleep, on, u"First"_qs);
    const auto second = assertions().createWithName(displaySleep, on, u"Second"_qs);
    EXPECT_NE(first.id, second.id);
    EXPECT_TRUE(holds({u"First"_qs, u"Second"_qs}));
    assertions().release(first.id);
    EXPECT_TRUE(holds({u"Second"_qs}));
    assertions().release(second.id);
    EXPECT_TRUE(holds({}));
}

TEST_P(PowerAssertionsContract, AnUnknownIdChangesNothing)
{
    const auto result = assertions().createWithName(systemSleep, on, u"Kept"_qs);
    assertions().release(0);
    assertions().release(result.id + 1);
    EXPECT_TRUE(holds({u"Kept"_qs}));
    assertions().release(result.id);
    assertions().release(result.id);
    EXPECT_TRUE(holds({}));
}

TEST_P(PowerAssertionsContract, AnIdIsNotUsedAgain)
{
    QSet<PowerAssertionID> ids;
    for (int i = 0; i < 3; ++i) {
        const auto result = assertions().createWithName(systemSleep, on, u"Again"_qs);
        EXPECT_FALSE(ids.contains(result.id));
        ids.insert(result.id);
        assertions().release(result.id);
    }
}

TEST(LogindPowerAssertions, TheMachineIsHeldFromIdlenessAndNotFromASuspendThatIsAskedFor)
{
    FakeLogSink log;
    LogindPowerAssertions assertions(log);
    for (const auto type : {systemSleep, displaySleep}) {
        const auto result = assertions.createWithName(type, on, u"Machine"_qs);
        ASSERT_EQ(inhibitorsOfThisProcess().size(), 1);
        EXPECT_EQ(inhibitorsOfThisProcess()[0].what, u"idle"_qs);
        EXPECT_EQ(inhibitorsOfThisProcess()[0].who, u"Orvane"_qs);
        EXPECT_EQ(inhibitorsOfThisProcess()[0].mode, u"block"_qs);
        assertions.release(result.id);
        ASSERT_TRUE(eventually(deadline, [] { return inhibitorsOfThisProcess().isEmpty(); }));
    }
}

namespace {

/// A service of a desktop that counts who inhibits it.
class ServiceStandIn : public QDBusVirtualObject {
public:
    ServiceStandIn(QString name, const QString& path) : m_name(std::move(name))
    {
        if (!m_bus.registerVirtualObject(path, this))
            throw std::runtime_error("the stand-in can't be reached");
    }
    ~ServiceStandIn() override
    {
        stop();
        QDBusConnection::disconnectFromBus(m_bus.name());
    }

    bool start() { return m_bus.registerService(m_name); }
    void stop()
    {
        m_bus.unregisterService(m_name);
        held.clear();
    }

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override
    {
        if (message.member() == u"Inhibit") {
            held.insert(++m_lastCookie, message.arguments());
            return bus.send(message.createReply(m_lastCookie));
        }
        if (message.member().compare(u"UnInhibit", Qt::CaseInsensitive) != 0)
            return false;
        held.remove(message.arguments().value(0).toUInt());
        return bus.send(message.createReply());
    }

    QMap<uint, QVariantList> held;

private:
    QString m_name;
    QDBusConnection m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_name);
    uint m_lastCookie = 0;
};

struct DesktopService {
    const char* label;
    QString name;
    QString path;
    bool forTheDisplayOnly;
};

class DesktopServices : public ::testing::TestWithParam<DesktopService> {};

} // namespace

INSTANTIATE_TEST_SUITE_P(LogindPowerAssertions, DesktopServices,
                         ::testing::Values(DesktopService{"ScreenSaver", u"org.freedesktop.ScreenSaver"_qs,
                                                          u"/org/freedesktop/ScreenSaver"_qs, true},
                                           DesktopService{
                                               "PowerManagement", u"org.freedesktop.PowerManagement"_qs,
                                               u"/org/freedesktop/PowerManagement/Inhibit"_qs, false},
                                           DesktopService{"SessionManager", u"org.gnome.SessionManager"_qs,
                                                          u"/org/gnome/SessionManager"_qs, false}),
                         [](const auto& test) { return std::string(test.param.label); });

TEST_P(DesktopServices, AreAskedAsLongAsTheAssertionIsHeld)
{
    ServiceStandIn service(GetParam().name, GetParam().path);
    if (!service.start())
        GTEST_SKIP() << "The session has such a service already.";
    FakeLogSink log;
    LogindPowerAssertions assertions(log);
    const auto display = assertions.createWithName(displaySleep, on, u"Display"_qs);
    ASSERT_TRUE(eventually(deadline, [&] { return service.held.size() == 1; }));
    EXPECT_EQ(service.held.first().value(0), QVariant(u"Orvane"_qs));
    EXPECT_TRUE(service.held.first().contains(u"Display"_qs));
    assertions.release(display.id);
    EXPECT_TRUE(eventually(deadline, [&] { return service.held.isEmpty(); }));

    const auto machine = assertions.createWithName(systemSleep, on, u"Machine"_qs);
    const auto both = assertions.createWithName(displaySleep, on, u"Both"_qs);
    const qsizetype expected = GetParam().forTheDisplayOnly ? 1 : 2;
    EXPECT_TRUE(eventually(deadline, [&] { return service.held.size() == expected; }));
    assertions.release(machine.id);
    assertions.release(both.id);
    EXPECT_TRUE(eventually(deadline, [&] { return service.held.isEmpty(); }));
}

TEST_P(DesktopServices, AreFollowedWhenTheyComeLaterOrAgain)
{
    ServiceStandIn service(GetParam().name, GetParam().path);
    FakeLogSink log;
    LogindPowerAssertions assertions(log);
    const auto display = assertions.createWithName(displaySleep, on, u"Display"_qs);
    for (int round = 0; round < 2; ++round) {
        if (!service.start())
            GTEST_SKIP() << "The session has such a service already.";
        EXPECT_TRUE(eventually(deadline, [&] { return service.held.size() == 1; }));
        service.stop();
    }
    ASSERT_TRUE(service.start());
    EXPECT_TRUE(eventually(deadline, [&] { return service.held.size() == 1; }));
    assertions.release(display.id);
    EXPECT_TRUE(eventually(deadline, [&] { return service.held.isEmpty(); }));
}

TEST(LogindPowerAssertions, AFailureOfLogindIsAFailureThoughTheDisplayCouldBeHeld)
{
    FakeLogSink log;
    LogindPowerAssertions assertions(log);
    ScreenSaver saver;
    {
        const StuckLogind stuck;
        const auto result = assertions.createWithName(displaySleep, on, u"Display"_qs);
        EXPECT_EQ(result.status, PowerAssertions::Status::timeout);
        EXPECT_EQ(result.id, 0u);
    }
    saver.setTimeout(1s);
    saver.reset();
    EXPECT_TRUE(eventually(deadline, [&] { return saver.state() == ScreenSaver::State::on; }))
        << "the display is held by nobody";
    EXPECT_TRUE(eventually(deadline, [] { return inhibitorsOfThisProcess().isEmpty(); }));
    EXPECT_NE(assertions.createWithName(displaySleep, on, u"Display"_qs).id, 0u);
}

TEST(LogindPowerAssertions, TheScreenStaysOnWhileTheDisplayIsHeldAndBlanksAfterwards)
{
    FakeLogSink log;
    LogindPowerAssertions assertions(log);
    ScreenSaver saver;
    const auto display = assertions.createWithName(displaySleep, on, u"Display"_qs);
    saver.setTimeout(1s);
    saver.reset();
    ASSERT_TRUE(eventually(deadline, [&] { return saver.idle() > 2500ms; }));
    EXPECT_NE(saver.state(), ScreenSaver::State::on);
    assertions.release(display.id);
    EXPECT_TRUE(eventually(deadline, [&] { return saver.state() == ScreenSaver::State::on; }));
}

TEST(LogindPowerAssertions, TheirEndReleasesWhatIsHeld)
{
    FakeLogSink log;
    {
        LogindPowerAssertions assertions(log);
        ASSERT_NE(assertions.createWithName(displaySleep, on, u"Display"_qs).id, 0u);
        ASSERT_EQ(inhibitorsOfThisProcess().size(), 1);
    }
    EXPECT_TRUE(eventually(deadline, [] { return inhibitorsOfThisProcess().isEmpty(); }));
}

TEST(LogindPowerAssertions, ALevelThatIsNotOnIsUnsupported)
{
    FakeLogSink log;
    LogindPowerAssertions assertions(log);
    const auto result = assertions.createWithName(systemSleep, 0, u"Off"_qs);
    EXPECT_EQ(result.status, PowerAssertions::Status::unsupported);
    EXPECT_EQ(result.id, 0u);
    EXPECT_TRUE(inhibitorsOfThisProcess().isEmpty());
}

} // namespace orvane::tests
