// Menus of the program while they are open: in its own windows, and drawn by the panel of the private
// desktop.
#include "Contract/EventMonitorsFixture.h"
#include "Contract/EventTapSupport.h"
#include "Desktop/Support/Bus.h"
#include "Desktop/Support/Screen.h"
#include "Platform/Menu.h"
#include "PlatformLinux/Menus/TrayMenuView.h"
#include "PlatformLinux/Tray/LinuxStatusBar.h"
#include "PlatformLinux/Tray/StatusNotifierNames.h"

#include <QComboBox>
#include <QContextMenuEvent>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QDeadlineTimer>
#include <QMenu>
#include <QPainter>

#include <utility>

namespace orvane::tests {
namespace {

class MenuTrackingTest : public EventMonitorsFixture {
protected:
    MenuTrackingTest()
    {
        begin = center.addObserver(Menu::didBeginTrackingNotification(),
                                   [this](const Notification&) { posted.append(QStringLiteral("begin")); });
        end = center.addObserver(Menu::didEndTrackingNotification(),
                                 [this](const Notification&) { posted.append(QStringLiteral("end")); });
    }

    bool hasPosted(const QStringList& all)
    {
        return eventually(deadline, [&] { return posted.size() >= all.size(); }) && posted == all;
    }

    const QString began = QStringLiteral("begin");
    const QString ended = QStringLiteral("end");
    QStringList posted;
    std::unique_ptr<NotificationCenter::Token> begin;
    std::unique_ptr<NotificationCenter::Token> end;
};

MenuItem choice(
    const QString& title, MenuItem::Action action = [](const MenuItem&) {})
{
    MenuItem item;
    item.title = title;
    item.action = std::move(action);
    return item;
}

TEST_F(MenuTrackingTest, AMenuOfAWindowIsTrackedFromItsOpeningToItsClosingAndItsSubmenusAreNot)
{
    NotingWindow window;
    QMenu menu;
    QMenu* more = menu.addMenu(QStringLiteral("More"));
    more->addAction(QStringLiteral("Inner"));
    menu.popup(window.mapToGlobal(QPoint(5, 5)));
    EXPECT_EQ(posted, QStringList{began});
    ASSERT_TRUE(eventually(deadline, [&] { return menu.windowHandle()->isExposed(); }));
    hardware.tap("Down");
    hardware.tap("Right");
    EXPECT_TRUE(eventually(deadline, [&] { return more->isVisible(); }));
    hardware.tap("Left");
    EXPECT_TRUE(eventually(deadline, [&] { return !more->isVisible(); }));
    EXPECT_EQ(posted, QStringList{began});
    hardware.tap("Escape");
    EXPECT_TRUE(hasPosted({began, ended}));
    EXPECT_EQ(menus.place(), MenuTracking::Place::none);
}

TEST_F(MenuTrackingTest, ALineEditsContextMenuAndAComboBoxesListAreMenus)
{
    NotingWindow window;
    QComboBox box(&window);
    box.addItems({QStringLiteral("One"), QStringLiteral("Two")});
    box.show();
    QContextMenuEvent request(QContextMenuEvent::Keyboard, QPoint(2, 2),
                              window.edit.mapToGlobal(QPoint(2, 2)));
    QCoreApplication::sendEvent(&window.edit, &request);
    EXPECT_TRUE(hasPosted({began}));
    hardware.tap("Escape");
    EXPECT_TRUE(hasPosted({began, ended}));
    box.showPopup();
    EXPECT_TRUE(hasPosted({began, ended, began}));
    box.hidePopup();
    EXPECT_TRUE(hasPosted({began, ended, began, ended}));
}

TEST_F(MenuTrackingTest, AMenuThatIsDeletedWhileItIsOpenHasClosed)
{
    auto menu = std::make_unique<QMenu>();
    menu->addAction(QStringLiteral("Item"));
    menu->popup(QPoint(300, 300));
    EXPECT_EQ(posted, QStringList{began});
    menu.reset();
    EXPECT_EQ(posted, (QStringList{began, ended}));
}

TEST_F(MenuTrackingTest, AStatusMenuInAWindowOfTheProgramIsTracked)
{
    TrayMenuView view;
    view.popUp(Menu{{}, {choice(QStringLiteral("Item"))}}, QRect(300, 300, 20, 20));
    EXPECT_EQ(posted, QStringList{began});
    view.close();
    EXPECT_EQ(posted, (QStringList{began, ended}));
}

/// A status item of this process in the real panel, which draws its menu.
class PanelMenuTest : public MenuTrackingTest {
protected:
    PanelMenuTest()
    {
        item->setAutosaveName(QStringLiteral("net.lindenrow.orvane.test"));
        TemplateImage dot;
        dot.size = QSizeF(18, 18);
        dot.draw = [](QPainter& painter, const QRectF& rect) { painter.fillRect(rect, Qt::black); };
        item->setImage(dot);
        item->setMenu([this] {
            ++timesAsked;
            const auto note = [this](const MenuItem& sender) { chosen.append(sender.title); };
            MenuItem more;
            more.title = QStringLiteral("More");
            more.submenu = std::make_shared<Menu>(Menu{{}, {choice(QStringLiteral("Inner"), note)}});
            return Menu{{}, {choice(QStringLiteral("One"), note), choice(QStringLiteral("Two"), note), more}};
        });
        EXPECT_TRUE(eventually(deadline, [this] { return timesAsked > 0 && isDrawn(); }));
    }

    ~PanelMenuTest() override
    {
        item.reset();
        EXPECT_TRUE(eventually(deadline, [] { return service().isEmpty(); }));
    }

    /// Returns where this process's item is registered; empty while it isn't. The item itself isn't asked,
    /// since it couldn't answer.
    static QString service()
    {
        const QString watcher = QStringLiteral("org.kde.StatusNotifierWatcher");
        const QStringList all = property(watcher, QStringLiteral("/StatusNotifierWatcher"), watcher,
                                         QStringLiteral("RegisteredStatusNotifierItems"))
                                    .toStringList();
        const QString own =
            QStringLiteral("org.kde.StatusNotifierItem-%1-").arg(QCoreApplication::applicationPid());
        for (const QString& name : all) {
            if (name.startsWith(own))
                return name.section(u'/', 0, 0);
        }
        return {};
    }

    /// Returns the item's place in the panel, where it is the only one.
    [[nodiscard]] std::optional<QRect> place() const
    {
        if (service().isEmpty())
            return std::nullopt;
        const qint64 panel = processOnSessionBus(QStringLiteral("org.kde.StatusNotifierWatcher"));
        for (const ScreenWindow& window : screen.windowsOf(panel)) {
            const bool isArea = window.type != WindowType::menu && window.parent != screen.root();
            if (isArea && std::abs(window.geometry.width() - window.geometry.height()) <= 2)
                return window.geometry;
        }
        return std::nullopt;
    }

    [[nodiscard]] bool isDrawn() const
    {
        const auto at = place();
        const QImage picture = at ? screen.picture(*at) : QImage();
        return !picture.isNull() && picture.pixel(picture.rect().center()) != picture.pixel(0, 0);
    }

    /// A click on an item that the panel is still setting up is lost; then it clicks once more.
    bool openByClick()
    {
        const qsizetype before = posted.size();
        for (int clicks = 0; clicks < 5 && posted.size() == before; ++clicks) {
            const auto at = place();
            if (at)
                hardware.click(at->center());
            (void)eventually(2s, [&] { return posted.size() != before; });
        }
        return posted.size() == before + 1 && menus.place() == MenuTracking::Place::desktop;
    }

    /// Adds a monitor that takes the letter C and records what it saw.
    std::unique_ptr<EventMonitor> takeC()
    {
        return monitors.addMenuTrackingMonitor(keyEvents, [this](const MonitoredEvent& event) {
            seen.push_back(event.event);
            return event.event.keycode == 8 ? Disposition::swallow : Disposition::pass;
        });
    }

    LinuxStatusBar bar{log, &menus};
    std::unique_ptr<StatusItem> item = bar.makeStatusItem(StatusItem::squareLength);
    Screen screen;
    int timesAsked = 0;
    QStringList chosen;
    std::vector<Event> seen;
};

TEST_F(PanelMenuTest, TheMenuThatThePanelDrawsIsTrackedFromItsOpeningToItsClosing)
{
    ASSERT_TRUE(openByClick());
    EXPECT_EQ(screen.openMenus().size(), 1);
    hardware.tap("Escape");
    EXPECT_TRUE(hasPosted({began, ended}));
    EXPECT_TRUE(screen.openMenus().isEmpty());
    ASSERT_TRUE(openByClick());
    hardware.click(QPoint(600, 800));
    EXPECT_TRUE(hasPosted({began, ended, began, ended}));
}

TEST_F(PanelMenuTest, ItsSubmenuIsNoFurtherMenu)
{
    ASSERT_TRUE(openByClick());
    for (const char* key : {"Down", "Down", "Down", "Right"})
        hardware.tap(key);
    EXPECT_TRUE(eventually(deadline, [this] { return screen.openMenus().size() == 2; }));
    EXPECT_EQ(posted, QStringList{began});
    hardware.tap("Return");
    EXPECT_TRUE(hasPosted({began, ended}));
    EXPECT_TRUE(eventually(deadline, [this] { return chosen == QStringList{QStringLiteral("Inner")}; }));
}

TEST_F(PanelMenuTest, AChoiceClosesItAndIsMade)
{
    ASSERT_TRUE(openByClick());
    hardware.tap("Down");
    hardware.tap("Return");
    EXPECT_TRUE(hasPosted({began, ended}));
    EXPECT_TRUE(eventually(deadline, [this] { return chosen == QStringList{QStringLiteral("One")}; }));
}

TEST_F(PanelMenuTest, AMonitorTakesItsKeyFromThePanelAndTheOthersWorkTheMenu)
{
    const auto monitor = takeC();
    EXPECT_FALSE(monitors.isTapping());
    ASSERT_TRUE(openByClick());
    EXPECT_TRUE(monitors.isTapping());
    hardware.tap("c");
    hardware.tap("Down");
    hardware.tap("Down");
    hardware.tap("c");
    hardware.tap("Return");
    EXPECT_TRUE(hasPosted({began, ended}));
    EXPECT_TRUE(eventually(deadline, [this] { return chosen == QStringList{QStringLiteral("Two")}; }));
    EXPECT_FALSE(monitors.isTapping());
    ASSERT_GE(seen.size(), 9u);
    EXPECT_EQ(seen[0].keycode, 8);
    EXPECT_EQ(seen[0].type, EventType::keyDown);
    EXPECT_EQ(seen[1].type, EventType::keyUp);
    EXPECT_EQ(seen[2].flags, eventFlag::numericPad | eventFlag::secondaryFn) << "the down key";
}

TEST_F(PanelMenuTest, AMonitorThatComesWhileTheMenuIsOpenIsAskedAndEscapeStillCloses)
{
    ASSERT_TRUE(openByClick());
    EXPECT_FALSE(monitors.isTapping());
    auto monitor = takeC();
    EXPECT_TRUE(monitors.isTapping());
    hardware.tap("c");
    EXPECT_TRUE(eventually(deadline, [this] { return seen.size() == 2; }));
    monitor.reset();
    EXPECT_FALSE(monitors.isTapping());
    hardware.tap("Escape");
    EXPECT_TRUE(hasPosted({began, ended}));
}

TEST_F(PanelMenuTest, AnEventTapOfSomebodyElsesIsNoHindrance)
{
    // Changes every B to a C, as a remapping capability would.
    LambdaTap remapping(taps, [](Event& event) {
        if (event.keycode == 11)
            event.keycode = 8;
        return true;
    });
    const auto monitor = takeC();
    ASSERT_TRUE(openByClick());
    hardware.tap("b");
    ASSERT_TRUE(eventually(deadline, [this] { return seen.size() == 2; }));
    EXPECT_EQ(seen[0].keycode, 8);
    hardware.tap("Down");
    hardware.tap("Return");
    EXPECT_TRUE(hasPosted({began, ended}));
    EXPECT_TRUE(eventually(deadline, [this] { return chosen == QStringList{QStringLiteral("One")}; }));
    EXPECT_EQ(remapping.timeouts(), 0);
}

TEST_F(PanelMenuTest, AMainThreadThatHangsDoesNotCostTheKeyboard)
{
    const auto monitor = takeC();
    ASSERT_TRUE(openByClick());
    ASSERT_TRUE(monitors.isTapping());
    hardware.tap("Escape");
    // The event loop doesn't run: the tap gets no answer, and after a second the key goes through.
    const QDeadlineTimer limit(deadline);
    while (!screen.openMenus().isEmpty() && !limit.hasExpired())
        ;
    EXPECT_TRUE(screen.openMenus().isEmpty());
    EXPECT_TRUE(hasPosted({began, ended}));
    EXPECT_FALSE(monitors.isTapping());
}

TEST_F(PanelMenuTest, AnItemThatGoesWhileItsMenuIsOpenEndsTheTracking)
{
    ASSERT_TRUE(openByClick());
    item.reset();
    EXPECT_TRUE(hasPosted({began, ended}));
    hardware.tap("Escape");
}

/// A host on a bus connection of its own that reports its menus and has no window.
class TellingHost {
public:
    explicit TellingHost(QString service)
        : m_service(std::move(service)),
          m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("telling host")))
    {
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
        m_bus = QDBusConnection(QString());
        QDBusConnection::disconnectFromBus(QStringLiteral("telling host"));
    }

private:
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
    TellingHost host{service()};
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

} // namespace
} // namespace orvane::tests
