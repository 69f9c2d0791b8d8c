// Programs that tell the status item what its menu does: the hosts of status areas, and others.
#include "Contract/PanelMenuFixture.h"
#include "PlatformLinux/Tray/StatusNotifierNames.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusVariant>

#include <list>
#include <utility>

namespace orvane::tests {
namespace {

enum class Part { host, stranger };

/// A program on a bus connection of its own that reports menus and has no window. A status area's host has
/// the name by which hosts are known.
class TellingHost {
public:
    TellingHost(QString service, Part part)
        : m_service(std::move(service)),
          m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, nextName()))
    {
        if (part != Part::host)
            return;
        const auto number = QCoreApplication::applicationPid();
        EXPECT_TRUE(m_bus.registerService(QStringLiteral("org.kde.StatusNotifierHost-%1-test").arg(number)));
    }
    ~TellingHost() { leave(); }

    void tell(const QString& event)
    {
        auto message = call(QStringLiteral("Event"));
        message << 0 << event << QVariant::fromValue(QDBusVariant(0)) << 0u;
        m_bus.asyncCall(message);
    }

    void tellAboutToShow()
    {
        auto message = call(QStringLiteral("AboutToShow"));
        message << 0;
        const QDBusPendingCall pending = m_bus.asyncCall(message);
        EXPECT_TRUE(eventually(std::chrono::seconds(10), [&] { return pending.isFinished(); }));
    }

    void leave()
    {
        const QString name = m_bus.name();
        m_bus = QDBusConnection(QString());
        QDBusConnection::disconnectFromBus(name);
    }

private:
    static QString nextName()
    {
        static int number = 0;
        return QStringLiteral("telling host %1").arg(++number);
    }
    [[nodiscard]] QDBusMessage call(const QString& method) const
    {
        return QDBusMessage::createMethodCall(m_service, sni::menuPath,
                                              QStringLiteral("com.canonical.dbusmenu"), method);
    }

    QString m_service;
    QDBusConnection m_bus;
};

class TellingHostTest : public PanelMenuTest {
protected:
    TellingHost host{service(), Part::host};
};

class StrangerTest : public PanelMenuTest {
protected:
    /// Returns once the item has had the time to look at the stranger and to act.
    void settle()
    {
        stranger.tellAboutToShow();
        for (int round = 0; round < 5; ++round)
            (void)processOnSessionBus(QStringLiteral("org.kde.StatusNotifierWatcher"));
        QCoreApplication::processEvents();
    }

    TellingHost stranger{service(), Part::stranger};
};

TEST_F(TellingHostTest, AHostThatTellsOfOpeningAndClosingIsBelieved)
{
    host.tell(QStringLiteral("opened"));
    EXPECT_TRUE(hasPosted({began}));
    host.tell(QStringLiteral("closed"));
    EXPECT_TRUE(hasPosted({began, ended}));
}

TEST_F(TellingHostTest, AHostThatLeavesWithoutAWordHasClosedTheMenu)
{
    host.tell(QStringLiteral("opened"));
    EXPECT_TRUE(hasPosted({began}));
    host.leave();
    EXPECT_TRUE(hasPosted({began, ended}));
}

TEST_F(TellingHostTest, AChoiceEndsTheMenuOfAHostWithoutWindows)
{
    host.tell(QStringLiteral("opened"));
    EXPECT_TRUE(hasPosted({began}));
    host.tell(QStringLiteral("clicked"));
    EXPECT_TRUE(hasPosted({began, ended}));
}

TEST_F(TellingHostTest, ALookAtTheMenuIsNoOpening)
{
    host.tellAboutToShow();
    ASSERT_TRUE(openByClick());
    EXPECT_EQ(posted, QStringList{began});
    hardware.tap("Escape");
    EXPECT_TRUE(hasPosted({began, ended}));
}

TEST_F(StrangerTest, AnotherProgramOnTheBusOpensNoMenuAndTakesNoKeyboard)
{
    const auto monitor = takeC();
    for (int i = 0; i < 50; ++i)
        stranger.tell(QStringLiteral("opened"));
    settle();
    EXPECT_TRUE(posted.isEmpty());
    EXPECT_FALSE(monitors.isTapping());
}

TEST_F(StrangerTest, AnotherProgramClosesNoMenuOfThePanel)
{
    ASSERT_TRUE(openByClick());
    for (const char* event : {"opened", "closed", "clicked"})
        stranger.tell(QLatin1String(event));
    settle();
    EXPECT_EQ(posted, QStringList{began});
    hardware.tap("Escape");
    EXPECT_TRUE(hasPosted({began, ended}));
}

TEST_F(StrangerTest, AFloodOfReportsLeavesThePanelsMenuAsItIs)
{
    for (int i = 0; i < 2000; ++i)
        stranger.tell(i % 2 == 0 ? QStringLiteral("opened") : QStringLiteral("closed"));
    ASSERT_TRUE(openByClick());
    hardware.tap("Escape");
    EXPECT_TRUE(hasPosted({began, ended}));
}

TEST_F(StrangerTest, ACrowdOfStrangersDoesNotKeepThePanelFromBeingBelieved)
{
    std::list<TellingHost> crowd;
    const QString itsName = service();
    for (int i = 0; i < 80; ++i)
        crowd.emplace_back(itsName, Part::stranger).tell(QStringLiteral("opened"));
    settle();
    EXPECT_TRUE(posted.isEmpty());
    ASSERT_TRUE(openByClick());
    hardware.tap("Escape");
    EXPECT_TRUE(hasPosted({began, ended}));
}

} // namespace
} // namespace orvane::tests
