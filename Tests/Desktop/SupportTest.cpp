// Tests of the tools for desktop tests, on programs other than ours.
#include "Desktop/Support/Bus.h"
#include "Desktop/Support/Hardware.h"
#include "Desktop/Support/Logind.h"
#include "Desktop/Support/Program.h"
#include "Desktop/Support/Screen.h"
#include "Desktop/Support/ScreenSaver.h"
#include "Desktop/Support/Tray.h"
#include "Desktop/Support/WindowManager.h"
#include "Support/Eventually.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusUnixFileDescriptor>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTimer>

#include <csignal>
#include <stdexcept>
#include <utility>

#include <gmock/gmock.h>

#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace orvane::tests {
namespace {

using ::testing::ElementsAre;

Program::Start trayPeer()
{
    Program::Start start;
    start.executable = QStringLiteral(ORVANE_TRAY_PEER);
    start.busName = QStringLiteral("net.lindenrow.orvane.TrayPeer");
    return start;
}

QRegularExpression line(const char* text)
{
    return QRegularExpression(QRegularExpression::anchoredPattern(QLatin1String(text)));
}

/// A window that records the keys and buttons it got.
class Typewriter {
public:
    Typewriter()
        : m_display(XOpenDisplay(nullptr)),
          m_window(XCreateSimpleWindow(m_display, DefaultRootWindow(m_display), 300, 200, 320, 240, 0, 0, 0))
    {
        XSelectInput(m_display, m_window, KeyPressMask | ButtonPressMask | FocusChangeMask);
        XMapRaised(m_display, m_window);
        XFlush(m_display);
    }
    ~Typewriter() { XCloseDisplay(m_display); }
    Typewriter(const Typewriter&) = delete;
    Typewriter& operator=(const Typewriter&) = delete;

    /// Returns the centre in the root window, wherever the window manager has put it.
    [[nodiscard]] QPoint centre() const
    {
        int x = 0;
        int y = 0;
        Window child = 0;
        XTranslateCoordinates(m_display, m_window, DefaultRootWindow(m_display), 160, 120, &x, &y, &child);
        return {x, y};
    }
    bool focused()
    {
        read();
        if (!std::exchange(m_wasGivenFocus, false))
            return false;
        holdFocus(static_cast<std::uint32_t>(m_window));
        return true;
    }
    QByteArray typed() { return read(), m_typed; }
    QPoint lastClick() { return read(), m_lastClick; }

private:
    void read()
    {
        while (XPending(m_display)) {
            XEvent event;
            XNextEvent(m_display, &event);
            if (event.type == FocusIn)
                m_wasGivenFocus = true;
            if (event.type == ButtonPress)
                m_lastClick = {event.xbutton.x_root, event.xbutton.y_root};
            if (event.type == KeyPress) {
                char text[8];
                m_typed.append(text, XLookupString(&event.xkey, text, sizeof text, nullptr, nullptr));
            }
        }
    }

    Display* m_display;
    Window m_window;
    bool m_wasGivenFocus = false;
    QByteArray m_typed;
    QPoint m_lastClick;
};

TEST(EventuallyTest, HoldsAtOnceWhenTheConditionDoes)
{
    int asked = 0;
    EXPECT_TRUE(eventually(0ms, [&] { return ++asked == 1; }));
    EXPECT_EQ(asked, 1);
}

TEST(EventuallyTest, IsFalseAfterTheDeadline)
{
    QElapsedTimer elapsed;
    elapsed.start();
    EXPECT_FALSE(eventually(50ms, [] { return false; }));
    EXPECT_GE(elapsed.elapsed(), 50);
}

TEST(EventuallyTest, RunsTheEventsThatTheConditionWaitsFor)
{
    bool fired = false;
    QTimer::singleShot(0, [&] { fired = true; });
    EXPECT_TRUE(eventually(10s, [&] { return fired; }));
}

TEST(HardwareTest, KeysReachTheFocusedWindow)
{
    Typewriter typewriter;
    ASSERT_TRUE(eventually(10s, [&] { return typewriter.focused(); }));
    Hardware hardware;
    hardware.tap("a");
    hardware.press("Shift_L");
    hardware.tap("b");
    hardware.release("Shift_L");
    hardware.tap(Hardware::KeyCode(54));
    EXPECT_TRUE(eventually(10s, [&] { return typewriter.typed() == "aBc"; })) << typewriter.typed().data();
}

TEST(HardwareTest, WhatIsHeldIsLetGoAtTheEnd)
{
    Typewriter typewriter;
    ASSERT_TRUE(eventually(10s, [&] { return typewriter.focused(); }));
    {
        Hardware hardware;
        hardware.press("Shift_L");
    }
    Hardware hardware;
    hardware.tap("x");
    EXPECT_TRUE(eventually(10s, [&] { return typewriter.typed() == "x"; })) << typewriter.typed().data();
}

TEST(HardwareTest, ThePointerGoesWhereItIsSentAndClicksThere)
{
    Typewriter typewriter;
    ASSERT_TRUE(eventually(10s, [&] { return typewriter.focused(); }));
    Screen screen;
    Hardware hardware;
    hardware.movePointer({1000, 700});
    EXPECT_TRUE(eventually(10s, [&] { return screen.pointer() == QPoint(1000, 700); }));
    const QPoint centre = typewriter.centre();
    hardware.click(centre);
    EXPECT_TRUE(eventually(10s, [&] { return typewriter.lastClick() == centre; }));
    EXPECT_EQ(screen.pointer(), centre);
}

TEST(HardwareTest, AnUnknownDeviceOrKeyIsAnError)
{
    EXPECT_THROW(Hardware("no such keyboard"), std::runtime_error);
    EXPECT_THROW(static_cast<void>(Hardware().key("NoSuchKey")), std::runtime_error);
}

TEST(ScreenTest, APictureHasTheScreensSizeAndCanBeReadBack)
{
    const QTemporaryDir directory;
    const QString file = directory.filePath(QStringLiteral("screen.png"));
    const Screen screen;
    ASSERT_TRUE(screen.savePicture(file));
    EXPECT_EQ(QImage(file).size(), QSize(1440, 900));
    EXPECT_EQ(screen.picture({10, 10, 30, 20}).size(), QSize(30, 20));
}

TEST(LogindTest, AnInhibitorIsThereWhileItsDescriptorIsHeld)
{
    const auto held = [] {
        QStringList names;
        for (const Inhibitor& inhibitor : inhibitors().value_or(QList<Inhibitor>{}))
            names.append(inhibitor.what + u' ' + inhibitor.who + u' ' + inhibitor.why + u' ' +
                         inhibitor.mode + u' ' + QString::number(inhibitor.pid));
        return names;
    };
    ASSERT_TRUE(inhibitors()) << "nobody answers for logind";
    const QString expected =
        QStringLiteral("sleep:idle support-test trying block %1").arg(QCoreApplication::applicationPid());
    {
        QDBusMessage question = QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
            QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("Inhibit"));
        question << QStringLiteral("sleep:idle") << QStringLiteral("support-test") << QStringLiteral("trying")
                 << QStringLiteral("block");
        const QDBusMessage answer = QDBusConnection::systemBus().call(question);
        ASSERT_TRUE(answer.arguments().value(0).value<QDBusUnixFileDescriptor>().isValid());
        EXPECT_TRUE(eventually(10s, [&] { return held().contains(expected); }));
    }
    EXPECT_TRUE(eventually(10s, [&] { return !held().contains(expected); }));
}

TEST(ScreenSaverTest, ComesOnAfterItsTimeoutAndEndsWithAKey)
{
    ScreenSaver saver;
    saver.reset();
    saver.setTimeout(1s);
    EXPECT_EQ(saver.state(), ScreenSaver::State::off);
    ASSERT_TRUE(eventually(10s, [&] { return saver.state() == ScreenSaver::State::on; }));
    EXPECT_GE(saver.idle(), 1s);
    Hardware().tap("Shift_L");
    EXPECT_TRUE(eventually(10s, [&] { return saver.state() == ScreenSaver::State::off; }));
}

TEST(ScreenSaverTest, PutsTheOldTimeoutBack)
{
    ScreenSaver outer;
    outer.setTimeout(0s);
    ScreenSaver().setTimeout(600s);
    EXPECT_EQ(outer.state(), ScreenSaver::State::disabled);
}

TEST(ProgramTest, HasItsDefaultsAndATerminalAndIsWatchedToItsEnd)
{
    Program::Start start = trayPeer();
    start.defaults = R"({"a": 1})";
    Program program(start);
    ASSERT_TRUE(program.waitUntilReady());
    EXPECT_TRUE(program.waitForLog(line("a terminal")));
    EXPECT_TRUE(program.waitForLog(line(R"(defaults \{"a": 1\})")));
    EXPECT_FALSE(program.waitForLog(line("a terminal"), 100ms)) << "a line was found twice";
    program.signal(SIGTERM);
    const auto end = program.wait();
    ASSERT_TRUE(end);
    EXPECT_EQ(end->signal, SIGTERM);
    EXPECT_FALSE(program.waitUntilReady(20s)) << "it has ended";
}

TEST(ProgramTest, ASecondStartFindsTheSameHome)
{
    Program::Start start = trayPeer();
    start.defaults = "kept";
    {
        Program first(start);
        ASSERT_TRUE(first.waitUntilReady());
        first.kill9();
        const auto end = first.wait();
        ASSERT_TRUE(end);
        EXPECT_EQ(end->signal, SIGKILL);
    }
    start.defaults.reset();
    Program second(start);
    EXPECT_TRUE(second.waitForLog(line("defaults kept")));
}

TEST(ProgramTest, AProgramThatIsNotThereIsAnError)
{
    Program::Start start;
    start.executable = QStringLiteral("/nonexistent");
    EXPECT_THROW(Program{start}, std::runtime_error);
}

class TrayTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(peer.waitUntilReady());
        ASSERT_TRUE(
            eventually(10s, [&] { return (item = tray.find(QStringLiteral("A peer"))).has_value(); }));
    }

    void TearDown() override { EXPECT_TRUE(closeMenus(screen, hardware)); }

    /// Returns the middle of the item once the panel has laid it out.
    QPoint spot()
    {
        std::optional<QRect> place;
        EXPECT_TRUE(eventually(10s, [&] { return (place = tray.place(screen, *item)).has_value(); }));
        return place.value_or(QRect()).center();
    }

    MenuNode openMenuByRightClick()
    {
        hardware.click(spot(), Button::right);
        EXPECT_TRUE(eventually(10s, [&] { return screen.openMenus().size() == 1; }));
        return item->menu().layout().value_or(MenuNode());
    }

    Screen screen;
    Hardware hardware;
    Tray tray;
    Program peer{trayPeer()};
    std::optional<TrayItem> item;
};

TEST_F(TrayTest, AnItemIsListedWithItsProperties)
{
    EXPECT_EQ(item->pid, peer.pid());
    EXPECT_EQ(item->id, QStringLiteral("TrayPeer"));
    EXPECT_EQ(item->toolTip, QStringLiteral("A peer"));
    EXPECT_FALSE(item->isMenu);
    EXPECT_EQ(tray.itemsOf(peer.pid()).size(), 1);
    EXPECT_FALSE(tray.find(QStringLiteral("Another")));
}

TEST_F(TrayTest, AnItemGoesWithItsProgram)
{
    peer.kill9();
    EXPECT_TRUE(eventually(10s, [&] { return tray.items().isEmpty(); }));
}

TEST_F(TrayTest, AHardwareClickOnItsPlaceReachesTheItem)
{
    const QPoint place = spot();
    EXPECT_TRUE(eventually(10s, [&] {
        return screen.picture({place, QSize(1, 1)}).pixelColor(0, 0) == Qt::darkGreen;
    }));
    hardware.click(place);
    EXPECT_TRUE(peer.waitForLog(line("left click")));
}

TEST_F(TrayTest, OfTwoItemsEachHasItsOwnPlace)
{
    const QTemporaryDir directory;
    Program::Start start = trayPeer();
    const QString other = directory.filePath(QStringLiteral("another-peer"));
    ASSERT_TRUE(QFile::copy(start.executable, other)); // the Id is the file's name
    start.executable = other;
    Program second(start);
    std::optional<TrayItem> itemOfSecond;
    ASSERT_TRUE(eventually(
        10s, [&] { return (itemOfSecond = tray.find(QStringLiteral("another-peer"))).has_value(); }));
    std::optional<QRect> place;
    ASSERT_TRUE(eventually(10s, [&] { return (place = tray.place(screen, *itemOfSecond)).has_value(); }));
    hardware.click(place->center());
    EXPECT_TRUE(second.waitForLog(line("left click")));
    hardware.click(spot());
    EXPECT_TRUE(peer.waitForLog(line("left click")));
}

TEST_F(TrayTest, AMenuIsReadAsATree)
{
    const DBusMenu menu = item->menu();
    EXPECT_TRUE(menu.aboutToShow());
    const std::optional<MenuNode> root = menu.layout();
    ASSERT_TRUE(root);
    EXPECT_THAT(root->labels(),
                ElementsAre(QStringLiteral("First"), QStringLiteral("Checked"), QStringLiteral("-"),
                            QStringLiteral("Off"), QStringLiteral("More")));
    EXPECT_TRUE(root->find({QStringLiteral("Checked")})->on);
    EXPECT_EQ(root->find({QStringLiteral("Checked")})->toggle, MenuNode::Toggle::checkmark);
    EXPECT_EQ(root->find({QStringLiteral("First")})->toggle, MenuNode::Toggle::none);
    EXPECT_FALSE(root->find({QStringLiteral("Off")})->enabled);
    EXPECT_TRUE(root->find({QStringLiteral("More"), QStringLiteral("Deep")}));
    EXPECT_FALSE(root->find({QStringLiteral("More"), QStringLiteral("First")}));
}

TEST_F(TrayTest, AClickedEventChoosesAnEntry)
{
    const std::optional<MenuNode> root = item->menu().layout();
    ASSERT_TRUE(root);
    EXPECT_TRUE(item->menu().click(root->find({QStringLiteral("First")})->id));
    EXPECT_TRUE(peer.waitForLog(line("chosen First")));
}

TEST_F(TrayTest, KeysChooseAnEntryOfThePanelsOpenMenu)
{
    const MenuNode menu = openMenuByRightClick();
    EXPECT_FALSE(chooseInOpenMenu(screen, hardware, menu, {QStringLiteral("Off")}));
    ASSERT_TRUE(chooseInOpenMenu(screen, hardware, menu, {QStringLiteral("Checked")}));
    EXPECT_TRUE(peer.waitForLog(line("chosen Checked")));
    EXPECT_TRUE(eventually(10s, [&] { return screen.openMenus().isEmpty(); }));
}

TEST_F(TrayTest, KeysChooseAnEntryOfASubmenu)
{
    const MenuNode menu = openMenuByRightClick();
    ASSERT_TRUE(chooseInOpenMenu(screen, hardware, menu, {QStringLiteral("More"), QStringLiteral("Deep")}));
    EXPECT_TRUE(peer.waitForLog(line("chosen Deep")));
}

} // namespace
} // namespace orvane::tests
