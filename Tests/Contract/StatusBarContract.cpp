#include "Fakes/FakeLogSink.h"
#include "Fakes/FakeStatusBar.h"
#include "Platform/NotificationCenter.h"
#include "PlatformLinux/Tray/DBusMenuTypes.h"
#include "PlatformLinux/Tray/LinuxStatusBar.h"
#include "PlatformLinux/Tray/StatusNotifierTypes.h"
#include "Support/Eventually.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QPainter>
#include <QWidget>

#include <gmock/gmock.h>

#include <memory>
#include <vector>

namespace orvane::tests {

namespace {

constexpr auto deadline = 10s;

/// The desktop's side of this process's items; `index` counts them in the order in which they were made.
class Desk {
public:
    virtual ~Desk() = default;
    /// Returns how often a change of the area was told.
    [[nodiscard]] int areaChanges() const { return m_areaChanges; }
    virtual StatusBar& bar() = 0;
    /// Returns how many items the desktop shows.
    virtual std::size_t shown() = 0;
    virtual void leftClick(std::size_t index) = 0;
    /// Makes a right click, up to the menu that it opens.
    virtual void rightClick(std::size_t index) = 0;
    /// Returns the titles in the menu that rightClick() opened; empty if it opened none.
    virtual QStringList menuTitles() = 0;
    /// Chooses from that menu.
    virtual void choose(const QString& title) = 0;

protected:
    NotificationCenter m_center;

private:
    int m_areaChanges = 0;
    std::unique_ptr<NotificationCenter::Token> m_observer = m_center.addObserver(
        StatusBar::areaDidChangeNotification(), [this](const Notification&) { ++m_areaChanges; });
};

class FakeDesk : public Desk {
public:
    StatusBar& bar() override { return m_bar; }
    std::size_t shown() override { return m_bar.items.size(); }

    void leftClick(std::size_t index) override
    {
        m_bar.items.at(index)->click({StatusItemEvent::Type::leftMouseUp, 0});
    }

    void rightClick(std::size_t index) override
    {
        FakeStatusItem& item = *m_bar.items.at(index);
        item.openedMenus.clear();
        item.click({StatusItemEvent::Type::rightMouseUp, 0});
        m_menu = item.openedMenus.empty() ? Menu() : item.openedMenus.back();
    }

    QStringList menuTitles() override
    {
        QStringList titles;
        for (const MenuItem& item : m_menu.items)
            titles.append(item.title);
        return titles;
    }

    void choose(const QString& title) override { (void)orvane::choose(m_menu, title); }

private:
    FakeStatusBar m_bar{&m_center};
    Menu m_menu;
};

/// A further host beside the panel's, which asks the same questions at the same time.
class HostDesk : public Desk {
public:
    HostDesk()
    {
        registerStatusNotifierTypes();
        registerDBusMenuTypes();
    }

    ~HostDesk() override
    {
        // The items go first; the next test must find none of them.
        EXPECT_TRUE(eventually(deadline, [this] { return shown() == 0; }));
    }

    StatusBar& bar() override { return m_bar; }
    std::size_t shown() override { return static_cast<std::size_t>(services().size()); }
    void leftClick(std::size_t index) override { call(index, m_item, m_item, u"Activate"_qs, {0, 0}); }

    void rightClick(std::size_t index) override
    {
        m_index = index;
        call(index, menuPath(index), m_menu, u"AboutToShow"_qs, {0});
        const auto reply = call(index, menuPath(index), m_menu, u"GetLayout"_qs, {0, -1, QStringList()});
        m_layout = reply.size() == 2 ? qdbus_cast<DBusMenuLayoutItem>(reply[1]) : DBusMenuLayoutItem();
    }

    QStringList menuTitles() override
    {
        QStringList titles;
        for (const DBusMenuLayoutItem& item : m_layout.children)
            titles.append(item.properties.value(u"label"_qs).toString());
        return titles;
    }

    void choose(const QString& title) override
    {
        for (const DBusMenuLayoutItem& item : m_layout.children) {
            if (item.properties.value(u"label"_qs).toString() == title)
                call(m_index, menuPath(m_index), m_menu, u"Event"_qs,
                     {item.id, u"clicked"_qs, QVariant::fromValue(QDBusVariant(0)), 0u});
        }
    }

    QVariant property(std::size_t index, const QString& name)
    {
        const auto reply = call(index, m_item, u"org.freedesktop.DBus.Properties"_qs, u"Get"_qs,
                                {u"org.kde.StatusNotifierItem"_qs, name});
        return reply.empty() ? QVariant() : reply[0].value<QDBusVariant>().variant();
    }

private:
    QString menuPath(std::size_t index)
    {
        return property(index, u"Menu"_qs).value<QDBusObjectPath>().path();
    }

    static QDBusMessage ask(const QString& service, const QString& path, const QString& interface,
                            const QString& method, const QVariantList& arguments)
    {
        auto message = QDBusMessage::createMethodCall(service, path, interface, method);
        message.setArguments(arguments);
        const QDBusPendingCall pending = QDBusConnection::sessionBus().asyncCall(message);
        EXPECT_TRUE(eventually(deadline, [&] { return pending.isFinished(); })) << qPrintable(method);
        return pending.reply();
    }

    QVariantList call(const QString& service, const QString& path, const QString& interface,
                      const QString& method, const QVariantList& arguments)
    {
        const QDBusMessage reply = ask(service, path, interface, method, arguments);
        EXPECT_EQ(reply.type(), QDBusMessage::ReplyMessage) << qPrintable(reply.errorMessage());
        return reply.arguments();
    }

    QVariantList call(std::size_t index, const QString& object, const QString& interface,
                      const QString& method, const QVariantList& arguments)
    {
        const QString path = object == m_item ? u"/StatusNotifierItem"_qs : object;
        return call(services().value(static_cast<qsizetype>(index)), path, interface, method, arguments);
    }

    /// Returns this process's items in the order in which they were made: a counter ends their names. The
    /// panel's status area may crash over an item that goes, and is started again: there are none meanwhile.
    QStringList services()
    {
        const QVariantList reply =
            ask(u"org.kde.StatusNotifierWatcher"_qs, u"/StatusNotifierWatcher"_qs,
                u"org.freedesktop.DBus.Properties"_qs, u"Get"_qs,
                {u"org.kde.StatusNotifierWatcher"_qs, u"RegisteredStatusNotifierItems"_qs})
                .arguments();
        const QString prefix = u"org.kde.StatusNotifierItem-%1-"_qs.arg(QCoreApplication::applicationPid());
        QMap<int, QString> ours;
        const QStringList all = reply.value(0).value<QDBusVariant>().variant().toStringList();
        for (const QString& item : all) {
            const QString service = item.section(u'/', 0, 0);
            if (service.startsWith(prefix))
                ours.insert(service.mid(prefix.size()).toInt(), service);
        }
        return ours.values();
    }

    const QString m_item = u"org.kde.StatusNotifierItem"_qs;
    const QString m_menu = u"com.canonical.dbusmenu"_qs;
    FakeLogSink m_log;
    LinuxStatusBar m_bar{m_log, m_center};
    std::size_t m_index = 0;
    DBusMenuLayoutItem m_layout;
};

struct Implementation {
    const char* name;
    std::unique_ptr<Desk> (*make)();
};

TemplateImage dot()
{
    TemplateImage image;
    image.accessibilityDescription = u"Dot"_qs;
    image.size = QSizeF(18, 18);
    image.draw = [](QPainter& painter, const QRectF& rect) { painter.fillRect(rect, Qt::black); };
    return image;
}

MenuItem choice(
    const QString& title, MenuItem::Action action = [](const MenuItem&) {})
{
    MenuItem item;
    item.title = title;
    item.action = std::move(action);
    return item;
}

Menu menuOf(std::initializer_list<MenuItem> items)
{
    return Menu{{}, QList<MenuItem>(items)};
}

} // namespace

class StatusBarContract : public ::testing::TestWithParam<Implementation> {
protected:
    std::unique_ptr<StatusItem> makeShown()
    {
        const std::size_t before = m_desk->shown();
        auto item = m_desk->bar().makeStatusItem(StatusItem::squareLength);
        item->setImage(dot());
        EXPECT_TRUE(eventually(deadline, [&] { return m_desk->shown() == before + 1; }));
        return item;
    }

    Desk& desk() { return *m_desk; }

private:
    std::unique_ptr<Desk> m_desk = GetParam().make();
};

TEST_P(StatusBarContract, AnItemStandsThereForAsLongAsItsObjectLives)
{
    const auto first = makeShown();
    auto second = makeShown();
    second.reset();
    EXPECT_TRUE(eventually(deadline, [this] { return desk().shown() == 1; }));
}

TEST_P(StatusBarContract, TheAreaIsUnknownBeforeTheFirstItemAndThenPresent)
{
    EXPECT_EQ(desk().bar().area(), StatusBar::Area::unknown);
    const auto item = makeShown();
    EXPECT_EQ(desk().bar().area(), StatusBar::Area::present);
    EXPECT_LE(desk().areaChanges(), 1);
}

TEST_P(StatusBarContract, ALeftClickCallsTheActionWithItsKind)
{
    const auto item = makeShown();
    int leftClicks = 0;
    item->setAction([&](const StatusItemEvent* event) {
        leftClicks += event && event->type == StatusItemEvent::Type::leftMouseUp;
    });
    desk().leftClick(0);
    EXPECT_TRUE(eventually(deadline, [&] { return leftClicks == 1; }));
}

TEST_P(StatusBarContract, ARightClickOpensTheMenuThatTheActionAttachesForIt)
{
    const auto item = makeShown();
    int leftClicks = 0;
    int built = 0;
    item->setAction([&, it = item.get()](const StatusItemEvent* event) {
        if (!event || event->type == StatusItemEvent::Type::leftMouseUp) {
            ++leftClicks;
            return;
        }
        it->setMenu([&] { return menuOf({choice(u"Menu %1"_qs.arg(++built))}); });
        it->performClick();
        it->setMenu(nullptr);
    });
    desk().rightClick(0);
    EXPECT_EQ(desk().menuTitles(), QStringList{u"Menu %1"_qs.arg(built)});
    desk().rightClick(0);
    EXPECT_GE(built, 2);
    EXPECT_EQ(desk().menuTitles(), QStringList{u"Menu %1"_qs.arg(built)});
    EXPECT_EQ(leftClicks, 0);
    desk().leftClick(0);
    EXPECT_TRUE(eventually(deadline, [&] { return leftClicks == 1; })) << "the menu was for one click";
}

TEST_P(StatusBarContract, ARightClickWhoseActionOpensNothingShowsNoMenu)
{
    const auto item = makeShown();
    item->setAction([](const StatusItemEvent*) {});
    desk().rightClick(0);
    EXPECT_TRUE(desk().menuTitles().isEmpty());
}

TEST_P(StatusBarContract, AnAttachedMenuIsAskedForAtEachOpening)
{
    const auto item = makeShown();
    QString title = u"Start"_qs;
    item->setMenu([&] { return menuOf({choice(title), choice(u"Quit"_qs)}); });
    desk().rightClick(0);
    EXPECT_EQ(desk().menuTitles(), (QStringList{u"Start"_qs, u"Quit"_qs}));
    title = u"Stop"_qs;
    desk().rightClick(0);
    EXPECT_EQ(desk().menuTitles(), (QStringList{u"Stop"_qs, u"Quit"_qs}));
}

TEST_P(StatusBarContract, AnAttachedMenuTakesEveryClickFromTheAction)
{
    const auto item = makeShown();
    int asked = 0;
    int clicks = 0;
    item->setAction([&](const StatusItemEvent*) { ++clicks; });
    item->setMenu([&] {
        ++asked;
        return menuOf({choice(u"Item"_qs)});
    });
    desk().rightClick(0);
    const int before = asked;
    desk().leftClick(0);
    EXPECT_TRUE(eventually(deadline, [&] { return asked > before; }));
    EXPECT_EQ(clicks, 0);

    item->setMenu(nullptr);
    desk().leftClick(0);
    EXPECT_TRUE(eventually(deadline, [&] { return clicks > 0; }));
}

TEST_P(StatusBarContract, AChoiceCallsTheItemsActionWithTheItem)
{
    const auto item = makeShown();
    QString chosen;
    int number = 0;
    MenuItem two = choice(u"Two"_qs, [&](const MenuItem& sender) {
        chosen = sender.title;
        number = std::any_cast<int>(sender.representedObject);
    });
    two.representedObject = 2;
    item->setMenu([&] { return menuOf({choice(u"One"_qs), two}); });
    desk().rightClick(0);
    desk().choose(u"Two"_qs);
    EXPECT_TRUE(eventually(deadline, [&] { return chosen == u"Two"_qs; }));
    EXPECT_EQ(number, 2);
}

TEST_P(StatusBarContract, AnItemThatIsNotEnabledCannotBeChosen)
{
    const auto item = makeShown();
    QStringList chosen;
    const auto note = [&](const MenuItem& sender) { chosen.append(sender.title); };
    MenuItem off = choice(u"Off"_qs, note);
    off.enabled = false;
    item->setMenu([&] { return menuOf({off, choice(u"On"_qs, note)}); });
    desk().rightClick(0);
    desk().choose(u"Off"_qs);
    desk().choose(u"On"_qs);
    EXPECT_TRUE(eventually(deadline, [&] { return chosen.contains(u"On"_qs); }));
    EXPECT_EQ(chosen, QStringList{u"On"_qs});
}

TEST_P(StatusBarContract, EachItemHasItsOwnMenu)
{
    const auto first = makeShown();
    const auto second = makeShown();
    first->setMenu([] { return menuOf({choice(u"First"_qs)}); });
    second->setMenu([] { return menuOf({choice(u"Second"_qs)}); });
    desk().rightClick(0);
    EXPECT_EQ(desk().menuTitles(), QStringList{u"First"_qs});
    desk().rightClick(1);
    EXPECT_EQ(desk().menuTitles(), QStringList{u"Second"_qs});
}

TEST_P(StatusBarContract, PerformingAClickWithoutAMenuCallsTheActionWithoutAnEvent)
{
    const auto item = makeShown();
    int withoutEvent = 0;
    item->setAction([&](const StatusItemEvent* event) { withoutEvent += event == nullptr; });
    item->performClick();
    EXPECT_EQ(withoutEvent, 1);
}

TEST_P(StatusBarContract, AnActionMayRemoveItsOwnItem)
{
    auto item = makeShown();
    item->setAction([&](const StatusItemEvent* event) {
        if (event && event->type == StatusItemEvent::Type::leftMouseUp)
            item.reset();
    });
    desk().leftClick(0);
    EXPECT_TRUE(eventually(deadline, [this] { return desk().shown() == 0; }));
    EXPECT_FALSE(item);
}

INSTANTIATE_TEST_SUITE_P(
    Platforms, StatusBarContract,
    ::testing::Values(
        Implementation{"Fake", []() -> std::unique_ptr<Desk> { return std::make_unique<FakeDesk>(); }},
        Implementation{"Linux", []() -> std::unique_ptr<Desk> { return std::make_unique<HostDesk>(); }}),
    [](const auto& tested) { return std::string(tested.param.name); });

// Behaviour that only a host of the session bus can see.

TEST(LinuxStatusBar, AHostIsToldOfTheItemsTextsPicturesAndMenu)
{
    HostDesk desk;
    const auto item = desk.bar().makeStatusItem(StatusItem::squareLength);
    item->setImage(dot());
    item->setToolTip(u"Two minutes left"_qs);
    ASSERT_TRUE(eventually(deadline, [&] { return desk.shown() == 1; }));
    EXPECT_EQ(desk.property(0, u"Title"_qs).toString(), u"Dot"_qs);
    EXPECT_EQ(desk.property(0, u"IconAccessibleDesc"_qs).toString(), u"Dot"_qs);
    EXPECT_EQ(desk.property(0, u"Status"_qs).toString(), u"Active"_qs);
    EXPECT_EQ(qdbus_cast<StatusNotifierToolTip>(desk.property(0, u"ToolTip"_qs)).title,
              u"Two minutes left"_qs);
    const auto pixmaps = qdbus_cast<StatusNotifierPixmapList>(desk.property(0, u"IconPixmap"_qs));
    std::vector<int> sizes;
    for (const auto& pixmap : pixmaps) {
        sizes.push_back(pixmap.width);
        ASSERT_EQ(pixmap.bytes.size(), 4 * pixmap.width * pixmap.height);
        const qsizetype middle = 4 * (pixmap.width * (pixmap.height / 2) + pixmap.width / 2);
        EXPECT_EQ(static_cast<uchar>(pixmap.bytes[middle]), 255) << "alpha comes first";
        EXPECT_EQ(pixmap.bytes[0], 0) << "a picture of 18 points leaves a margin";
    }
    EXPECT_THAT(sizes, testing::ElementsAre(22, 24, 32, 44, 48));

    EXPECT_FALSE(desk.property(0, u"ItemIsMenu"_qs).toBool());
    item->setMenu([] { return Menu(); });
    EXPECT_TRUE(eventually(deadline, [&] { return desk.property(0, u"ItemIsMenu"_qs).toBool(); }));
}

TEST(LinuxStatusBar, ItemsMadeAndDroppedInHasteLeaveNothingBehind)
{
    HostDesk desk;
    const auto lasting = desk.bar().makeStatusItem(StatusItem::squareLength);
    lasting->setImage(dot());
    ASSERT_TRUE(eventually(deadline, [&] { return desk.shown() == 1; }));
    std::vector<std::unique_ptr<StatusItem>> crowd;
    for (int i = 0; i < 100; ++i) {
        crowd.push_back(desk.bar().makeStatusItem(StatusItem::squareLength));
        crowd.back()->setImage(dot());
        // Each is destroyed at another stage of its registration.
        QCoreApplication::processEvents();
        if (crowd.size() > 5)
            crowd.erase(crowd.begin());
    }
    ASSERT_TRUE(eventually(deadline, [&] { return desk.shown() == 1 + crowd.size(); }));
    crowd.clear();
    EXPECT_TRUE(eventually(deadline, [&] { return desk.shown() == 1; }));
}

} // namespace orvane::tests
