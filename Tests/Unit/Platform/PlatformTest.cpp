#include "Fakes/FakePlatform.h"

#include <gtest/gtest.h>

using namespace orvane;

namespace {

const QString ping = QStringLiteral("ping");

} // namespace

TEST(NotificationCenter, CallsTheObserversOfANameInOrderWithTheUserInfo)
{
    NotificationCenter center;
    QStringList heard;
    const auto first = center.addObserver(ping, [&](const Notification& notification) {
        heard.append(QStringLiteral("first ") + notification.userInfo.value(QStringLiteral("k")).toString());
    });
    const auto other =
        center.addObserver(QStringLiteral("pong"), [&](const Notification&) { heard.append(QString()); });
    const auto second = center.addObserver(ping, [&](const Notification& notification) {
        heard.append(QStringLiteral("second ") + notification.name);
    });
    center.post(ping, {{QStringLiteral("k"), QStringLiteral("v")}});
    EXPECT_EQ(heard, (QStringList{QStringLiteral("first v"), QStringLiteral("second ping")}));
}

TEST(NotificationCenter, AnEndedTokenHearsNothingEvenWithinThePost)
{
    NotificationCenter center;
    int calls = 0;
    std::unique_ptr<NotificationCenter::Token> second;
    const auto first = center.addObserver(ping, [&](const Notification&) { second.reset(); });
    second = center.addObserver(ping, [&](const Notification&) { ++calls; });
    center.post(ping);
    EXPECT_EQ(calls, 0);
}

TEST(NotificationCenter, OneAddedWithinThePostHearsTheNext)
{
    NotificationCenter center;
    int calls = 0;
    std::unique_ptr<NotificationCenter::Token> late;
    const auto first = center.addObserver(ping, [&](const Notification&) {
        if (!late)
            late = center.addObserver(ping, [&](const Notification&) { ++calls; });
    });
    center.post(ping);
    EXPECT_EQ(calls, 0);
    center.post(ping);
    EXPECT_EQ(calls, 1);
}

TEST(NotificationCenter, ATokenMayOutliveItsCentre)
{
    std::unique_ptr<NotificationCenter::Token> token;
    {
        NotificationCenter center;
        token = center.addObserver(ping, [](const Notification&) {});
    }
    EXPECT_NE(token, nullptr);
}

TEST(Platform, IsInstalledForAScopeAndTheOneBeforeComesBack)
{
    EXPECT_FALSE(isPlatformInstalled());
    {
        FakePlatform outer;
        EXPECT_EQ(&platform().log, &outer.log);
        {
            FakePlatform inner;
            EXPECT_EQ(&platform().log, &inner.log);
        }
        EXPECT_EQ(&platform().log, &outer.log);
    }
    EXPECT_FALSE(isPlatformInstalled());
}

TEST(PlatformDeathTest, AskingWithNoneInstalledEndsTheProcessWithAMessage)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(platform(), "No platform is installed");
}
