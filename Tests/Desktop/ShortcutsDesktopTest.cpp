// Global shortcuts as a person uses them: keys of the hardware, in many situations.
#include "Desktop/Support/OtherClient.h"
#include "Desktop/Support/Peer.h"
#include "Desktop/Support/ScreenSaver.h"
#include "Desktop/Support/ShellFixture.h"
#include "Support/Eventually.h"

#include <utility>

#include <gmock/gmock.h>

namespace orvane::tests {

namespace {

const QString awake = QStringLiteral("awake");
const QString toggleAwake = QStringLiteral("awake.toggle");
const QString openOrvane = QStringLiteral("app.openOrvane");

constexpr int controlOption = 0x1000 | 0x800;
constexpr StoredShortcut controlOptionSpace{49, controlOption};
constexpr StoredShortcut controlOptionJ{38, controlOption};
constexpr StoredShortcut controlOptionK{40, controlOption};
constexpr StoredShortcut escape{53, 0};

constexpr unsigned capsLock = 0x02;
constexpr unsigned numLock = 0x10;

/// Sets the locks, and switches them off at the end.
class Locks {
public:
    Locks(Hardware& hardware, OtherClient& server, unsigned wanted) : m_hardware(hardware), m_server(server)
    {
        set(wanted);
    }
    ~Locks() { set(0); }
    Locks(const Locks&) = delete;
    Locks& operator=(const Locks&) = delete;

private:
    void set(unsigned wanted)
    {
        if ((m_server.lockedModifiers() ^ wanted) & capsLock)
            m_hardware.tap("Caps_Lock");
        if ((m_server.lockedModifiers() ^ wanted) & numLock)
            m_hardware.tap("Num_Lock");
        EXPECT_TRUE(eventually(10s, [&] { return m_server.lockedModifiers() == wanted; }));
    }

    Hardware& m_hardware;
    OtherClient& m_server;
};

/// Makes the keyboard repeat fast until the object's end.
class FastRepeat {
public:
    explicit FastRepeat(OtherClient& server) : m_server(server), m_before(server.repeatRate())
    {
        m_server.setRepeatRate({60, 60});
    }
    ~FastRepeat() { m_server.setRepeatRate(m_before); }
    FastRepeat(const FastRepeat&) = delete;
    FastRepeat& operator=(const FastRepeat&) = delete;

    /// Returns the repeats of a held key since the first call: each ends the server's idle time. Misses some.
    int seen()
    {
        const auto idle = m_screenSaver.idle();
        if (idle < std::exchange(m_idle, idle))
            ++m_seen;
        return m_seen;
    }

private:
    OtherClient& m_server;
    OtherClient::RepeatRate m_before;
    ScreenSaver m_screenSaver;
    std::chrono::milliseconds m_idle{};
    int m_seen = 0;
};

class ShortcutsDesktopTest : public ShellDesktopTest {
protected:
    /// Starts with Awake on, unless others are given, and its shortcut bound.
    void startWith(QMap<QString, StoredShortcut> shortcuts, QStringList enabled = {awake},
                   QVariantMap more = {})
    {
        start({.enabled = enabled, .shortcuts = std::move(shortcuts), .more = std::move(more)});
        ASSERT_TRUE(eventually(10s, [&] {
            const QStringList labels = statusMenu().labels();
            return labels.contains(enabled.contains(awake) ? QStringLiteral("Awake")
                                                           : QStringLiteral("Quit Orvane"));
        }));
    }
    qsizetype timesSwitchedOn() { return program().log().filter(QStringLiteral("Awake on (")).size(); }
    /// Presses a key after others: once it has acted, so have they.
    void expectOrvaneOpensBy(std::initializer_list<const char*> keys)
    {
        chord(keys);
        EXPECT_TRUE(eventually(10s, [&] { return homeIsShown(); }));
    }
    /// Opens the panel's menu, whose keys come to the program first: what is typed then comes from the
    /// server's own keyboard.
    bool openStatusMenuAndListen()
    {
        return openStatusMenu() && eventually(10s, [&] {
                   press({"Shift_L"});
                   const bool passes = !m_server.keysDown("Virtual core XTEST keyboard").isEmpty();
                   release({"Shift_L"});
                   return passes;
               });
    }
    /// True once the panel's menu is closed, the program knows it, and the shortcuts work in the usual way
    /// again.
    bool menusCloseAndItStopsListening()
    {
        return menusClose() && eventually(10s, [&] { return !m_server.isFloating("testkbd"); });
    }
    QImage menuPicture()
    {
        const auto menus = m_screen.openMenus();
        return menus.isEmpty() ? QImage() : m_screen.picture(menus.last().geometry);
    }

    OtherClient m_server;
};

} // namespace

TEST_F(ShortcutsDesktopTest, ActsWhenItIsLetGoInEachStateOfTheLocks)
{
    startWith({{toggleAwake, controlOptionSpace}});
    qsizetype times = 0;
    for (const unsigned lock : {0u, capsLock, numLock, capsLock | numLock}) {
        const Locks locks(m_hardware, m_server, lock);
        press({"Control_L", "Alt_L", "space"});
        EXPECT_TRUE(statusMenu().find({QStringLiteral("Awake"), QStringLiteral("Keep Awake")}));
        EXPECT_TRUE(heldLocks().isEmpty()) << "it acted before the keys were let go, locks " << lock;
        release({"space", "Alt_L", "Control_L"});
        EXPECT_TRUE(becomesAwake()) << lock;
        chord({"Control_L", "Alt_L", "space"});
        EXPECT_TRUE(becomesAsleep()) << lock;
        EXPECT_EQ(timesSwitchedOn(), ++times);
    }
}

TEST_F(ShortcutsDesktopTest, TheModifiersMayBeLetGoFirst)
{
    startWith({{toggleAwake, controlOptionSpace}});
    press({"Control_L", "Alt_L", "space"});
    release({"Control_L", "Alt_L"});
    EXPECT_TRUE(heldLocks().isEmpty());
    release({"space"});
    EXPECT_TRUE(becomesAwake());
}

TEST_F(ShortcutsDesktopTest, HeldDownItActsOnceAndOnlyAtTheEnd)
{
    startWith({{toggleAwake, controlOptionSpace}, {openOrvane, controlOptionK}});
    FastRepeat repeat(m_server);
    press({"Control_L", "Alt_L", "space"});
    EXPECT_TRUE(eventually(10s, [&] { return repeat.seen() >= 5; }));
    EXPECT_TRUE(statusMenu().find({QStringLiteral("Awake"), QStringLiteral("Keep Awake")}));
    EXPECT_EQ(timesSwitchedOn(), 0);
    release({"space", "Alt_L", "Control_L"});
    EXPECT_TRUE(becomesAwake());
    expectOrvaneOpensBy({"Control_L", "Alt_L", "k"});
    EXPECT_EQ(heldLocks(), QStringLiteral("idle"));
    EXPECT_EQ(timesSwitchedOn(), 1);
}

TEST_F(ShortcutsDesktopTest, TwoNamesWithOneShortcutBothFire)
{
    startWith({{toggleAwake, controlOptionSpace}, {openOrvane, controlOptionSpace}});
    EXPECT_FALSE(homeIsShown());
    chord({"Control_L", "Alt_L", "space"});
    EXPECT_TRUE(becomesAwake());
    EXPECT_TRUE(eventually(10s, [&] { return homeIsShown(); }));
}

TEST_F(ShortcutsDesktopTest, OtherKeysAndOtherModifiersDontFireAndReachTheProgramInFront)
{
    startWith({{toggleAwake, {0, controlOption}}, {openOrvane, controlOptionK}}); // control-option-a
    Peer peer(Peer::lineEdit());
    ASSERT_TRUE(peer.tells(QStringLiteral("focused")));
    m_hardware.tap("a");
    EXPECT_TRUE(peer.tells(QStringLiteral("text:a")));
    chord({"Control_L", "a"});
    EXPECT_TRUE(peer.tells(QStringLiteral("marked:a")));
    chord({"Control_L", "Alt_L", "Shift_L", "a"});
    expectOrvaneOpensBy({"Control_L", "Alt_L", "k"});
    EXPECT_TRUE(heldLocks().isEmpty());
    EXPECT_EQ(timesSwitchedOn(), 0);
}

TEST_F(ShortcutsDesktopTest, TheKeysOfAShortcutDontReachTheProgramInFront)
{
    startWith({{toggleAwake, {0, 0}}}); // the letter a alone
    Peer peer(Peer::lineEdit());
    ASSERT_TRUE(peer.tells(QStringLiteral("focused")));
    m_hardware.tap("a");
    EXPECT_TRUE(becomesAwake());
    m_hardware.tap("b");
    EXPECT_TRUE(peer.tells(QStringLiteral("text:b")));
    EXPECT_EQ(peer.text(), QStringLiteral("b"));
}

TEST_F(ShortcutsDesktopTest, ACapabilityThatIsOffDoesNothing)
{
    startWith({{toggleAwake, controlOptionSpace}, {openOrvane, controlOptionK}}, {});
    chord({"Control_L", "Alt_L", "space"});
    expectOrvaneOpensBy({"Control_L", "Alt_L", "k"});
    EXPECT_TRUE(heldLocks().isEmpty());
    EXPECT_EQ(timesSwitchedOn(), 0);
}

TEST_F(ShortcutsDesktopTest, ACapabilityThatIsTurnedOnActsFromThenOnAndNoLongerWhenItIsOff)
{
    startWith({{toggleAwake, controlOptionSpace}, {openOrvane, controlOptionK}}, {});
    chord({"Control_L", "Alt_L", "space"});
    expectOrvaneOpensBy({"Control_L", "Alt_L", "k"});
    EXPECT_EQ(timesSwitchedOn(), 0);

    const QString name = QStringLiteral("Awake");
    const auto awakeIsListed = [&] { return statusMenu().labels().contains(name); };
    ASSERT_TRUE(clickOn(name, QStringLiteral("list item")));
    ASSERT_TRUE(clickOn(name, QStringLiteral("check box")));
    ASSERT_TRUE(eventually(10s, awakeIsListed));
    chord({"Control_L", "Alt_L", "space"});
    EXPECT_TRUE(becomesAwake());
    chord({"Control_L", "Alt_L", "space"});
    EXPECT_TRUE(becomesAsleep());
    EXPECT_EQ(timesSwitchedOn(), 1);

    ASSERT_TRUE(clickOn(name, QStringLiteral("check box")));
    ASSERT_TRUE(eventually(10s, [&] { return !awakeIsListed(); }));
    chord({"Control_L", "Alt_L", "space"});
    m_hardware.tap("Escape");
    EXPECT_TRUE(statusItem().menu().layout());
    EXPECT_TRUE(heldLocks().isEmpty());
    EXPECT_EQ(timesSwitchedOn(), 1);
}

TEST_F(ShortcutsDesktopTest, AShortcutThatAnotherProgramHoldsIsQuietlyUnavailable)
{
    OtherClient other;
    const int key = m_hardware.key("j");
    other.grabKey(key);
    startWith({{toggleAwake, controlOptionJ}, {openOrvane, controlOptionK}});
    chord({"Control_L", "Alt_L", "j"});
    QList<int> seen;
    EXPECT_TRUE(eventually(10s, [&] {
        seen = other.grabbedKeys();
        return seen.contains(key) && seen.contains(-key);
    })) << "the other program keeps it";
    expectOrvaneOpensBy({"Control_L", "Alt_L", "k"});
    EXPECT_TRUE(heldLocks().isEmpty());
    EXPECT_TRUE(program().isRunning());
    for (const QString& line : program().log())
        EXPECT_FALSE(line.contains(QStringLiteral("hortcut")) || line.contains(QStringLiteral("error ")))
            << line.toStdString();
}

TEST_F(ShortcutsDesktopTest, WhileThePanelShowsTheMenuItFiresAndTheMenuDoesntSeeTheKey)
{
    startWith({{toggleAwake, escape}});
    ASSERT_TRUE(openStatusMenuAndListen());
    m_hardware.tap("Escape");
    EXPECT_TRUE(becomesAwake());
    m_hardware.tap("Escape");
    EXPECT_TRUE(becomesAsleep());
    EXPECT_TRUE(menuIsOpen()) << "the menu got the key";
    EXPECT_EQ(timesSwitchedOn(), 1);

    // Other keys go where they always go.
    ASSERT_TRUE(chooseInOpenMenu(m_screen, m_hardware, statusItem().menu().layout().value_or(MenuNode()),
                                 {QStringLiteral("Open Orvane…")}));
    EXPECT_TRUE(eventually(10s, [&] { return homeIsShown(); }));
    EXPECT_TRUE(menusCloseAndItStopsListening());
    m_hardware.tap("Escape");
    EXPECT_TRUE(becomesAwake());
}

TEST_F(ShortcutsDesktopTest, AChordFiresWhileThePanelShowsTheMenuAndEscapeClosesIt)
{
    startWith({{toggleAwake, controlOptionSpace}});
    ASSERT_TRUE(openStatusMenuAndListen());
    press({"Control_L", "Alt_L", "space"});
    EXPECT_TRUE(statusItem().menu().layout());
    EXPECT_TRUE(heldLocks().isEmpty());
    release({"space", "Alt_L", "Control_L"});
    EXPECT_TRUE(becomesAwake());
    EXPECT_TRUE(menuIsOpen());
    m_hardware.tap("Escape");
    EXPECT_TRUE(menusCloseAndItStopsListening());
    chord({"Control_L", "Alt_L", "space"});
    EXPECT_TRUE(becomesAsleep());
    EXPECT_EQ(timesSwitchedOn(), 1);
}

TEST_F(ShortcutsDesktopTest, WhileAMenuOfTheOlderTrayIsOpenItFiresAndTheMenuDoesntSeeTheKey)
{
    // Without a session bus the status items stand in the XEmbed tray, and their menus are drawn by the
    // program.
    const QString noBus = QStringLiteral("unix:path=/nonexistent/bus");
    m_program = std::make_unique<Program>(Program::Start{
        .defaults =
            defaults({.enabled = {awake},
                      .shortcuts = {{toggleAwake, escape}},
                      .more = {{QStringLiteral("net.lindenrow.orvane.awake.showMenuBarIcon"), false}}}),
        .environment = {{QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), noBus}}});
    // The tray may still move the icon, or not pass on a click yet.
    const auto icon = [&]() -> std::optional<QRect> {
        for (const ScreenWindow& window : m_screen.windowsOf(program().pid())) {
            if (window.type != WindowType::menu && window.geometry.y() < 40)
                return window.geometry;
        }
        return std::nullopt;
    };
    ASSERT_TRUE(eventually(15s, [&] { return icon().has_value(); })) << "no status item";
    ASSERT_TRUE(eventually(20s, [&] {
        if (const auto place = icon(); place && !menuIsOpen())
            m_hardware.click(place->center());
        return eventually(3s, [&] { return menuIsOpen() && m_server.isKeyboardGrabbed(); });
    }));
    m_hardware.tap("Escape");
    EXPECT_TRUE(becomesAwake());
    EXPECT_TRUE(menuIsOpen()) << "the menu got the key";
    const QImage before = menuPicture();
    m_hardware.tap("Down");
    EXPECT_TRUE(eventually(10s, [&] { return menuPicture() != before; })) << "the menu didn't get the key";
    m_hardware.tap("Up");
    m_hardware.tap("Return"); // the last entry
    const auto exit = program().wait();
    ASSERT_TRUE(exit) << "the entry wasn't chosen";
    EXPECT_EQ(exit->code, 0);
}

TEST_F(ShortcutsDesktopTest, WhileATextFieldsMenuIsOpenItFiresAndTheMenuDoesntSeeTheKey)
{
    // The list is short, so that the elements below it are visible.
    startWith({{toggleAwake, escape}, {openOrvane, controlOptionK}}, {awake, QStringLiteral("keyswap")},
              {{QStringLiteral("net.lindenrow.orvane.keyswap.excludedApps"),
                QStringList{QStringLiteral("org.gnu.Emacs")}}});
    expectOrvaneOpensBy({"Control_L", "Alt_L", "k"});
    ASSERT_TRUE(clickOn(QStringLiteral("Ctrl Shortcuts"), QStringLiteral("list item")));
    ASSERT_TRUE(clickOn(QStringLiteral("Add App…"), QStringLiteral("push button")));
    ASSERT_TRUE(clickOn(QStringLiteral("Search applications"), QStringLiteral("text")));
    m_hardware.tap("a"); // otherwise nothing in its menu could be chosen
    QList<std::uint32_t> known;
    for (const ScreenWindow& window : m_screen.windowsOf(program().pid()))
        known.append(window.id);
    ASSERT_TRUE(clickOn(QStringLiteral("Search applications"), QStringLiteral("text"), Button::right));
    // Qt doesn't give this window the type of a menu.
    const auto fieldMenu = [&]() -> std::optional<ScreenWindow> {
        for (const ScreenWindow& window : m_screen.windowsOf(program().pid())) {
            if (window.type == WindowType::normal && !known.contains(window.id))
                return window;
        }
        return std::nullopt;
    };
    const auto picture = [&] {
        const auto menu = fieldMenu();
        return menu ? m_screen.picture(menu->geometry) : QImage();
    };
    ASSERT_TRUE(eventually(10s, [&] { return fieldMenu() && m_server.isKeyboardGrabbed(); }));

    m_hardware.tap("Escape");
    EXPECT_TRUE(becomesAwake());
    ASSERT_TRUE(fieldMenu()) << "the menu got the key";
    const QImage before = picture();
    m_hardware.tap("Down");
    EXPECT_TRUE(eventually(10s, [&] { return picture() != before; })) << "the menu didn't get the key";
    m_hardware.tap("Escape");
    EXPECT_TRUE(becomesAsleep());
    EXPECT_TRUE(fieldMenu());
    // The pointer lies on the menu and may have taken the mark off the entry; a person would try again.
    EXPECT_TRUE(eventually(20s, [&] {
        m_hardware.tap("Return");
        if (eventually(3s, [&] { return !fieldMenu(); }))
            return true;
        m_hardware.tap("Down");
        return false;
    }));
    EXPECT_EQ(timesSwitchedOn(), 1);
}

} // namespace orvane::tests
