// A status item under the calls of a hostile program on the session bus, which asks for more than there is
// and has the item's connection closed.
#include "Fakes/FakeLogSink.h"
#include "Platform/NotificationCenter.h"
#include "PlatformLinux/Tray/DBusMenuExporter.h"
#include "PlatformLinux/Tray/LinuxStatusBar.h"
#include "PlatformLinux/Tray/StatusNotifierNames.h"
#include "Support/Eventually.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QElapsedTimer>
#include <QPainter>
#include <QTimer>

#include <gmock/gmock.h>

#include <algorithm>
#include <set>
#include <vector>

#include <sys/socket.h>
#include <sys/un.h>

namespace orvane::tests {
namespace {

constexpr auto deadline = 20s;

/// Returns the sockets of this process that lead to a bus.
std::set<int> socketsToTheBus()
{
    std::set<int> found;
    for (int descriptor = 3; descriptor < 256; ++descriptor) {
        sockaddr_un address{};
        socklen_t size = sizeof address;
        if (::getpeername(descriptor, reinterpret_cast<sockaddr*>(&address), &size) == 0 &&
            address.sun_family == AF_UNIX && QByteArray(address.sun_path).endsWith("/bus"))
            found.insert(descriptor);
    }
    return found;
}

/// Measures for how long the main thread did nothing else, in milliseconds.
class Standstill {
public:
    Standstill()
    {
        m_clock.start();
        QObject::connect(&m_tick, &QTimer::timeout,
                         [this] { m_longest = std::max(m_longest, m_clock.restart()); });
        m_tick.start(5);
    }
    [[nodiscard]] qint64 longest() const { return m_longest; }

private:
    QElapsedTimer m_clock;
    QTimer m_tick;
    qint64 m_longest = 0;
};

class HostileBusTest : public testing::Test {
protected:
    HostileBusTest()
    {
        TemplateImage dot;
        dot.size = QSizeF(18, 18);
        dot.draw = [](QPainter& painter, const QRectF& rect) { painter.fillRect(rect, Qt::black); };
        m_item->setImage(dot);
        m_item->setMenu([this] {
            ++builds;
            MenuItem one;
            one.title = QStringLiteral("One");
            one.action = [this](const MenuItem&) { ++chosen; };
            return Menu{{}, {one}};
        });
        // The panel reads the menu once when the item comes.
        EXPECT_TRUE(isThere() && eventually(deadline, [this] { return builds > 0; }));
        for (const int descriptor : socketsToTheBus()) {
            if (!m_before.contains(descriptor))
                m_socketsOfTheItem.insert(descriptor);
        }
    }

    ~HostileBusTest() override
    {
        m_item.reset();
        EXPECT_TRUE(eventually(deadline, [] { return service().isEmpty(); }));
        QDBusConnection::disconnectFromBus(QStringLiteral("hostile"));
    }

    /// Returns the name under which this process's item is registered, without asking the item.
    static QString service()
    {
        auto question = QDBusMessage::createMethodCall(sni::watcherName, sni::watcherPath,
                                                       u"org.freedesktop.DBus.Properties"_qs, u"Get"_qs);
        question << sni::watcherInterface << u"RegisteredStatusNotifierItems"_qs;
        const QDBusPendingCall pending = QDBusConnection::sessionBus().asyncCall(question);
        EXPECT_TRUE(eventually(deadline, [&] { return pending.isFinished(); }));
        const QString own = u"org.kde.StatusNotifierItem-%1-"_qs.arg(QCoreApplication::applicationPid());
        const auto all = pending.reply().arguments().value(0).value<QDBusVariant>().variant().toStringList();
        for (const QString& name : all) {
            if (name.startsWith(own))
                return name.section(u'/', 0, 0);
        }
        return {};
    }
    static bool isThere()
    {
        return eventually(deadline, [] { return !service().isEmpty(); });
    }

    /// Calls the menu and returns the answer.
    QDBusMessage call(const QString& method, const QVariantList& arguments)
    {
        auto message =
            QDBusMessage::createMethodCall(service(), sni::menuPath, u"com.canonical.dbusmenu"_qs, method);
        message.setArguments(arguments);
        const QDBusPendingCall pending = m_bus.asyncCall(message, 60'000);
        EXPECT_TRUE(eventually(60s, [&] { return pending.isFinished(); }));
        return pending.reply();
    }

    QDBusConnection m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"hostile"_qs);
    QDBusConnection m_ownBus = QDBusConnection::sessionBus();
    const std::set<int> m_before = socketsToTheBus();
    std::set<int> m_socketsOfTheItem;
    FakeLogSink m_log;
    NotificationCenter m_center;
    int builds = 0;
    int chosen = 0;
    LinuxStatusBar m_bar{m_log, m_center};
    std::unique_ptr<StatusItem> m_item = m_bar.makeStatusItem(StatusItem::squareLength);
};

TEST_F(HostileBusTest, ListsThatNoHostWouldSendAreRefusedAndTheItemStays)
{
    const QList<int> ids(8'000'000, 0);
    const auto before = builds;
    const QVariant list = QVariant::fromValue(ids);
    for (const auto& [method, arguments] : std::vector<std::pair<QString, QVariantList>>{
             {u"GetGroupProperties"_qs, {list, QStringList()}}, {u"AboutToShowGroup"_qs, {list}}}) {
        Standstill standstill;
        const QDBusMessage answer = call(method, arguments);
        EXPECT_EQ(answer.errorName(), u"org.freedesktop.DBus.Error.LimitsExceeded"_qs) << qPrintable(method);
        RecordProperty(method.toStdString(), static_cast<int>(standstill.longest()));
    }
    const QStringList names(1'000'000, u"label"_qs);
    EXPECT_EQ(call(u"GetLayout"_qs, {0, -1, names}).errorName(),
              u"org.freedesktop.DBus.Error.LimitsExceeded"_qs);
    EXPECT_EQ(builds, before);
    EXPECT_EQ(call(u"GetLayout"_qs, {0, -1, QStringList()}).type(), QDBusMessage::ReplyMessage)
        << "the item is there and answers";
}

TEST_F(HostileBusTest, AFloodOfRequestsMakesTheMenuAnewOnlySomeTimesInASecond)
{
    const QString name = service();
    const int before = builds;
    QElapsedTimer clock;
    clock.start();
    QList<QDBusPendingCall> pending;
    for (int i = 0; i < 2000; ++i) {
        auto message = QDBusMessage::createMethodCall(name, sni::menuPath, u"com.canonical.dbusmenu"_qs,
                                                      u"AboutToShow"_qs);
        message << 0;
        pending.append(m_bus.asyncCall(message));
    }
    EXPECT_TRUE(eventually(60s, [&] { return pending.last().isFinished(); }));
    const auto ticks = clock.elapsed() / 50;
    EXPECT_GT(builds, before);
    EXPECT_LE(builds - before, 20 + ticks + 1);
}

TEST_F(HostileBusTest, AnItemWhoseConnectionsAreClosedComesBack)
{
    const QString before = service();
    ASSERT_EQ(m_socketsOfTheItem.size(), 2u) << "the item's own, and that of the watch for hosts";
    for (const int descriptor : m_socketsOfTheItem)
        ::shutdown(descriptor, SHUT_RDWR);
    EXPECT_TRUE(eventually(deadline, [&] {
        const QString now = service();
        return !now.isEmpty() && now != before;
    }));
    EXPECT_EQ(call(u"GetLayout"_qs, {0, -1, QStringList()}).type(), QDBusMessage::ReplyMessage);
}

} // namespace
} // namespace orvane::tests
